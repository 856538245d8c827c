#include "WindowFixture.h"

#include <Process/InstanceRequest.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Support/QtPrinters.h>
#include <Window/DesktopAppearance.h>
#include <Window/DesktopIntegration.h>
#include <Window/MessageBar.h>
#include <Window/QuickNoteWindow.h>

#include <QAction>
#include <QApplication>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QDeadlineTimer>
#include <QMenu>
#include <QProcess>
#include <QStandardPaths>

#include <functional>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

constexpr auto kPortal = "org.freedesktop.portal.Desktop"_L1;
constexpr auto kPortalPath = "/org/freedesktop/portal/desktop"_L1;
constexpr auto kShortcuts = "org.freedesktop.portal.GlobalShortcuts"_L1;
constexpr auto kSession = "/session/of/quib"_L1;
constexpr auto kTray = "org.kde.StatusNotifierWatcher"_L1;

/// The desktop's side: a portal for shortcuts and a watcher of trays, as far as they are asked.
class Desktop final : public QDBusVirtualObject
{
public:
    explicit Desktop(QDBusConnection bus)
        : m_bus(std::move(bus))
    {
    }

    uint sessionResponse = 0;
    uint bindingResponse = 0;
    bool hasTrayHost = true;
    uint colorScheme = 0;
    QStringList boundIdentifiers;

    [[nodiscard]] QString introspect(const QString & /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection & /*connection*/) override
    {
        if (message.member() == u"Get") {
            return m_bus.send(message.createReply(QVariant::fromValue(QDBusVariant(hasTrayHost))));
        }
        if (message.member() == u"Read") {
            // The older of the portal's questions wraps its answer twice.
            const QDBusVariant inner(QVariant::fromValue(colorScheme));
            return m_bus.send(message.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(inner)))));
        }
        if (message.interface() != kShortcuts) {
            return false;
        }
        const QVariantMap options = qdbus_cast<QVariantMap>(message.arguments().constLast());
        QString sender = message.service().mid(1);
        sender.replace(u'.', u'_');
        const QString request =
            kPortalPath % u"/request/"_s % sender % u'/' % options.value(u"handle_token"_s).toString();
        m_bus.send(message.createReply(QVariant::fromValue(QDBusObjectPath(request))));
        QDBusMessage answer = QDBusMessage::createSignal(request, u"org.freedesktop.portal.Request"_s, u"Response"_s);
        if (message.member() == u"CreateSession") {
            answer.setArguments({sessionResponse, QVariantMap{{u"session_handle"_s, QString(kSession)}}});
        } else {
            takeShortcuts(message.arguments()[1].value<QDBusArgument>());
            answer.setArguments({bindingResponse, QVariantMap()});
        }
        return m_bus.send(answer);
    }

    void pressKey(const QString &identifier, const QString &session = kSession)
    {
        QDBusMessage signal = QDBusMessage::createSignal(kPortalPath, kShortcuts, u"Activated"_s);
        signal.setArguments({QVariant::fromValue(QDBusObjectPath(session)), identifier, qulonglong(1), QVariantMap()});
        m_bus.send(signal);
    }

    void setColorScheme(uint scheme)
    {
        colorScheme = scheme;
        QDBusMessage signal =
            QDBusMessage::createSignal(kPortalPath, u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s);
        signal.setArguments({u"org.freedesktop.appearance"_s, u"color-scheme"_s,
                             QVariant::fromValue(QDBusVariant(QVariant::fromValue(scheme)))});
        m_bus.send(signal);
    }

    void setTrayHost(bool hasHost)
    {
        hasTrayHost = hasHost;
        m_bus.send(QDBusMessage::createSignal(u"/StatusNotifierWatcher"_s, kTray,
                                              hasHost ? u"StatusNotifierHostRegistered"_s
                                                      : u"StatusNotifierHostUnregistered"_s));
    }

private:
    void takeShortcuts(const QDBusArgument &array)
    {
        boundIdentifiers.clear();
        array.beginArray();
        while (!array.atEnd()) {
            QString identifier;
            QVariantMap properties;
            array.beginStructure();
            array >> identifier >> properties;
            array.endStructure();
            EXPECT_FALSE(properties.value(u"description"_s).toString().isEmpty());
            boundIdentifiers.append(identifier);
        }
        array.endArray();
    }

    QDBusConnection m_bus;
};

