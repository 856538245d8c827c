#pragma once

#include <Themes/QBThemeManager.h>

#include <QPalette>
#include <QSize>
#include <QString>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace quib {

/// The colours of the application's theme as a palette, for all that the toolkit draws.
[[nodiscard]] QPalette paletteOfTheme();
/// The same as a style sheet, for the few things that a palette cannot tell: quiet borders, round fields, flat menus.
[[nodiscard]] QString styleSheetOfTheme();

/// The size that a new window is given: the wanted one, or what the screen has room for beside the window's frame.
[[nodiscard]] QSize sizeOnScreen(const QWidget &window, QSize wanted);
/// Puts a window back where QWidget::saveGeometry found it, no larger than the screen that is there now.
void restoreGeometryOnScreen(QWidget &window, const QByteArray &geometry);

/// Dresses the application in its theme and follows the theme's changes. Made once the theme manager is installed and
/// kept by whoever makes the windows; main queue.
class WindowStyle final : public StylableObject
{
public:
    WindowStyle();
    void styleObjectWithThemeManager(QBThemeManager &manager) override;
};

} // namespace quib
