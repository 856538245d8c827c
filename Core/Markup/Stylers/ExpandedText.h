#pragma once

#include <Text/NSAttributedString.h>

namespace quib {

/// The text of a range with what its attachments stand for in their place.
[[nodiscard]] QString expandedText(const NSAttributedString &attributedString, NSRange range);

} // namespace quib
