#include "Session.h"

#include "Output.h"

#include <Foundation/NSProgress.h>
#include <Store/ExternalChangeRecorder.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBLocalDataMigrator.h>
#include <Store/QBNotesPreferenceManager.h>

#include <QEventLoop>

using namespace Qt::StringLiterals;

namespace quib::cli {

namespace {

constexpr qsizetype kLeastIdentifierLength = 4;

/// Shows how a migration goes and ends the waiting for it.
class Opening final : public QBCoreDataStackDelegate
{
public:
    QEventLoop loop;
    bool isOver = false;

    void coreDataStackDidInitializeManagedObjectContext(QBCoreDataStack & /*coreDataStack*/,
                                                        NSManagedObjectContext & /*managedObjectContext*/) override
    {
        end();
    }
    void coreDataStackDidBeginMigrationWithProgress(QBCoreDataStack & /*coreDataStack*/,
                                                    const std::shared_ptr<NSProgress> &progress) override
    {
        progress->setObserver([](qint64 completedUnitCount, qint64 totalUnitCount) {
            showProgress(u"bringing the notes up to date: %1 %"_s.arg(100 * completedUnitCount /
                                                                      std::max<qint64>(totalUnitCount, 1)));
        });
    }
    void coreDataStackDidEndMigration(QBCoreDataStack & /*coreDataStack*/, const NSError &migrationError) override
    {
        showProgress({});
        if (migrationError.isSet()) {
            end();
        }
    }

private:
    void end()
    {
        isOver = true;
        loop.quit();
    }
};

} // namespace

struct Session::Private
{
    QBNotesPreferenceManager preferences;
    std::shared_ptr<Opening> opening;
    std::unique_ptr<QBCoreDataStack> stack;
    std::unique_ptr<ExternalChangeRecorder> recorder;
};

Session::Session()
    : m_d(std::make_unique<Private>())
{
    QBNotesPreferenceManager::setSharedPreferenceManager(&m_d->preferences);
}

Session::~Session()
{
    QBCoreDataStack::setSharedStack(nullptr);
    m_d->recorder.reset();
    m_d->stack.reset();
    QBNotesPreferenceManager::setSharedPreferenceManager(nullptr);
}

QBCoreDataStack *Session::stack()
{
    if (m_d->stack) {
        return m_d->stack.get();
    }
    NSError error;
    if (!QBLocalDataMigrator::migrateToCurrentVersion(&error)) {
        complain(error.localizedDescription());
        return nullptr;
    }
    m_d->opening = std::make_shared<Opening>();
    auto stack = std::make_unique<QBCoreDataStack>();
    QBCoreDataStack::setSharedStack(stack.get());
    stack->setupStackWithDelegate(m_d->opening);
    if (!m_d->opening->isOver) {
        m_d->opening->loop.exec();
    }
    if (stack->openError().isSet() || !stack->managedObjectContext()) {
        complain(stack->openError().localizedDescription());
        QBCoreDataStack::setSharedStack(nullptr);
        return nullptr;
    }
    m_d->stack = std::move(stack);
    m_d->recorder = std::make_unique<ExternalChangeRecorder>(*m_d->stack->managedObjectContext());
    return m_d->stack.get();
}

NSManagedObjectContext *Session::context()
{
    QBCoreDataStack *opened = stack();
    return opened != nullptr ? opened->managedObjectContext().get() : nullptr;
}

int Session::syntax() const
{
    return m_d->preferences.currentSyntax();
}

Ref<QBNote> Session::note(const QString &identifier)
{
    NSManagedObjectContext *moc = context();
    if (auto note = QBNote::noteWithUniqueIdentifier(identifier, *moc)) {
        return note;
    }
    QList<Ref<QBNote>> candidates;
    if (identifier.size() >= kLeastIdentifierLength) {
        candidates = QBNote::notesInManagedObjectContext(
            *moc,
            NSPredicate::predicateWithFormat(u"uniqueIdentifier BEGINSWITH[c] %@"_s, {predicateArgument(identifier)}));
    }
    if (candidates.size() == 1) {
        return candidates.constFirst();
    }
    complain(candidates.isEmpty() ? u"there is no note \"%1\""_s.arg(singleLine(identifier))
                                  : u"several notes begin with \"%1\""_s.arg(singleLine(identifier)));
    return nullptr;
}

QList<Ref<QBNote>> Session::notes(const QStringList &identifiers)
{
    QList<Ref<QBNote>> found;
    for (const QString &identifier : identifiers) {
        auto one = note(identifier);
        if (!one) {
            return {};
        }
        found.append(one);
    }
    return found;
}

bool Session::save()
{
    m_d->stack->saveUsingCoalescence(/*coalescence=*/false);
    m_d->recorder->endTurn();
    if (m_d->stack->saveError().isSet()) {
        complain(m_d->stack->saveError().localizedDescription());
        return false;
    }
    return true;
}

} // namespace quib::cli
