#pragma once

namespace quib {

/// The syntax of the user's notes: 1 in Markdown compatibility mode, else 0, also before the preferences are there.
/// Any thread.
[[nodiscard]] int currentSyntax();

} // namespace quib
