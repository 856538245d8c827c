#pragma once

#include <QString>

namespace quib {

/// Where everything of one user lies. The folders follow the XDG variables; a root, given by hand or by QUIB_PROFILE,
/// holds them all instead, so that two roots are two devices. Each accessor makes its folder, mode 0700, if it is
/// missing; where that fails, the first write there reports it. Any thread, but setRoot() comes before all others.
class Profile
{
public:
    Profile() = delete;

    /// Puts the whole profile below a folder; relative paths are taken from the current one. Empty goes back to
    /// QUIB_PROFILE and the XDG variables.
    static void setRoot(const QString &folder);
    /// The absolute root, or empty where the XDG variables decide.
    [[nodiscard]] static QString root();

    /// "QBTEAM0000.net.quibworks.quib" in the data home: what the application and its helpers share.
    [[nodiscard]] static QString applicationGroupFolder();
    /// "Application Data" in the group's folder: the store and the attachments.
    [[nodiscard]] static QString persistentDataFolder();
    /// "net.quibworks.quib" in the data home.
    [[nodiscard]] static QString applicationSupportFolder();
    /// "net.quibworks.quib" in the configuration home: the property lists of the preferences.
    [[nodiscard]] static QString preferencesFolder();
    /// "Logs/Quib" in the state home.
    [[nodiscard]] static QString logsFolder();
    /// Where temporary folders are made.
    [[nodiscard]] static QString temporaryFolder();
    /// The user's documents. Never made here: it belongs to the user.
    [[nodiscard]] static QString documentsFolder();
};

/// The name of the application in paths.
inline constexpr QLatin1StringView kBundleIdentifier{"net.quibworks.quib"};
/// The name that the application shares with its helpers.
inline constexpr QLatin1StringView kGroupIdentifier{"QBTEAM0000.net.quibworks.quib"};

} // namespace quib
