#pragma once

#include <QDBusConnection>
#include <QObject>

#include <memory>

QT_BEGIN_NAMESPACE
class QMenu;
class QSystemTrayIcon;
QT_END_NAMESPACE

namespace quib {

/// The program's icon in the desktop's tray, where a host shows such icons: it comes and goes as hosts do
/// (org.kde.StatusNotifierWatcher). A click shows the windows, the middle button begins a quick note. Owned by whoever
/// makes the windows; main queue.
class TrayIcon final : public QObject
{
    Q_OBJECT

public:
    explicit TrayIcon(const QDBusConnection &bus, QObject *parent = nullptr);
    ~TrayIcon() override;

    /// Whether the user wants the icon; it is seen only where there is a host as well.
    void setWanted(bool isWanted);
    [[nodiscard]] bool hasHost() const { return m_hasHost; }
    [[nodiscard]] bool isShown() const { return bool(m_icon); }
    /// What a click of the other button offers.
    [[nodiscard]] QMenu &menu() { return *m_menu; }

Q_SIGNALS:
    void showWasRequested();
    void quickNoteWasRequested();
    void hostDidChange();

private Q_SLOTS:
    void lookForHost();

private:
    void setHasHost(bool hasHost);
    void update();

    QDBusConnection m_bus;
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
    bool m_isWanted = false;
    bool m_hasHost = false;
};

} // namespace quib
