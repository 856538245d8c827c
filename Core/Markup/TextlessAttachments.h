#pragma once

#include <Foundation/NSRange.h>
#include <Text/NSAttributedString.h>

// Attachments that stand for no text, such as the spacers around a tag: nobody sees, saves or selects them by
// themselves, and what stands beside them stands beside what they part.

namespace quib {

[[nodiscard]] bool isTextlessAttachment(const NSAttributedString &text, qint64 place);
/// A range with those that touch it on either side.
/// Requires: the range lies in the text.
[[nodiscard]] NSRange rangeWithTextlessAttachments(const NSAttributedString &text, NSRange range);

} // namespace quib
