#include "SavingMessage.h"

#include "MessageBar.h"

#include <Store/QBCoreDataStack.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

// The buttons of the question, in their order.
constexpr int kTryAgain = 0;
constexpr int kQuit = 1;

} // namespace

SavingMessage::SavingMessage(QWidget *parent, std::function<void()> writeTexts)
    : QObject(parent)
    , m_bar(new MessageBar(parent))
    , m_writeTexts(std::move(writeTexts))
{
    if (QBCoreDataStack *stack = QBCoreDataStack::sharedStack(); stack != nullptr) {
        m_observation = stack->healthDidChange.add([this] { update(); });
    }
    if (hasFailed()) {
        stand(); // a window that is opened while it lasts
    }
}

SavingMessage::~SavingMessage() = default;

bool SavingMessage::hasFailed()
{
    const QBCoreDataStack *stack = QBCoreDataStack::sharedStack();
    return stack != nullptr && (stack->saveError().isSet() || stack->damage().isSet());
}

bool SavingMessage::isStoreDamaged()
{
    const QBCoreDataStack *stack = QBCoreDataStack::sharedStack();
    return stack != nullptr && stack->damage().isSet();
}

QString SavingMessage::explanation()
{
    if (!hasFailed()) {
        return {};
    }
    if (isStoreDamaged()) {
        return tr("The file of your notes is damaged, and parts of it cannot be read. Nothing is written to it any "
                  "more. Quit Quib, and run “quibctl check” in a terminal to learn what is whole.");
    }
    const NSError error = QBCoreDataStack::sharedStack()->saveError();
    if (error.domain() == kNSCocoaErrorDomain) {
        switch (static_cast<NSCocoaErrorCode>(error.code())) {
        case NSCocoaErrorCode::FileWriteOutOfSpace:
            return tr("Your notes cannot be saved: the disk is full. Make some room on it; Quib keeps trying.");
        case NSCocoaErrorCode::FileWriteVolumeReadOnly:
        case NSCocoaErrorCode::FileReadNoPermission:
        case NSCocoaErrorCode::FileWriteNoPermission:
            return tr("Your notes cannot be saved: their folder cannot be written to. Quib keeps trying.");
        case NSCocoaErrorCode::PersistentStoreTimeout:
            return tr("Your notes cannot be saved: another program does not let go of them. Quib keeps trying.");
        default:
            break;
        }
    }
    return tr("Your notes cannot be saved. Quib keeps trying. The reason: %1").arg(error.localizedDescription());
}

void SavingMessage::update()
{
    if (!hasFailed()) {
        m_isAsking = false;
        m_bar->takeBack();
    } else if (!m_isAsking) {
        stand();
    }
    Q_EMIT healthDidChange();
}

void SavingMessage::stand()
{
    // There is no use in another try on a damaged file.
    const QStringList buttons = isStoreDamaged() ? QStringList() : QStringList{tr("Try Again")};
    m_bar->stand(explanation(), buttons, [this](int button, bool /*isChecked*/) {
        if (button == kTryAgain) {
            save();
        }
    });
}

bool SavingMessage::save()
{
    m_writeTexts();
    QBCoreDataStack *stack = QBCoreDataStack::sharedStack();
    if (stack == nullptr) {
        return true;
    }
    stack->saveUsingCoalescence(/*coalescence=*/false);
    if (!stack->saveError().isSet()) {
        return true;
    }
    if (!m_isAsking) {
        stand();
    }
    return false;
}

void SavingMessage::askBeforeQuitting(std::function<void()> quit)
{
    const QString text = tr("%1 What you wrote last may be lost if you quit now.", "%1 is one or more sentences");
    m_bar->takeBack();
    m_isAsking = true;
    m_bar->ask(text.arg(explanation()), {tr("Try Again"), tr("Quit Without Saving"), tr("Cancel")}, {},
               [this, quit = std::move(quit)](int button, bool /*isChecked*/) {
                   m_isAsking = false;
                   if (button == kQuit) {
                       quit();
                   } else if (button == kTryAgain) {
                       if (save()) {
                           quit();
                       } else {
                           askBeforeQuitting(quit);
                       }
                   } else {
                       stand();
                   }
               });
}

} // namespace quib
