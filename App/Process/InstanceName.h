#pragma once

#include <QString>

namespace quib {

/// Where the instance of one profile is found on the session bus. A value.
struct InstanceName
{
    QString busName;
    QString objectPath;

    /// The instance of a profile.
    /// Shape:   an empty root stands for the user's own profile, whose name is plain; others get a suffix made from the
    ///          path, links in it resolved.
    [[nodiscard]] static InstanceName forProfile(const QString &root);

    friend bool operator==(const InstanceName &, const InstanceName &) = default;
};

/// The name of the user's own profile, by which the desktop knows the application.
inline constexpr QLatin1StringView kApplicationName{"net.quibworks.Quib"};
/// The interface of what only Quib offers.
inline constexpr QLatin1StringView kQuibInterface{"net.quibworks.Quib"};
inline constexpr QLatin1StringView kApplicationInterface{"org.freedesktop.Application"};

} // namespace quib
