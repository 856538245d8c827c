#include "CurrentSyntax.h"
#include "QBCoreDataStack.h"
#include "QBCoreDataStack_p.h"
#include "QBNote.h"

#include <Foundation/Assert.h>
#include <Foundation/DispatchQueue.h>
#include <Logging/QBLogger.h>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using quib::Ref;

void QBCoreDataStack::saveUsingCoalescence(bool coalescence)
{
    m_d->cancelTimer();
    if (coalescence) {
        m_d->scheduleSave();
    } else {
        m_d->saveNow();
    }
}

NSError QBCoreDataStack::saveError() const
{
    const std::lock_guard lock(m_d->mutex);
    return m_d->saveError;
}

NSError QBCoreDataStack::damage() const
{
    const std::lock_guard lock(m_d->mutex);
    return m_d->damage;
}

void QBCoreDataStack::Private::cancelTimer()
{
    std::unique_ptr<quib::TimerToken> timer;
    {
        const std::lock_guard lock(mutex);
        timer = std::move(coalescenceSaveTimer);
        ++timerGeneration; // a timer that fires meanwhile finds itself out of date
    }
    if (timer && !quib::DispatchQueue::main()->isCurrent()) {
        // A timer is cancelled where it was made.
        quib::DispatchQueue::main()->async([timer = std::shared_ptr<quib::TimerToken>(std::move(timer))] {});
    }
}

void QBCoreDataStack::Private::scheduleSave()
{
    QUIB_ASSERT(quib::DispatchQueue::main()->isCurrent());
    const std::lock_guard lock(mutex);
    const quint64 generation = timerGeneration;
    coalescenceSaveTimer = quib::Clock::shared().schedule(0, [weak = weak_from_this(), generation] {
        if (const auto self = weak.lock()) {
            self->coalescenceSaveTimerFired(generation);
        }
    });
}

void QBCoreDataStack::Private::coalescenceSaveTimerFired(quint64 generation)
{
    {
        const std::lock_guard lock(mutex);
        if (generation != timerGeneration) {
            return;
        }
    }
    cancelTimer();
    saveNow();
}

void QBCoreDataStack::Private::saveNow()
{
    if (!context) {
        return;
    }
    context->performBlockAndWait([this] {
        NSError error;
        if (context->hasChanges() && !context->save(&error)) {
            QBLogError(u"Error while saving\n"_s + error.localizedDescription());
        }
        {
            const std::lock_guard lock(mutex);
            saveError = error;
        }
        updateHealth();
    });
}

void QBCoreDataStack::Private::storeDidSave(const NSError &error)
{
    {
        const std::lock_guard lock(mutex);
        if (!error.isSet() && !saveError.isSet()) {
            return;
        }
        saveError = error;
    }
    // Not every save comes by saveNow, and the store is locked now.
    updateHealthLater();
}

void QBCoreDataStack::Private::storeDidFindDamage(const NSError &found)
{
    {
        const std::lock_guard lock(mutex);
        damage = found;
    }
    QBLogError(u"The store is damaged, and is not written to any more\n"_s + found.localizedDescription());
    updateHealthLater();
}

void QBCoreDataStack::Private::updateHealthLater()
{
    quib::DispatchQueue::main()->async([weak = weak_from_this()] {
        if (const auto self = weak.lock()) {
            self->updateHealth();
        }
    });
}

void QBCoreDataStack::Private::updateHealth()
{
    if (stack == nullptr) {
        return;
    }
    bool hasFailed = false;
    std::array<qint64, 2> codes{};
    {
        const std::lock_guard lock(mutex);
        codes = {saveError.code(), damage.code()};
        hasFailed = saveError.isSet();
    }
    const bool isDamaged = codes[1] != 0;
    if (!hasFailed || isDamaged) {
        retryTimer.reset();
        retryPause = kFirstRetry;
    } else if (!retryTimer) {
        retryTimer = quib::Clock::shared().schedule(retryPause, [weak = weak_from_this()] {
            if (const auto self = weak.lock()) {
                self->retry();
            }
        });
    }
    if (std::exchange(toldCodes, codes) != codes) {
        stack->healthDidChange.notify();
    }
}

void QBCoreDataStack::Private::retry()
{
    retryTimer.reset();
    retryPause = std::min(2 * retryPause, kLastRetry);
    saveNow();
}

namespace quib {

void keepLostTexts(NSManagedObjectContext &moc, const QList<NSMergeLoss> &losses)
{
    const int syntax = currentSyntax();
    bool hasKept = false;
    for (const NSMergeLoss &loss : losses) {
        const QString text = valueOr<QString>(loss.lostValue);
        const auto note = loss.object.as<QBNote>();
        if (loss.key != QBNoteAttributes::text || !note || text.isEmpty()) {
            continue;
        }
        const auto winner = moc.existingObjectWithID(note->objectID()).as<QBNote>();
        if (!winner || winner->isDeleted()) {
            QBNote::noteWithText(text, syntax, moc); // the other writer deleted the note
        } else if (winner->text() != text) {
            winner->keepLostText(text, syntax);
            // The losing write may have left links of its own on the winner.
            static_cast<void>(winner->repairDerivedFieldsWithSyntax(syntax));
        } else {
            continue;
        }
        hasKept = true;
    }
    NSError error;
    if (hasKept && !moc.save(&error)) {
        QBLogError(u"Error while saving a conflicting text\n"_s + error.localizedDescription());
    }
}

} // namespace quib
