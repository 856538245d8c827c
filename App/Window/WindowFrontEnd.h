#pragma once

#include <Delegate/QBApplicationInterface.h>
#include <Process/FrontEnd.h>

#include <QCoreApplication>

#include <memory>

class QBMainWindowController;

namespace quib {

class DesktopAppearance;
class DesktopIntegration;
class InterfaceLanguage;
class SpellingService;
class WindowStyle;

/// The windows as the application's life cycle sees them: makes the main window when it is first asked for, dresses it
/// in the theme, and carries out what is asked of the desktop. Owned by the process; main queue.
class WindowInterface final : public QBApplicationInterface
{
public:
    WindowInterface();
    ~WindowInterface() override;

    [[nodiscard]] DesktopAppearance &appearance() { return *m_appearance; }
    [[nodiscard]] QBMainWindowController *window() { return m_window.get(); }
    /// Ties the window to the desktop of the session. Once.
    void integrateWithDesktop();

    // QBApplicationInterface
    [[nodiscard]] QBMainWindowInterface *mainWindow() override;
    [[nodiscard]] bool hasVisibleWindows() const override;
    [[nodiscard]] std::unique_ptr<QBLoadingWindowInterface> makeLoadingWindow() override;
    void showAlert(const QBAlert &alert, Answered answered) override;
    [[nodiscard]] QString keyEditorNoteTitle() const override;
    [[nodiscard]] std::shared_ptr<NSPasteboard> generalPasteboard() override;
    void activate() override;
    void bringAllWindowsForward() override;
    void openWebsite(const QUrl &url) override;
    void revealFolder(const QString &folder) override;
    [[nodiscard]] bool showQuickNote() override;
    void terminate() override;
    void terminateWithoutAsking() override;
    [[noreturn]] void exitProcess(int status) override;

    // ThemeHost
    void setApplicationIconNamed(const QString &name) override;
    void updateDetachedEditorWindows() override;
    void loadThemeInDetachedEditorWindows(const std::shared_ptr<QBTheme> &theme) override;

private:
    std::unique_ptr<DesktopAppearance> m_appearance;
    std::unique_ptr<SpellingService> m_spelling;
    std::unique_ptr<WindowStyle> m_style;
    std::unique_ptr<QBMainWindowController> m_window;
    std::unique_ptr<DesktopIntegration> m_integration;
    std::shared_ptr<NSPasteboard> m_pasteboard;
    std::shared_ptr<QBTheme> m_textTheme;
};

/// A process with windows. Made where there is a display.
class WindowFrontEnd final : public FrontEnd
{
    Q_DECLARE_TR_FUNCTIONS(WindowFrontEnd)

public:
    /// Whether the session has a display to show windows on, and it answers. To be asked before the application is
    /// made.
    [[nodiscard]] static bool hasDisplay();

    WindowFrontEnd();
    ~WindowFrontEnd() override;

    [[nodiscard]] std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv) override;
    [[nodiscard]] std::unique_ptr<QBApplicationInterface> makeInterface() override;
    [[nodiscard]] bool hasWindows() const override { return true; }
    void profileCannotBeHad(const NSError &error, const QString &folder) override;
    void processDidLaunch(QuibProcess &process) override;
    void processWillEnd(QuibProcess &process) override;

private:
    std::unique_ptr<InterfaceLanguage> m_language;
};

} // namespace quib
