#pragma once

#include <Foundation/NSRange.h>

class NSAttributedString;

namespace quib {

/// Where the text of a paragraph begins: behind the marker of a heading, a bullet, a number, a box or a quote, and the
/// indent before it. The paragraph's start where it has no marker.
[[nodiscard]] qint64 placeBehindMarker(const NSAttributedString &text, NSRange paragraph);
/// Whether a place lies between a marker that is drawn, as a box is, and the blank behind it, which is part of the
/// marker to who looks at it: what is written between the two leaves no marker.
[[nodiscard]] bool isWithinMarker(const NSAttributedString &text, qint64 place);

} // namespace quib
