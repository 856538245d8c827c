#pragma once

#include <QStringView>

#include <optional>

namespace quib {

/// Where the last word of a text begins; nothing where it holds none. Words are made of letters, digits, kana or
/// ideographs, as the break iterator tells them. Linear in what follows the word's beginning; scripts that are written
/// without spaces are read from 1,024 units before the end at the earliest.
[[nodiscard]] std::optional<qint64> locationOfLastWord(QStringView text);

} // namespace quib
