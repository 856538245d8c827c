#pragma once

#include <Graphics/NSColor.h>

class QBNotesTextThemeManager;

namespace quib {

/// What marks the places that a search has found, under the text of a theme. Opaque.
struct FindColors
{
    NSColor match;
    /// The one place that the search is at, and the line around it.
    NSColor current;
    NSColor currentEdge;
};

/// Amber on light paper and on dark, as strong as the text on it can be read.
[[nodiscard]] FindColors findColorsOfTheme(const QBNotesTextThemeManager &theme);

} // namespace quib
