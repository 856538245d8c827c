#include "ThemeColors.h"

#include <Graphics/NSFont.h>
#include <Themes/QBNotesAppThemeManager.h>

namespace quib {

namespace {

/// How much of its colour a quiet line keeps.
constexpr float kQuiet = 0.3F;

} // namespace

QColor qColor(const NSColor &color)
{
    return QColor::fromRgbF(float(color.redComponent()), float(color.greenComponent()), float(color.blueComponent()),
                            float(color.alphaComponent()));
}

QColor themeColor(const QString &key)
{
    const QBNotesAppThemeManager *manager = QBNotesAppThemeManager::sharedThemeManager();
    const auto color = manager != nullptr ? manager->colorForKey(key) : std::nullopt;
    return color ? qColor(*color) : QColor(Qt::magenta);
}

QColor quietLineColor(const QString &key)
{
    QColor color = themeColor(key);
    const QColor text = themeColor(QStringLiteral("Panel Text Color"));
    const bool isAllContrast = text.lightness() == 0 || text.lightness() == 255;
    if (!isAllContrast) {
        color.setAlphaF(color.alphaF() * kQuiet);
    }
    return color;
}

QFont interfaceFont(double size, bool isBold)
{
    return isBold ? NSFont::boldSystemFontOfSize(size).font() : NSFont::systemFontOfSize(size).font();
}

} // namespace quib
