#pragma once

#include <QImage>
#include <QSizeF>
#include <QString>

#include <memory>

class QBNotesPreferenceManager;
class QBTheme;

namespace quib {

/// Pictures of how notes look in a theme, made by the engine that draws the notes themselves. Without state. Queue:
/// main.

/// What a picture of a theme depends on.
struct ThemeSample
{
    QString themeName;
    QString fontThemeName;
    /// 0 the markup's own, 1 Markdown.
    int syntax = 0;
};

/// A small window with its three columns: bars where the sidebar and the list have their texts, and a note set in the
/// theme's fonts and colours.
/// Units:   size in points; the picture has scale pixels to a point.
[[nodiscard]] QImage pictureOfTheme(const ThemeSample &sample, QSizeF size, double scale);

/// A note in the theme, the fonts and the sizes that the preferences hold, as wide as a wide window, made smaller to
/// fit.
[[nodiscard]] QImage pictureOfPreferences(const QBNotesPreferenceManager &preferences, QSizeF size, double scale);

} // namespace quib
