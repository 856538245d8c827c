#pragma once

#include "QBTheme.h"

#include <QStringList>

/// The themes that come with the program, made by name. Each is read anew: who asked owns it. Without state. A name
/// that there is no theme of stands for the default. Any queue.
class QBNotesThemesManager
{
public:
    QBNotesThemesManager() = delete;

    [[nodiscard]] static QString defaultThemeName();
    [[nodiscard]] static QString defaultTextThemeName();
    [[nodiscard]] static QString defaultFontThemeName();
    /// In the order in which they are offered.
    [[nodiscard]] static QStringList availableThemesNames();
    [[nodiscard]] static QStringList availableFontThemesNames();

    [[nodiscard]] static std::shared_ptr<QBTheme> appThemeForThemeName(const QString &name);
    [[nodiscard]] static std::shared_ptr<QBTheme> fontThemeForThemeName(const QString &name);
    /// The colours of the one, with the fonts and sizes of the other laid over them. "Print" is a theme of text alone.
    [[nodiscard]] static std::shared_ptr<QBTheme> textThemeForThemeName(const QString &name,
                                                                        const QString &fontThemeName);

    /// The name of the application's icon in the theme's colours.
    [[nodiscard]] static QString appIconNameForThemeName(const QString &name);

    // The resources, for tests and editors of themes

    /// The name of the file, without extension.
    [[nodiscard]] static QString appThemeFileNameForThemeName(const QString &name);
    [[nodiscard]] static QString textThemeFileNameForThemeName(const QString &name);
    [[nodiscard]] static QString fontThemeFileNameForThemeName(const QString &name);
    /// Where a theme file of the program is found.
    [[nodiscard]] static QUrl urlForThemeFileName(const QString &fileName);
};
