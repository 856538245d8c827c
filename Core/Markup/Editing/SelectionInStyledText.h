#pragma once

#include <Foundation/NSRange.h>
#include <Text/NSAttributedString.h>

namespace quib {

/// Where a selection is once a stretch of a text is styled anew: on the same text as before, spelled out, however many
/// attachments come and go around it. An edge that has no text between itself and a tag's edge stands outside of the
/// tag's spacers; one that comes to lie within an attachment takes it in.
/// Requires: styled spells out the same as the range does, and is what comes in its place.
[[nodiscard]] NSRange selectionInStyledText(NSRange selection, const NSAttributedString &text, NSRange range,
                                            const NSAttributedString &styled);

} // namespace quib
