#pragma once

#include "GlobalShortcuts.h"
#include "TrayIcon.h"

#include <QObject>

class QBMainWindowController;

namespace quib {

/// The window's ties to the desktop around it: the icon in the tray and the keys that work everywhere, each as the user
/// wants it. Owned by whoever makes the windows, beside the window; main queue.
class DesktopIntegration final : public QObject
{
    Q_OBJECT

public:
    DesktopIntegration(QBMainWindowController &window, const QDBusConnection &bus);

    [[nodiscard]] TrayIcon &tray() { return m_tray; }
    [[nodiscard]] GlobalShortcuts &shortcuts() { return m_shortcuts; }

private:
    void fillTrayMenu();
    void showWindow();
    void perform(const QString &identifier);
    void bindShortcuts();

    QBMainWindowController &m_window;
    TrayIcon m_tray;
    GlobalShortcuts m_shortcuts;
    /// The user asked just now, and is told how it went.
    bool m_isAsked = false;
};

} // namespace quib
