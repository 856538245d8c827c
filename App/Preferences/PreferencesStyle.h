#pragma once

#include <QString>

namespace quib {

/// How the window of preferences is dressed, in the colours of the application's palette as it is now. Queue: main.
[[nodiscard]] QString preferencesStyleSheet();

} // namespace quib
