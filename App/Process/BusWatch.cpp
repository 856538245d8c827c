#include "BusWatch.h"

using namespace Qt::StringLiterals;

namespace quib {

BusWatch::BusWatch(const QDBusConnection &connection, std::function<void()> lost)
    : m_lost(std::move(lost))
{
    QDBusConnection(connection)
        .connect(QString(), u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s, this,
                 SLOT(busWasLost()));
}

void BusWatch::busWasLost()
{
    m_lost();
}

} // namespace quib
