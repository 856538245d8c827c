#include "WindowFrontEnd.h"

#include "DesktopAppearance.h"
#include "DesktopIntegration.h"
#include "DesktopPasteboard.h"
#include "DisplayProbe.h"
#include "EditorPane.h"
#include "FailureDialog.h"
#include "LoadingWindow.h"
#include "MessageBar.h"
#include "QBMainWindowController.h"
#include "WindowStyle.h"

#include <Delegate/QBAppDelegate.h>
#include <Logging/QBLogger.h>
#include <Preferences/InterfaceLanguage.h>
#include <Preferences/SpellingLanguages.h>
#include <Process/DesktopOpener.h>
#include <Process/QuibProcess.h>
#include <Spelling/SpellingService.h>
#include <Store/QBNotesPreferenceManager.h>

#include <QApplication>
#include <QDBusConnection>
#include <QFileInfo>

#include <cstdlib>
#include <utility>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

void openOrLog(const QUrl &url)
{
    if (!openWithDesktop(url)) {
        QBLogWarn(QString(u"the desktop could not open "_s % url.toDisplayString()));
    }
}

void endProcess()
{
    // Not quit(), which closes all windows before it ends: those that are open now are those that come back.
    QCoreApplication::exit();
}

} // namespace

WindowInterface::WindowInterface()
    : m_appearance(std::make_unique<DesktopAppearance>())
    , m_spelling(std::make_unique<SpellingService>(SpellingService::standardOptions()))
{
    SpellingService::setSharedService(m_spelling.get());
}

WindowInterface::~WindowInterface() = default;

QBMainWindowInterface *WindowInterface::mainWindow()
{
    if (!m_window) {
        if (auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager(); preferences != nullptr) {
            preferences->setHasDarkAppearance(m_appearance->isDark());
            applySpellingLanguages(*preferences);
        }
        m_style = std::make_unique<WindowStyle>();
        m_window = std::make_unique<QBMainWindowController>();
        m_window->setTerminate([this] { terminate(); });
        if (m_textTheme) {
            m_window->loadTextTheme(m_textTheme);
        }
    }
    return m_window.get();
}

bool WindowInterface::hasVisibleWindows() const
{
    return std::ranges::any_of(QApplication::topLevelWidgets(),
                               [](const QWidget *widget) { return widget->isVisible() && widget->isWindow(); });
}

std::unique_ptr<QBLoadingWindowInterface> WindowInterface::makeLoadingWindow()
{
    return std::make_unique<LoadingWindow>();
}

void WindowInterface::showAlert(const QBAlert &alert, Answered answered)
{
    if (m_window && m_window->isVisible()) {
        m_window->messages().ask(alert.informativeText.isEmpty()
                                     ? alert.messageText
                                     : QString(alert.messageText % u": "_s % alert.informativeText),
                                 alert.buttons, {}, [answered](int button, bool /*isChecked*/) { answered(button); });
        return;
    }
    // There is no window to say it in.
    auto *box = new FailureDialog(alert.messageText, alert.informativeText, alert.path, alert.buttons);
    if (!alert.isFailure) {
        box->setIcon(QMessageBox::Information);
    }
    box->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(box, &QDialog::finished, box, [box, answered](int /*result*/) { answered(box->pressedButton()); });
    box->open();
}

QString WindowInterface::keyEditorNoteTitle() const
{
    const auto note = m_window ? m_window->keyEditor().note() : nullptr;
    return note ? note->title() : u""_s;
}

std::shared_ptr<NSPasteboard> WindowInterface::generalPasteboard()
{
    if (!m_pasteboard) {
        m_pasteboard = DesktopPasteboard::general();
    }
    return m_pasteboard;
}

void WindowInterface::activate()
{
    if (m_window) {
        m_window->activateWindow();
    }
}

void WindowInterface::bringAllWindowsForward()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && widget->isWindow()) {
            widget->raise();
        }
    }
}

void WindowInterface::openWebsite(const QUrl &url)
{
    openOrLog(url);
}

void WindowInterface::revealFolder(const QString &folder)
{
    openOrLog(QUrl::fromLocalFile(folder));
}

bool WindowInterface::showQuickNote()
{
    return m_window && m_window->showQuickNote();
}

