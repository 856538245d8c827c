#pragma once

#include <QDBusConnection>
#include <QObject>

#include <functional>

namespace quib {

/// Tells when a connection to a bus is lost, which is how a session without a window system ends. Main queue.
class BusWatch final : public QObject
{
    Q_OBJECT
public:
    /// Nothing is watched where there is no connection.
    BusWatch(const QDBusConnection &connection, std::function<void()> lost);

private:
    // Bus signals reach slots by name only.
    Q_SLOT void busWasLost();

    std::function<void()> m_lost;
};

} // namespace quib
