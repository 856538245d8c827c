#pragma once

#include <QString>

/// Facts of the machine and the program, as the operating system tells them. Any thread.
class FTWDevice
{
public:
    FTWDevice() = delete;

    /// The program's version, without the build number that may follow a "+".
    [[nodiscard]] static QString appShortVersion();
    /// What follows the "+" of the program's version; "0" where nothing does.
    [[nodiscard]] static QString appBuildNumber();
    [[nodiscard]] static QString systemName();
    [[nodiscard]] static QString systemVersion();
    /// What the maker calls the machine; "Unknown" where the firmware does not say.
    [[nodiscard]] static QString model();
    [[nodiscard]] static QString hardwareModel();
    /// The processor's architecture.
    [[nodiscard]] static QString platform();
    /// Free and total space where the profile lies, as byte counts in words.
    [[nodiscard]] static QString freeDiskSpace();
    [[nodiscard]] static QString totalDiskSpace();
    /// Whether the screen has more than one pixel a point. Told by whoever has a window; false before.
    [[nodiscard]] static bool isRetina();
    static void setScreenScale(double scale);
};
