#pragma once

#include <QString>

#include <memory>

class QBNotesAppThemeManager;
class QBNotesPreferenceManager;
class QBNotesTextThemeManager;
class QBTheme;

namespace quib {

/// What the application does with a change of theme.
class ThemeHost
{
public:
    virtual ~ThemeHost() = default;
    /// "AppIcon", or the icon in a theme's colours.
    virtual void setApplicationIconNamed(const QString &name) = 0;
    /// Draws the frames of the detached editor windows anew.
    virtual void updateDetachedEditorWindows() = 0;
    /// Hands the theme to the text stack of each detached window.
    virtual void loadThemeInDetachedEditorWindows(const std::shared_ptr<QBTheme> &theme) = 0;
};

/// Changes themes and fonts: puts together what preferences, theme files, managers and windows have to do with it. It
/// owns nothing; all it is given outlives it. Queue: main.
class ThemeLoader
{
public:
    ThemeLoader(QBNotesPreferenceManager &preferences, QBNotesTextThemeManager &textThemeManager,
                QBNotesAppThemeManager &appThemeManager, ThemeHost &host);

    /// The themes before any is chosen.
    void loadDefaultTheme();
    /// Changes to a theme, with the fonts of the preferences. An unknown name is the default theme.
    void loadThemeNamed(const QString &name);
    /// Changes the fonts only: lays a font theme, then the font preferences, over the current theme.
    void loadFontThemeName(const QString &name);
    /// Lays the sizes that the user set over the theme, restyles, and hands the theme on to the detached windows.
    void loadFontThemePreferences();
    /// Shows the icon of a theme where the preferences say that it follows the theme, otherwise the plain one.
    void loadThemedAppIcon(const QString &forThemeName);

private:
    QBNotesPreferenceManager &m_preferences;
    QBNotesTextThemeManager &m_textThemeManager;
    QBNotesAppThemeManager &m_appThemeManager;
    ThemeHost &m_host;
};

} // namespace quib
