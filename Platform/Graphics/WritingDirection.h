#pragma once

#include <Foundation/NSRange.h>

#include <QStringView>

#include <optional>

namespace quib {

/// Whether a text is written from right to left, by its first letter; nothing where it has none that tells.
[[nodiscard]] std::optional<bool> isRightToLeft(QStringView text);

/// Which way a range goes that has no letter to tell: as the paragraph before it that has one, or else as the text
/// behind it. Nothing where none is near. Takes bounded time.
[[nodiscard]] std::optional<bool> isRightToLeftAround(QStringView text, NSRange range);

} // namespace quib
