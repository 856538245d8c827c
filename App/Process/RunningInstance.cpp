#include "RunningInstance.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace quib {

RunningInstance::RunningInstance(const QDBusConnection &connection, const InstanceName &name)
    : m_connection(connection)
    , m_name(name)
{
}

bool RunningInstance::isThere() const
{
    return m_connection.isConnected() && m_connection.interface()->isServiceRegistered(m_name.busName).value();
}

bool RunningInstance::hand(const InstanceRequest &request, NSError *error) const
{
    const auto message = [this](QLatin1StringView interface, const QString &member, const QVariantList &arguments) {
        QDBusMessage call = QDBusMessage::createMethodCall(m_name.busName, m_name.objectPath, interface, member);
        call.setArguments(arguments);
        // One that has just ended must not be started again by the bus: this process takes its place.
        call.setAutoStartService(false);
        return call;
    };
    QDBusMessage call;
    switch (request.kind) {
    case InstanceRequest::Kind::Activate:
        call = message(kApplicationInterface, u"Activate"_s, {platformData()});
        break;
    case InstanceRequest::Kind::Open:
        call = message(kApplicationInterface, u"Open"_s, {request.uris, platformData()});
        break;
    case InstanceRequest::Kind::Action: {
        const QVariantList parameters =
            request.argument.isEmpty() ? QVariantList() : QVariantList{QVariant(request.argument)};
        call =
            message(kApplicationInterface, u"ActivateAction"_s, {request.action, QVariant(parameters), platformData()});
        break;
    }
    case InstanceRequest::Kind::SendURIs:
        call = message(kQuibInterface, u"SendURIs"_s, {request.uris});
        break;
    case InstanceRequest::Kind::SendText:
        call = message(kQuibInterface, u"SendBytes"_s, {request.text});
        break;
    }
    const QDBusMessage reply = m_connection.call(call, QDBus::Block, kTimeout);
    if (reply.type() == QDBusMessage::ErrorMessage) {
        // Without an answer, the one who owned the name decides: as long as it is there, it was only slow.
        const bool isGone = !isThere() && (reply.errorName() == "org.freedesktop.DBus.Error.NoReply"_L1 ||
                                           reply.errorName() == "org.freedesktop.DBus.Error.ServiceUnknown"_L1 ||
                                           reply.errorName() == "org.freedesktop.DBus.Error.NameHasNoOwner"_L1);
        return NSError::fill(error, kErrorDomain, isGone ? kGone : kRefused, reply.errorMessage());
    }
    return true;
}

QVariantMap RunningInstance::platformData()
{
    QVariantMap data;
    for (const auto &[variable, key] : {std::pair{"DESKTOP_STARTUP_ID", u"desktop-startup-id"_s},
                                        std::pair{"XDG_ACTIVATION_TOKEN", u"activation-token"_s}}) {
        const QString value = qEnvironmentVariable(variable);
        if (!value.isEmpty()) {
            data.insert(key, value);
        }
    }
    return data;
}

} // namespace quib
