#include "InstanceService.h"

#include <Logging/QBLogger.h>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVariant>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr auto kFailed = "net.quibworks.Quib.Error.Failed"_L1;

/// Takes what proves that the user asked for a window to where the window system looks for it.
void takePlatformData(const QVariantMap &data)
{
    const QByteArray token = data.value(u"activation-token"_s).toString().toUtf8();
    if (!token.isEmpty() && token.size() < 4096) {
        qputenv("XDG_ACTIVATION_TOKEN", token);
    }
}

QVariantMap mapOf(const QVariant &argument)
{
    return qdbus_cast<QVariantMap>(argument);
}

} // namespace

InstanceService::InstanceService(InstanceServant &servant)
    : m_servant(servant)
    , m_connection(QString())
{
}

InstanceService::~InstanceService()
{
    unregister();
}

bool InstanceService::registerAt(const QDBusConnection &connection, const InstanceName &name)
{
    if (!connection.isConnected()) {
        return false;
    }
    m_connection = connection;
    m_objectPath = name.objectPath;
    // The object first: a call may come with the name.
    if (!m_connection.registerVirtualObject(m_objectPath, this)) {
        return false;
    }
    if (!m_connection.registerService(name.busName)) {
        m_connection.unregisterObject(m_objectPath);
        return false;
    }
    m_names.append(name.busName);
    return true;
}

void InstanceService::addName(const QString &busName)
{
    if (!m_names.contains(busName) && m_connection.registerService(busName)) {
        m_names.append(busName);
        const QString path = u'/' + QString(busName).replace(u'.', u'/');
        if (path != m_objectPath) {
            m_connection.registerVirtualObject(path, this);
        }
    }
}

void InstanceService::unregister()
{
    for (const QString &name : std::exchange(m_names, {})) {
        m_connection.unregisterService(name);
    }
}

QString InstanceService::introspect(const QString & /*path*/) const
{
    return uR"(
  <interface name="org.freedesktop.Application">
    <method name="Activate"><arg type="a{sv}" name="platform_data" direction="in"/></method>
    <method name="Open">
      <arg type="as" name="uris" direction="in"/><arg type="a{sv}" name="platform_data" direction="in"/>
    </method>
    <method name="ActivateAction">
      <arg type="s" name="action_name" direction="in"/><arg type="av" name="parameter" direction="in"/>
      <arg type="a{sv}" name="platform_data" direction="in"/>
    </method>
  </interface>
  <interface name="net.quibworks.Quib">
    <method name="SendText"><arg type="s" name="text" direction="in"/></method>
    <method name="SendBytes"><arg type="ay" name="text" direction="in"/></method>
    <method name="SendURIs"><arg type="as" name="uris" direction="in"/></method>
    <method name="CurrentNoteTitle"><arg type="s" name="title" direction="out"/></method>
    <method name="ContinueActivity">
      <arg type="a{sv}" name="user_info" direction="in"/><arg type="b" name="handled" direction="out"/>
    </method>
  </interface>
)"_s;
}

bool InstanceService::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    if (message.type() != QDBusMessage::MethodCallMessage) {
        return false;
    }
    // A call without an interface means whichever has the member.
    const QString interface = message.interface();
    const bool isAny = interface.isEmpty();
    return ((isAny || interface == kApplicationInterface) && handleApplicationCall(message, connection)) ||
           ((isAny || interface == kQuibInterface) && handleQuibCall(message, connection));
}

bool InstanceService::handleApplicationCall(const QDBusMessage &message, const QDBusConnection &connection)
{
    const QString call = message.member() % u'(' % message.signature() % u')';
    const QVariantList arguments = message.arguments();
    using Kind = InstanceRequest::Kind;
    if (call == "Activate(a{sv})"_L1) {
        takePlatformData(mapOf(arguments[0]));
        hand({.kind = Kind::Activate}, message, connection, /*waits=*/false);
    } else if (call == "Open(asa{sv})"_L1) {
        takePlatformData(mapOf(arguments[1]));
        hand({.kind = Kind::Open, .uris = arguments[0].toStringList()}, message, connection, /*waits=*/false);
    } else if (call == "ActivateAction(sava{sv})"_L1) {
        takePlatformData(mapOf(arguments[2]));
        const auto parameters = qdbus_cast<QVariantList>(arguments[1]);
        QVariant parameter = parameters.isEmpty() ? QVariant() : parameters.first();
        if (parameter.canConvert<QDBusVariant>()) {
            parameter = parameter.value<QDBusVariant>().variant();
        }
        hand({.kind = Kind::Action, .action = arguments[0].toString(), .argument = parameter.toString()}, message,
             connection, /*waits=*/true);
    } else {
        return false;
    }
    return true;
}

bool InstanceService::handleQuibCall(const QDBusMessage &message, const QDBusConnection &connection)
{
    const QString call = message.member() % u'(' % message.signature() % u')';
    const QVariantList arguments = message.arguments();
    using Kind = InstanceRequest::Kind;
    if (call == "SendText(s)"_L1) {
        hand({.kind = Kind::SendText, .text = arguments[0].toString().toUtf8()}, message, connection, /*waits=*/true);
    } else if (call == "SendBytes(ay)"_L1) {
        hand({.kind = Kind::SendText, .text = arguments[0].toByteArray()}, message, connection, /*waits=*/true);
    } else if (call == "SendURIs(as)"_L1) {
        hand({.kind = Kind::SendURIs, .uris = arguments[0].toStringList()}, message, connection, /*waits=*/true);
    } else if (call == "CurrentNoteTitle()"_L1) {
        connection.send(message.createReply(m_servant.currentNoteTitle()));
    } else if (call == "ContinueActivity(a{sv})"_L1) {
        connection.send(message.createReply(m_servant.continueActivity(mapOf(arguments[0]))));
    } else {
        return false;
    }
    return true;
}

void InstanceService::hand(const InstanceRequest &request, const QDBusMessage &message,
                           const QDBusConnection &connection, bool waits)
{
    message.setDelayedReply(true);
    if (!waits) {
        connection.send(message.createReply());
        m_servant.serve(request, [](const NSError &error) {
            if (error.isSet()) {
                QBLogWarn(error.localizedDescription());
            }
        });
        return;
    }
    m_servant.serve(request, [message, connection](const NSError &error) {
        connection.send(error.isSet() ? message.createErrorReply(kFailed, error.localizedDescription())
                                      : message.createReply());
    });
}

} // namespace quib
