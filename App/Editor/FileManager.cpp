#include "FileManager.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>

#include <utility>

using namespace Qt::StringLiterals;

namespace quib {

void showInFileManager(const QUrl &file, QObject *owner, std::function<void()> fallback)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        fallback();
        return;
    }
    QDBusMessage message =
        QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s,
                                       u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    message << QStringList{file.toString(QUrl::FullyEncoded)} << QString();
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), owner);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, owner, [watcher, fallback = std::move(fallback)] {
        const QDBusPendingReply<> reply = *watcher;
        if (reply.isError()) {
            fallback();
        }
        watcher->deleteLater();
    });
}

} // namespace quib
