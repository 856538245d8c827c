// A display is there where something answers, whatever the environment says.

#include <Support/TemporaryFolder.h>
#include <Window/DisplayProbe.h>

#include <gtest/gtest.h>

#include <QStringList>

#include <algorithm>
#include <utility>
#include <vector>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

/// Sets what tells of displays, and puts back what was there.
class DisplayVariables
{
public:
    DisplayVariables()
    {
        for (const char *name : kNames) {
            m_before.emplace_back(name, qgetenv(name));
            qunsetenv(name);
        }
    }
    DisplayVariables(const DisplayVariables &) = delete;
    DisplayVariables &operator=(const DisplayVariables &) = delete;
    ~DisplayVariables()
    {
        for (const auto &[name, value] : m_before) {
            value.isNull() ? qunsetenv(name) : qputenv(name, value);
        }
    }
    static void set(const std::vector<std::pair<const char *, QString>> &variables)
    {
        for (const char *name : kNames) {
            qunsetenv(name);
        }
        for (const auto &[name, value] : variables) {
            qputenv(name, value.toUtf8());
        }
    }

private:
    static constexpr const char *kNames[] = {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET",
                                             "XDG_RUNTIME_DIR"};
    std::vector<std::pair<const char *, QByteArray>> m_before;
};

/// Somebody who answers at a path.
class Listener
{
public:
    explicit Listener(const QString &path)
        : m_descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray name = path.toUtf8();
        m_isListening = static_cast<size_t>(name.size()) < sizeof(address.sun_path);
        if (m_isListening) {
            std::copy(name.cbegin(), name.cend(), address.sun_path);
            m_isListening = ::bind(m_descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof(address)) == 0 &&
                            ::listen(m_descriptor, 8) == 0;
        }
    }
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;
    ~Listener() { ::close(m_descriptor); }
    [[nodiscard]] bool isListening() const { return m_isListening; }

private:
    int m_descriptor;
    bool m_isListening = false;
};

} // namespace

TEST(DisplayProbe, OnlyWhatAnswersIsThere)
{
    const DisplayVariables variables;
    TemporaryFolder folder;
    folder.write(u"plugins/platforms/libqwayland-generic.so"_s, "");
    const Listener server(folder.path(u"wayland-7"_s));
    ASSERT_TRUE(server.isListening());
    folder.write(u"wayland-8"_s, "no socket");
    const QString there = folder.path(u"wayland-7"_s);
    const QString runtime = folder.path();
    const QStringList withPlugin = {folder.path(u"elsewhere"_s), folder.path(u"plugins"_s)};
    // No server has a number like this.
    const QString nowhere = u":54321"_s;
    struct Case
    {
        const char *name;
        std::vector<std::pair<const char *, QString>> environment;
        QStringList plugins;
        bool isThere;
    };
    const std::vector<Case> cases = {
        {"nothing is set", {}, withPlugin, false},
        {"empty ones", {{"DISPLAY", u""_s}, {"WAYLAND_DISPLAY", u""_s}}, withPlugin, false},
        {"an X display that is gone", {{"DISPLAY", nowhere}}, withPlugin, false},
        {"no name of one", {{"DISPLAY", u"nonsense"_s}}, withPlugin, false},
        {"a Wayland display", {{"WAYLAND_DISPLAY", there}}, withPlugin, true},
        {"by its name",
         {{"WAYLAND_DISPLAY", u"wayland-7"_s}, {"XDG_RUNTIME_DIR", runtime}, {"DISPLAY", nowhere}},
         withPlugin,
         true},
        {"one that is gone", {{"WAYLAND_DISPLAY", u"wayland-6"_s}, {"XDG_RUNTIME_DIR", runtime}}, withPlugin, false},
        {"one that is a file", {{"WAYLAND_DISPLAY", u"wayland-8"_s}, {"XDG_RUNTIME_DIR", runtime}}, withPlugin, false},
        {"one that nothing here speaks to", {{"WAYLAND_DISPLAY", there}}, {folder.path()}, false},
        {"a name that is too long", {{"WAYLAND_DISPLAY", u"/"_s + u"x"_s.repeated(300)}}, withPlugin, false},
        {"a connection that is made", {{"WAYLAND_SOCKET", u"9"_s}}, withPlugin, true},
        {"none wanted", {{"QT_QPA_PLATFORM", u"offscreen"_s}, {"WAYLAND_DISPLAY", there}}, withPlugin, false},
        {"another kind wanted", {{"QT_QPA_PLATFORM", u"xcb"_s}, {"WAYLAND_DISPLAY", there}}, withPlugin, false},
        {"the first of two that works",
         {{"QT_QPA_PLATFORM", u"xcb;wayland"_s}, {"WAYLAND_DISPLAY", there}},
         withPlugin,
         true},
        {"a kind of its own", {{"QT_QPA_PLATFORM", u"vnc:size=9x9"_s}}, withPlugin, true},
    };
    for (const Case &testCase : cases) {
        DisplayVariables::set(testCase.environment);
        EXPECT_EQ(isDisplayReachable(testCase.plugins), testCase.isThere) << testCase.name;
    }
}

} // namespace quib::tests
