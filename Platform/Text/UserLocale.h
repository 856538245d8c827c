#pragma once

namespace quib {

/// ICU's name of the user's language. The C locale orders by ASCII code and knows no date styles, so American English
/// stands in for it. Valid for the life of the process.
[[nodiscard]] const char *userLocale();

} // namespace quib
