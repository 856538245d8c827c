#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

namespace quib {

/// Whether the desktop is dark, as its portal tells (org.freedesktop.appearance, color-scheme), and each change of it.
/// Without a portal the desktop counts as what its palette is. Owned by whoever makes the windows; main queue.
class DesktopAppearance final : public QObject
{
    Q_OBJECT

public:
    explicit DesktopAppearance(QDBusConnection bus = QDBusConnection::sessionBus(), QObject *parent = nullptr);

    [[nodiscard]] bool isDark() const { return m_isDark; }

Q_SIGNALS:
    void didChange(bool isDark);

private Q_SLOTS:
    void settingDidChange(const QDBusMessage &message);

private:
    void take(uint scheme);

    bool m_isDark = false;
};

} // namespace quib
