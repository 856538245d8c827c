#pragma once

#include <Themes/QBThemeManager.h>

#include <QPalette>
#include <QString>

namespace quib {

/// The colours of the application's theme as a palette, for all that the toolkit draws.
[[nodiscard]] QPalette paletteOfTheme();
/// The same as a style sheet, for the few things that a palette cannot tell: quiet borders, round fields, flat menus.
[[nodiscard]] QString styleSheetOfTheme();

/// Dresses the application in its theme and follows the theme's changes. Made once the theme manager is installed and
/// kept by whoever makes the windows; main queue.
class WindowStyle final : public StylableObject
{
public:
    WindowStyle();
    void styleObjectWithThemeManager(QBThemeManager &manager) override;
};

} // namespace quib
