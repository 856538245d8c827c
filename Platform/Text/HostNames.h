#pragma once

#include <QStringView>

namespace quib {

/// Names of machines, as they stand in links. Any thread.

/// The longest name that the name system can hold, in units.
inline constexpr qsizetype kLongestHostName = 253;

/// Labels of letters, digits, hyphens and underscores, none empty, none beginning or ending in a hyphen, with a last
/// one that holds a letter; or the four numbers of an IPv4 address.
[[nodiscard]] bool isHostName(QStringView host);
/// Whether the name ends in a suffix under which names are registered, and is more than that suffix.
[[nodiscard]] bool hasPublicSuffix(QStringView host);

/// How much a reader needs to take a bare name for a link.
enum class BareNameTrust
{
    Never,    ///< no link unless it has a scheme or begins in "www."
    WithPath, ///< also with a path: the suffix is a word, a property or a file's extension just as often
    OnItsOwn, ///< "example.com"
};
/// Requires: hasPublicSuffix(host).
[[nodiscard]] BareNameTrust trustOfBareName(QStringView host);

} // namespace quib
