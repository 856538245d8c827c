#pragma once

#include <QUrl>

namespace quib {

/// Has the desktop open a URL with the program that the user chose for it: starts xdg-open with the URL as its one
/// argument, without a shell, and does not wait. Which URLs may be opened is decided before.
/// Errors: false for a URL that is not valid or longer than an argument may be, or where there is no opener.
[[nodiscard]] bool openWithDesktop(const QUrl &url);

/// The longest URL that can be handed over. Units: bytes; what the kernel takes as one argument, with room to spare.
inline constexpr qsizetype kLongestOpenedURL = 128 * 1024 - 64;

} // namespace quib
