#include "ThemeLoader.h"

#include "QBNotesAppThemeManager.h"
#include "QBNotesTextThemeManager.h"
#include "QBNotesThemesManager.h"

#include <Foundation/Assert.h>
#include <Foundation/DispatchQueue.h>
#include <Store/QBNotesPreferenceManager.h>

namespace quib {

namespace {

[[maybe_unused]] bool isMainQueue()
{
    return DispatchQueue::main()->isCurrent();
}

} // namespace

ThemeLoader::ThemeLoader(QBNotesPreferenceManager &preferences, QBNotesTextThemeManager &textThemeManager,
                         QBNotesAppThemeManager &appThemeManager, ThemeHost &host)
    : m_preferences(preferences)
    , m_textThemeManager(textThemeManager)
    , m_appThemeManager(appThemeManager)
    , m_host(host)
{
}

void ThemeLoader::loadDefaultTheme()
{
    QUIB_ASSERT(isMainQueue());
    m_appThemeManager.loadDefaultTheme();
    m_textThemeManager.loadDefaultTheme();
}

void ThemeLoader::loadThemeNamed(const QString &name)
{
    QUIB_ASSERT(isMainQueue());
    // 1. Both themes are read before anything changes.
    const std::shared_ptr<QBTheme> textTheme =
        QBNotesThemesManager::textThemeForThemeName(name, m_preferences.fontThemeName());
    const std::shared_ptr<QBTheme> appTheme = QBNotesThemesManager::appThemeForThemeName(name);
    // 2. The text is not restyled yet: the sizes of the user are still missing.
    m_textThemeManager.loadTheme(textTheme, /*updateStylableObjects=*/false);
    // 3. They come, and restyle it.
    loadFontThemePreferences();
    // 4. Then everything else.
    m_appThemeManager.loadTheme(appTheme);
    // 5. The icon.
    loadThemedAppIcon(name);
    // 6. The windows of their own.
    m_host.updateDetachedEditorWindows();
}

void ThemeLoader::loadFontThemeName(const QString &name)
{
    QUIB_ASSERT(isMainQueue());
    m_textThemeManager.addItemFromTheme(*QBNotesThemesManager::fontThemeForThemeName(name),
                                        /*updateStylableObjects=*/false);
    loadFontThemePreferences();
}

void ThemeLoader::loadFontThemePreferences()
{
    QUIB_ASSERT(isMainQueue());
    if (const std::optional<double> multiplier = m_preferences.editorLineHeightMultiplier()) {
        m_textThemeManager.setLineHeightMultiplier(*multiplier);
    }
    if (const std::optional<double> multiplier = m_preferences.editorLineWidthMultiplier()) {
        m_textThemeManager.setLineWidthMultiplier(*multiplier);
    }
    if (const std::optional<double> multiplier = m_preferences.editorParagraphSpacingMultiplier()) {
        m_textThemeManager.setParagraphSpacingMultiplier(*multiplier);
    }
    if (const std::optional<double> size = m_preferences.editorFontSize()) {
        m_textThemeManager.setBaseFontSize(*size);
    }
    m_textThemeManager.emptyCache();
    m_textThemeManager.styleRegisteredStylableObjects();
    m_host.loadThemeInDetachedEditorWindows(m_textThemeManager.currentTheme());
}

void ThemeLoader::loadThemedAppIcon(const QString &forThemeName)
{
    QUIB_ASSERT(isMainQueue());
    m_host.setApplicationIconNamed(m_preferences.appIconMatchesTheme()
                                       ? QBNotesThemesManager::appIconNameForThemeName(forThemeName)
                                       : QBNotesThemesManager::appIconNameForThemeName(QString()));
}

} // namespace quib
