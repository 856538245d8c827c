#include "QBAppDelegate.h"
#include "QBMainWindowInterface.h"

#include <Files/Profile.h>
#include <Logging/QBLogger.h>
#include <Store/QBLocalFileManager.h>
#include <Store/QBNotesPreferenceManager.h>

#include <QDir>

using namespace Qt::StringLiterals;

namespace {

/// The first button of the question before a command that destroys.
constexpr int kGoOn = 0;

} // namespace

void QBAppDelegate::confirmDeveloperCommand(std::function<void()> confirmed)
{
    m_services.application.showAlert(
        {.messageText =
             u"I myself will carry you to the gates of Valhalla... you will ride eternal, shiny and chrome!"_s,
         .informativeText = {},
         .buttons = {u"Witness me!"_s, u"Ah, mediocre!"_s}},
        [confirmed = std::move(confirmed)](int button) {
            if (button == kGoOn) {
                confirmed();
            } else {
                QBLogInfo(u"cancel"_s);
            }
        });
}

void QBAppDelegate::deleteQuibDB()
{
    confirmDeveloperCommand([weak = weak_from_this()] {
        const auto self = weak.lock();
        if (!self) {
            return;
        }
        if (!QDir(QBLocalFileManager::applicationPersistentDataURL().toLocalFile()).removeRecursively()) {
            QBLogError(u"can't remove app support url"_s);
        }
        // At once: an orderly end would save the store again.
        self->m_services.application.exitProcess(0);
    });
}

void QBAppDelegate::toggleFileLog()
{
    const bool logs = !m_services.preferences.logToFile().value_or(false);
    m_services.preferences.setLogToFile(logs);
    QBLogger::sharedLogger().setFileLoggerEnabled(logs);
}

void QBAppDelegate::printFirstResponder()
{
    const QString responder =
        m_mainWindowController != nullptr ? m_mainWindowController->firstResponderDescription() : u"(null)"_s;
    QBLogInfo(QString(u"first responder "_s % responder));
}

void QBAppDelegate::openApplicationContainer()
{
    m_services.application.revealFolder(QDir::homePath());
}

void QBAppDelegate::openApplicationSupport()
{
    m_services.application.revealFolder(QBLocalFileManager::applicationPersistentDataURL().toLocalFile());
}

void QBAppDelegate::openLogsFolder()
{
    m_services.application.revealFolder(quib::Profile::logsFolder());
}
