#include "DisplayProbe.h"

#include <QByteArray>
#include <QDir>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

bool answersX()
{
    if (qgetenv("DISPLAY").isEmpty()) {
        return false;
    }
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(xcb_connect(nullptr, nullptr),
                                                                                  &xcb_disconnect);
    return xcb_connection_has_error(connection.get()) == 0;
}

bool isListening(const QByteArray &socketPath)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (static_cast<size_t>(socketPath.size()) >= sizeof(address.sun_path)) {
        return false;
    }
    std::copy(socketPath.cbegin(), socketPath.cend(), address.sun_path);
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0) {
        return false;
    }
    const bool isThere = ::connect(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof(address)) == 0;
    ::close(descriptor);
    return isThere;
}

bool answersWayland(const QStringList &pluginFolders)
{
    const bool isSpoken = std::any_of(pluginFolders.cbegin(), pluginFolders.cend(), [](const QString &folder) {
        return !QDir(folder % u"/platforms"_s).entryList({u"libqwayland*.so"_s}, QDir::Files).isEmpty();
    });
    if (!isSpoken) {
        return false;
    }
    if (!qgetenv("WAYLAND_SOCKET").isEmpty()) {
        return true; // a connection that somebody else has made
    }
    const QByteArray name = qgetenv("WAYLAND_DISPLAY");
    if (name.isEmpty()) {
        return false;
    }
    return isListening(name.startsWith('/') ? name : QByteArray(qgetenv("XDG_RUNTIME_DIR") + '/' + name));
}

} // namespace

bool isDisplayReachable(const QStringList &pluginFolders)
{
    const QByteArray platforms = qgetenv("QT_QPA_PLATFORM");
    if (platforms.isEmpty()) {
        return answersWayland(pluginFolders) || answersX();
    }
    // The first of them that works is taken.
    const QByteArrayList names = platforms.split(';');
    return std::any_of(names.cbegin(), names.cend(), [&pluginFolders](const QByteArray &platform) {
        if (platform.startsWith("offscreen") || platform.startsWith("minimal")) {
            return false;
        }
        if (platform.startsWith("wayland")) {
            return answersWayland(pluginFolders);
        }
        return !platform.startsWith("xcb") || answersX();
    });
}

} // namespace quib
