#include "QBDeviceUUID.h"

#include <Files/AtomicFile.h>
#include <Files/Profile.h>
#include <Foundation/Identifiers.h>

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QStringList>
#include <QSysInfo>
#include <QUuid>

#include <cstdio>
#include <mutex>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// Names made from machines and profiles are unique within this one.
const QUuid &nameSpace()
{
    static const QUuid space(u"{5d0b7d5e-6c1f-4f0a-9d49-0a5c3a6b7e21}"_s);
    return space;
}

std::optional<QString> readIdentifier(const QString &path)
{
    const auto bytes = quib::readWholeFile(path, nullptr, /*limit=*/4096);
    const QUuid read = bytes ? QUuid::fromString(QString::fromLatin1(bytes->trimmed())) : QUuid();
    return read.isNull() ? std::nullopt : std::optional(read.toString(QUuid::WithoutBraces).toUpper());
}

} // namespace

QByteArray QBDeviceUUID::machineIdentifier(const QStringList &paths)
{
    for (const QString &path : paths) {
        const QByteArray read = quib::readWholeFile(path, nullptr, /*limit=*/4096).value_or(QByteArray()).trimmed();
        // A system image that was never started holds "uninitialized", which is no identifier.
        if (read.size() == 32 && QByteArray::fromHex(read).size() == 16) {
            return read;
        }
    }
    return {};
}

QString QBDeviceUUID::uuidForMachine(const QByteArray &machineIdentifier, const QString &profileFolder)
{
    const QByteArray name = machineIdentifier + '\n' + QFile::encodeName(profileFolder);
    return QUuid::createUuidV5(nameSpace(), name).toString(QUuid::WithoutBraces).toUpper();
}

std::optional<QString> QBDeviceUUID::keptIdentifier(const QString &path)
{
    if (auto kept = readIdentifier(path)) {
        return kept;
    }
    if (QFileInfo::exists(path)) {
        QFile::remove(path); // damaged
    }
    // A link fails where the file came to be meanwhile; then the other's identifier holds.
    const QString made = quib::uuidString();
    const QString beside = path % u'.' % made;
    if (!quib::ensureFolder(QFileInfo(path).path(), nullptr) ||
        !quib::writeFileAtomically(beside, made.toLatin1(), nullptr)) {
        return std::nullopt;
    }
    static_cast<void>(::link(QFile::encodeName(beside).constData(), QFile::encodeName(path).constData()));
    QFile::remove(beside);
    quib::syncFolder(QFileInfo(path).path());
    return readIdentifier(path);
}

std::optional<QString> QBDeviceUUID::deviceUUID()
{
    struct Known
    {
        std::mutex mutex;
        QHash<QString, QString> byProfile;
    };
    static Known known;
    const QString folder = quib::Profile::applicationGroupFolder();
    const std::lock_guard lock(known.mutex);
    const auto found = known.byProfile.constFind(folder);
    if (found != known.byProfile.cend()) {
        return *found;
    }
    const QByteArray machine = machineIdentifier({u"/etc/machine-id"_s, u"/var/lib/dbus/machine-id"_s});
    const QString canonical = QFileInfo(folder).canonicalFilePath();
    std::optional<QString> identifier;
    if (machine.isEmpty()) {
        identifier = keptIdentifier(quib::Profile::applicationSupportFolder() % u"/.device-id");
    } else {
        identifier = uuidForMachine(machine, canonical.isEmpty() ? folder : canonical);
    }
    if (!identifier) {
        std::fputs("Failed to get system UUID: unknown error\n", stderr);
        return std::nullopt;
    }
    known.byProfile.insert(folder, *identifier);
    return identifier;
}

QString QBDeviceUUID::deviceName()
{
    return QSysInfo::machineHostName();
}
