#include "GlobalShortcuts.h"

#include <Logging/QBLogger.h>

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>

#include <utility>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr auto kService = "org.freedesktop.portal.Desktop"_L1;
constexpr auto kPath = "/org/freedesktop/portal/desktop"_L1;
constexpr auto kInterface = "org.freedesktop.portal.GlobalShortcuts"_L1;
constexpr auto kRequestInterface = "org.freedesktop.portal.Request"_L1;
constexpr auto kApplication = "net.quibworks.Quib"_L1;
constexpr uint kGranted = 0;

} // namespace

/// What the portal writes as (sa{sv}).
struct PortalShortcut
{
    QString identifier;
    QVariantMap properties;
};

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument << shortcut.identifier << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument >> shortcut.identifier >> shortcut.properties;
    argument.endStructure();
    return argument;
}

GlobalShortcuts::GlobalShortcuts(const QDBusConnection &bus, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
{
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
}

void GlobalShortcuts::bind(const QList<Shortcut> &shortcuts)
{
    const bool isFirst = m_shortcuts.isEmpty();
    m_shortcuts = shortcuts;
    if (!m_bus.isConnected()) {
        fail(/*isAbsent=*/true);
        return;
    }
    if (isFirst) {
        m_bus.connect(kService, kPath, kInterface, u"Activated"_s, this, SLOT(wasActivated(QDBusMessage)));
        auto *watcher =
            new QDBusServiceWatcher(QString(kService), m_bus, QDBusServiceWatcher::WatchForRegistration, this);
        connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] {
            if (!m_session.isEmpty()) { // it went with the portal that made it
                createSession();
            }
        });
        // A program outside of a sandbox says who it is; portals that are too old for that find out themselves.
        QDBusMessage naming =
            QDBusMessage::createMethodCall(kService, kPath, u"org.freedesktop.host.portal.Registry"_s, u"Register"_s);
        naming.setArguments({QString(kApplication), QVariantMap()});
        m_bus.asyncCall(naming);
    }
    createSession();
}

void GlobalShortcuts::createSession()
{
    m_session.clear();
    m_isBound = false;
    request(u"CreateSession"_s, {}, {{u"session_handle_token"_s, u"quib"_s}},
            SLOT(sessionDidAnswer(uint, QVariantMap)));
}

void GlobalShortcuts::request(const QString &method, const QVariantList &arguments, QVariantMap options,
                              const char *answerSlot)
{
    // The answer comes to an object whose path is known before, so that it cannot be missed.
    const QString token = u"quib%1"_s.arg(++m_requests);
    QString sender = m_bus.baseService().mid(1);
    sender.replace(u'.', u'_');
    const QString path = kPath % u"/request/"_s % sender % u'/' % token;
    m_bus.connect(kService, path, kRequestInterface, u"Response"_s, this, answerSlot);
    options.insert(u"handle_token"_s, token);
    QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, kInterface, method);
    call.setArguments(arguments + QVariantList{options});
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *finished) {
        finished->deleteLater();
        if (finished->isError()) {
            QBLogInfo(QString(u"no global shortcuts: "_s % finished->error().message()));
            fail(/*isAbsent=*/true);
        }
    });
}

void GlobalShortcuts::sessionDidAnswer(uint response, const QVariantMap &results)
{
    m_session = results.value(u"session_handle"_s).toString();
    if (response != kGranted || m_session.isEmpty()) {
        fail(/*isAbsent=*/false);
        return;
    }
    QList<PortalShortcut> wanted;
    for (const Shortcut &shortcut : std::as_const(m_shortcuts)) {
        wanted.append(
            {shortcut.identifier,
             {{u"description"_s, shortcut.description}, {u"preferred_trigger"_s, shortcut.preferredTrigger}}});
    }
    request(u"BindShortcuts"_s,
            {QVariant::fromValue(QDBusObjectPath(m_session)), QVariant::fromValue(wanted), QString()}, {},
            SLOT(bindingDidAnswer(uint, QVariantMap)));
}

void GlobalShortcuts::bindingDidAnswer(uint response, const QVariantMap &results)
{
    if (response != kGranted) {
        fail(/*isAbsent=*/false);
        return;
    }
    m_isBound = true;
    QStringList keys;
    for (const PortalShortcut &bound : qdbus_cast<QList<PortalShortcut>>(results.value(u"shortcuts"_s))) {
        if (const QString trigger = bound.properties.value(u"trigger_description"_s).toString(); !trigger.isEmpty()) {
            keys.append(trigger);
        }
    }
    Q_EMIT didBind(keys);
}

void GlobalShortcuts::wasActivated(const QDBusMessage &message)
{
    const QVariantList arguments = message.arguments();
    if (arguments.size() >= 2 && arguments[0].value<QDBusObjectPath>().path() == m_session) {
        Q_EMIT activated(arguments[1].toString());
    }
}

void GlobalShortcuts::fail(bool isAbsent)
{
    m_isBound = false;
    Q_EMIT didFail(isAbsent);
}

} // namespace quib
