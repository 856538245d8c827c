#pragma once

#include <QtGlobal>

namespace quib {

// How large attachments are. Units: parts of the theme's base font size, unless a line says otherwise. A larger symbol
// is easier to hit and to see, and makes its line look heavier.

inline constexpr double kCheckBoxSide = 0.9;
inline constexpr double kBulletCell = 0.55;
inline constexpr double kArrowWidth = 1.2;
inline constexpr double kArrowHeight = 0.75;
inline constexpr double kColorSwatchSide = 0.8;
inline constexpr double kAddressPinSide = 0.8;
inline constexpr double kTitledURLSymbolSide = 0.875;
inline constexpr double kLinkedNoteSymbolSide = 0.86;
inline constexpr double kFoldWidth = 1.6;
inline constexpr double kFoldHeight = 0.8;
inline constexpr double kFileCardWidth = 19;
inline constexpr double kFileCardHeight = 4.5;
/// The radius of a picture's corners.
inline constexpr double kPictureCorner = 0.35;

/// Between a swatch or a pin and the text that it belongs to.
inline constexpr double kInlineSymbolSpacing = 0.2;
/// Between a link's symbol and the parentheses around it.
inline constexpr double kLinkSymbolSpacing = 0.1;
/// In parts of the paragraph font's x-height.
inline constexpr double kSpacerWidth = 0.5;
/// The size of a badge's letters, and the room beside them, in parts of the badge's height.
inline constexpr double kBadgeFontSize = 0.66;
inline constexpr double kBadgeMargin = 0.22;

/// How many pixels a point has in the pictures of rich copies.
inline constexpr double kFileWrapperScale = 2;
/// No side of such a picture is longer. Units: points.
inline constexpr double kLargestFileWrapperSide = 4096;

} // namespace quib
