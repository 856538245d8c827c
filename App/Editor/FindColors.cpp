#include "FindColors.h"

#include <Themes/QBNotesTextThemeManager.h>

namespace quib {

namespace {

constexpr double kReadableContrast = 4.5;
constexpr double kVisibleContrast = 3;
/// How much of the paper is in the colour of a place that the search is not at.
constexpr double kPaleness = 0.55;
constexpr int kSteps = 20;

/// The first of the colours on the way from one to another that contrasts enough with a third; the other at the end.
NSColor contrastingColor(const NSColor &from, const NSColor &to, const NSColor &with, double contrast)
{
    for (int step = 0; step < kSteps; ++step) {
        const NSColor color = from.blendedColorWithFraction(static_cast<double>(step) / kSteps, to);
        if (color.contrastRatioOnBackground(with) >= contrast) {
            return color;
        }
    }
    return to;
}

} // namespace

FindColors findColorsOfTheme(const QBNotesTextThemeManager &theme)
{
    const NSColor paper = theme.backgroundTextColor().value_or(NSColor::whiteColor());
    const NSColor ink = theme.baseTextColor().value_or(NSColor::blackColor());
    const NSColor amber = NSColor::colorWithRed(1.0, 0.66, 0.1);
    const NSColor yellow = NSColor::colorWithRed(1.0, 0.82, 0.25);
    return {.match = contrastingColor(yellow.blendedColorWithFraction(kPaleness, paper), paper, ink, kReadableContrast),
            .current = contrastingColor(amber, paper, ink, kReadableContrast),
            .currentEdge = contrastingColor(amber, ink, paper, kVisibleContrast)};
}

} // namespace quib
