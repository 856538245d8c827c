#include "TrayIcon.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr auto kWatcher = "org.kde.StatusNotifierWatcher"_L1;
constexpr auto kPath = "/StatusNotifierWatcher"_L1;

} // namespace

TrayIcon::TrayIcon(const QDBusConnection &bus, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_menu(std::make_unique<QMenu>())
{
    if (!m_bus.isConnected()) {
        return;
    }
    for (const auto &signal : {u"StatusNotifierHostRegistered"_s, u"StatusNotifierHostUnregistered"_s}) {
        m_bus.connect(kWatcher, kPath, kWatcher, signal, this, SLOT(lookForHost()));
    }
    auto *watcher = new QDBusServiceWatcher(QString(kWatcher), m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString & /*service*/, const QString & /*oldOwner*/, const QString &newOwner) {
                if (newOwner.isEmpty()) {
                    setHasHost(false);
                } else {
                    lookForHost();
                }
            });
    lookForHost();
}

TrayIcon::~TrayIcon() = default;

void TrayIcon::setWanted(bool isWanted)
{
    m_isWanted = isWanted;
    update();
}

void TrayIcon::lookForHost()
{
    // The toolkit looks once and remembers the answer, so it must not be asked before there is a host.
    QDBusMessage question =
        QDBusMessage::createMethodCall(kWatcher, kPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question.setArguments({QString(kWatcher), u"IsStatusNotifierHostRegistered"_s});
    question.setAutoStartService(false);
    auto *waiting = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(waiting, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *finished) {
        finished->deleteLater();
        const QDBusPendingReply<QDBusVariant> answer = *finished;
        setHasHost(answer.isValid() && answer.value().variant().toBool());
    });
}

void TrayIcon::setHasHost(bool hasHost)
{
    if (hasHost == m_hasHost) {
        return;
    }
    m_hasHost = hasHost;
    update();
    Q_EMIT hostDidChange();
}

void TrayIcon::update()
{
    if (!m_isWanted || !m_hasHost) {
        m_icon.reset();
        return;
    }
    if (m_icon) {
        return;
    }
    m_icon = std::make_unique<QSystemTrayIcon>(
        QIcon::fromTheme(u"net.quibworks.Quib-symbolic"_s, QIcon(u":/icons/net.quibworks.Quib.svg"_s)));
    m_icon->setToolTip(u"Quib"_s);
    m_icon->setContextMenu(m_menu.get());
    connect(m_icon.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick) {
            Q_EMIT showWasRequested();
        } else if (reason == QSystemTrayIcon::MiddleClick) {
            Q_EMIT quickNoteWasRequested();
        }
    });
    m_icon->show();
}

} // namespace quib
