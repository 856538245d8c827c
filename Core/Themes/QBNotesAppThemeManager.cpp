#include "QBNotesAppThemeManager.h"

#include "QBNotesThemesManager.h"

namespace {

QBNotesAppThemeManager *&installedManager()
{
    static QBNotesAppThemeManager *s_manager = nullptr;
    return s_manager;
}

} // namespace

QBNotesAppThemeManager::~QBNotesAppThemeManager()
{
    if (sharedThemeManager() == this) {
        setSharedThemeManager(nullptr);
    }
}

QBNotesAppThemeManager *QBNotesAppThemeManager::sharedThemeManager()
{
    return installedManager();
}

void QBNotesAppThemeManager::setSharedThemeManager(QBNotesAppThemeManager *manager)
{
    installedManager() = manager;
}

void QBNotesAppThemeManager::loadDefaultTheme()
{
    loadTheme(QBNotesThemesManager::appThemeForThemeName(QBNotesThemesManager::defaultThemeName()));
}
