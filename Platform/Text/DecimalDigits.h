#pragma once

#include <QStringView>

namespace quib {

/// What a decimal digit of any script is worth, or -1 where the character is none. By the same data as the patterns:
/// the toolkit's own is that of another version of Unicode, and knows fewer. Source: the Unicode Character Database,
/// general category Nd, as the ICU library has it.
[[nodiscard]] int decimalDigitValue(char32_t character);

} // namespace quib