class DesktopTies : public WindowFixture
{
protected:
    void SetUp() override
    {
        if (QStandardPaths::findExecutable(u"dbus-daemon"_s).isEmpty()) {
            GTEST_SKIP() << "there is no dbus-daemon";
        }
        m_daemon.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--print-address=1"_s});
        ASSERT_TRUE(m_daemon.waitForReadyRead(60'000));
        const QString address = QString::fromUtf8(m_daemon.readLine()).trimmed();
        m_server = std::make_unique<QDBusConnection>(QDBusConnection::connectToBus(address, u"desktop"_s));
        m_client = std::make_unique<QDBusConnection>(QDBusConnection::connectToBus(address, u"program"_s));
        desktop = std::make_unique<Desktop>(*m_server);
    }
    void TearDown() override
    {
        ties.reset();
        quit();
        desktop.reset();
        m_server.reset();
        m_client.reset();
        QDBusConnection::disconnectFromBus(u"desktop"_s);
        QDBusConnection::disconnectFromBus(u"program"_s);
        m_daemon.terminate();
        m_daemon.waitForFinished();
    }
    void provide(QLatin1StringView service, const QString &path)
    {
        m_server->registerVirtualObject(path, desktop.get());
        ASSERT_TRUE(m_server->registerService(service));
    }
    void providePortal() { provide(kPortal, QString(kPortalPath)); }
    void provideTray() { provide(kTray, u"/StatusNotifierWatcher"_s); }
    void withdraw(QLatin1StringView service) { m_server->unregisterService(service); }
    void tie() { ties = std::make_unique<DesktopIntegration>(window(), *m_client); }
    /// Lets messages come and go until something holds.
    [[nodiscard]] static bool waitFor(const std::function<bool()> &condition)
    {
        const QDeadlineTimer deadline(20'000);
        while (!condition()) {
            if (deadline.hasExpired()) {
                return false;
            }
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 50);
        }
        return true;
    }

    [[nodiscard]] const QDBusConnection &bus() const { return *m_client; }

    std::unique_ptr<Desktop> desktop;
    std::unique_ptr<DesktopIntegration> ties;

private:
    QProcess m_daemon;
    std::unique_ptr<QDBusConnection> m_server;
    std::unique_ptr<QDBusConnection> m_client;
};

TEST_F(DesktopTies, KeysFromEverywhereReachTheWindow)
{
    launch({u"# One"_s});
    providePortal();
    tie();
    settle();
    EXPECT_FALSE(ties->shortcuts().isBound()) << "nobody asked for them yet";
    trigger(u"global-shortcuts"_s);
    ASSERT_TRUE(waitFor([this] { return ties->shortcuts().isBound(); }));
    EXPECT_EQ(desktop->boundIdentifiers, (QStringList{kActionQuickNote, kActionShow, kActionSearch}));
    EXPECT_FALSE(window().messages().text().isEmpty());
    desktop->pressKey(u"quick-note"_s, u"/session/of/another"_s);
    desktop->pressKey(u"search"_s);
    ASSERT_TRUE(waitFor([this] {
        return window().focusWidget() != nullptr && window().focusWidget()->objectName() == u"searchField";
    }));
    EXPECT_EQ(window().quickNote(), nullptr) << "the key of another session is not ours";
    desktop->pressKey(u"quick-note"_s);
    ASSERT_TRUE(waitFor([this] { return window().quickNote() != nullptr && window().quickNote()->isVisible(); }));
}

TEST_F(DesktopTies, KeysAreBoundAgainAtTheNextStartAndWithTheNextPortal)
{
    launch();
    providePortal();
    tie();
    trigger(u"global-shortcuts"_s);
    ASSERT_TRUE(waitFor([this] { return ties->shortcuts().isBound(); }));
    ties.reset();
    desktop->boundIdentifiers.clear();
    tie();
    ASSERT_TRUE(waitFor([this] { return ties->shortcuts().isBound(); }));
    EXPECT_EQ(desktop->boundIdentifiers.size(), 3);
    desktop->boundIdentifiers.clear();
    withdraw(kPortal);
    providePortal();
    ASSERT_TRUE(waitFor([this] { return desktop->boundIdentifiers.size() == 3; }));
}

TEST_F(DesktopTies, WithoutAPortalTheMessageTellsWhatElseToDo)
{
    launch();
    tie();
    trigger(u"global-shortcuts"_s);
    ASSERT_TRUE(waitFor([this] { return !window().messages().text().isEmpty(); }));
    EXPECT_TRUE(window().messages().text().contains(u"quib --quick-note"));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(DesktopTies, AUserWhoDeclinesIsNotAskedAgain)
{
    launch();
    providePortal();
    desktop->bindingResponse = 1;
    tie();
    trigger(u"global-shortcuts"_s);
    ASSERT_TRUE(waitFor([this] { return !window().messages().text().isEmpty(); }));
    desktop->boundIdentifiers.clear();
    ties.reset();
    tie();
    for (int i = 0; i < 20; ++i) {
        settle();
    }
    EXPECT_TRUE(desktop->boundIdentifiers.isEmpty());
}

TEST_F(DesktopTies, DarkAndLightAreFollowedAsTheyChange)
{
    providePortal();
    DesktopAppearance appearance(bus());
    QList<bool> told;
    QObject::connect(&appearance, &DesktopAppearance::didChange, &appearance,
                     [&told](bool isDark) { told.append(isDark); });
    for (const uint scheme : {1U, 1U, 2U, 1U, 0U}) {
        desktop->setColorScheme(scheme);
    }
    ASSERT_TRUE(waitFor([&told] { return told.size() == 4; })) << testing::PrintToString(told) << appearance.isDark();
    EXPECT_EQ(told, (QList<bool>{true, false, true, false}));
    EXPECT_FALSE(appearance.isDark());
}

TEST_F(DesktopTies, TheTraysIconComesAndGoesWithItsHost)
{
    launch();
    tie();
    const QAction *command = window().action(u"tray-icon"_s);
    EXPECT_FALSE(ties->tray().isShown());
    EXPECT_FALSE(command->isVisible()) << "a command that does nothing is not offered";
    provideTray();
    ASSERT_TRUE(waitFor([this] { return ties->tray().isShown(); }));
    EXPECT_TRUE(command->isVisible());
    desktop->setTrayHost(false);
    ASSERT_TRUE(waitFor([this] { return !ties->tray().isShown(); }));
    desktop->setTrayHost(true);
    ASSERT_TRUE(waitFor([this] { return ties->tray().isShown(); }));
    withdraw(kTray);
    ASSERT_TRUE(waitFor([this] { return !ties->tray().isShown(); }));
    provideTray();
    ASSERT_TRUE(waitFor([this] { return ties->tray().isShown(); }));
    trigger(u"tray-icon"_s);
    EXPECT_FALSE(ties->tray().isShown()) << "the user does not want it";
    for (QAction *offered : ties->tray().menu().actions()) {
        if (offered->text() == u"Quick Note") {
            offered->trigger();
        }
    }
    ASSERT_NE(window().quickNote(), nullptr);
    EXPECT_TRUE(window().quickNote()->isVisible());
}

} // namespace

} // namespace quib::tests