void WindowInterface::integrateWithDesktop()
{
    if (m_window && !m_integration) {
        m_integration = std::make_unique<DesktopIntegration>(*m_window, QDBusConnection::sessionBus());
    }
}

void WindowInterface::terminate()
{
    if (!m_window || m_window->mayQuit()) {
        endProcess();
    }
}

void WindowInterface::terminateWithoutAsking()
{
    if (m_window) {
        m_window->quitWithoutAsking();
    }
    endProcess();
}

void WindowInterface::exitProcess(int status)
{
    QBLogger::sharedLogger().flush();
    std::_Exit(status);
}

void WindowInterface::setApplicationIconNamed(const QString & /*name*/)
{
    // The desktop shows the icon of the desktop entry; themed ones would have to be installed there.
    QApplication::setWindowIcon(QIcon::fromTheme(u"net.quibworks.Quib"_s, QIcon(u":/icons/net.quibworks.Quib.svg"_s)));
}

void WindowInterface::updateDetachedEditorWindows()
{
    // All frames follow the application's style.
}

void WindowInterface::loadThemeInDetachedEditorWindows(const std::shared_ptr<QBTheme> &theme)
{
    m_textTheme = theme;
    if (m_window) {
        m_window->loadTextTheme(theme);
    }
}

// The process

bool WindowFrontEnd::hasDisplay()
{
    return isDisplayReachable(QCoreApplication::libraryPaths());
}

WindowFrontEnd::WindowFrontEnd() = default;
WindowFrontEnd::~WindowFrontEnd() = default;

std::unique_ptr<QCoreApplication> WindowFrontEnd::makeApplication(int &argc, char **argv)
{
    auto application = std::make_unique<QApplication>(argc, argv);
    QGuiApplication::setDesktopFileName(u"net.quibworks.Quib"_s);
    QGuiApplication::setApplicationDisplayName(u"Quib"_s);
    // The main window decides, together with those beside it.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    m_language = std::make_unique<InterfaceLanguage>();
    return application;
}

std::unique_ptr<QBApplicationInterface> WindowFrontEnd::makeInterface()
{
    return std::make_unique<WindowInterface>();
}

void WindowFrontEnd::profileCannotBeHad(const NSError &error, const QString &folder)
{
    constexpr int kShowFolder = 1;
    const bool isInUse =
        error.domain() == kNSCocoaErrorDomain && error.code() == static_cast<qint64>(NSCocoaErrorCode::FileLocking);
    QString advice;
    if (isInUse) {
        advice = tr("Another Quib has them open, and cannot be reached from here. Go on in its window, or quit it and "
                    "start Quib again.");
    } else {
        advice =
            tr("Quib keeps its notes in this folder, and cannot write to it (%1). Make that possible, and start "
               "Quib again.")
                .arg(error.causeCode() != 0 ? qt_error_string(int(error.causeCode())) : error.localizedDescription());
    }
    FailureDialog dialog(isInUse ? tr("Your notes are in use") : tr("Your notes cannot be written to"), advice, folder,
                         {tr("Quit"), tr("Show Folder")});
    dialog.exec();
    if (dialog.pressedButton() == kShowFolder) {
        openOrLog(QUrl::fromLocalFile(folder));
    }
}

void WindowFrontEnd::processDidLaunch(QuibProcess &process)
{
    auto &interface = static_cast<WindowInterface &>(process.interface());
    interface.integrateWithDesktop();
    QObject::connect(&interface.appearance(), &DesktopAppearance::didChange, &interface.appearance(),
                     [&process](bool isDark) { process.delegate().effectiveAppearanceDidChange(isDark); });
    QObject::connect(qApp, &QGuiApplication::applicationStateChanged, &interface.appearance(),
                     [&process](Qt::ApplicationState state) {
                         if (state == Qt::ApplicationActive) {
                             process.delegate().applicationDidBecomeActive();
                         }
                     });
}

void WindowFrontEnd::processWillEnd(QuibProcess &process)
{
    auto &interface = static_cast<WindowInterface &>(process.interface());
    if (interface.window() != nullptr) {
        interface.window()->forgetStore();
    }
}

} // namespace quib
