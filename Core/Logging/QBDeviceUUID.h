#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// Names this machine, with this profile, to all that is counted by device. Any thread.
class QBDeviceUUID
{
public:
    QBDeviceUUID() = delete;

    /// The identifier as a canonical upper-case UUID. The same across launches: it is made from the machine's
    /// identifier and the place of the profile, so that two profiles are two devices and a profile copied to another
    /// machine is a new one. A machine without an identifier gets a random one, kept in the profile. Errors: nothing,
    /// and a line on standard error, where neither can be had.
    [[nodiscard]] static std::optional<QString> deviceUUID();
    /// The host name of the machine, for display.
    [[nodiscard]] static QString deviceName();

    /// The identifier made from a machine's identifier and a profile's folder; any byte of either changes it.
    [[nodiscard]] static QString uuidForMachine(const QByteArray &machineIdentifier, const QString &profileFolder);
    /// The machine's identifier from the first of the files that holds one (32 hexadecimal digits); empty where none
    /// does.
    [[nodiscard]] static QByteArray machineIdentifier(const QStringList &paths);
    /// The identifier kept in a file, made if the file is missing; nothing where it can be neither read nor made. Two
    /// processes that make it at once agree.
    [[nodiscard]] static std::optional<QString> keptIdentifier(const QString &path);
};
