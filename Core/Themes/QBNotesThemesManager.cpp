#include "QBNotesThemesManager.h"

#include <Logging/QBLogger.h>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

/// A theme and its file, whose name does not always follow from the theme's.
struct Entry
{
    QLatin1StringView name;
    QLatin1StringView file;
};

struct ThemeEntry
{
    QLatin1StringView name;
    QLatin1StringView appFile;
    QLatin1StringView textFile;
};

// The default stands first.
constexpr ThemeEntry kThemes[] = {
    {"Red Graphite"_L1, "Default App Theme"_L1, "Default Text Theme"_L1},
    {"High Contrast"_L1, "Contrasted App Theme"_L1, "Contrasted Text Theme"_L1},
    {"Dark Graphite"_L1, "Dark Graphite App Theme"_L1, "Dark Graphite Text Theme"_L1},
    {"Charcoal"_L1, "Night App Theme"_L1, "Night Text Theme"_L1},
    {"Solarized Light"_L1, "Solarized Light App Theme"_L1, "Solarized Light Text Theme"_L1},
    {"Solarized Dark"_L1, "Solarized Dark App Theme"_L1, "Solarized Dark Text Theme"_L1},
    {"Panic Mode"_L1, "Panic App Theme"_L1, "Panic Text Theme"_L1},
    {"Gotham"_L1, "Gotham App Theme"_L1, "Gotham Text Theme"_L1},
    {"Dracula"_L1, "Dracula App Theme"_L1, "Dracula Text Theme"_L1},
    {"Toothpaste"_L1, "Toothpaste App Theme"_L1, "Toothpaste Text Theme"_L1},
    {"Cobalt"_L1, "Cobalt App Theme"_L1, "Cobalt Text Theme"_L1},
    {"Duotone Light"_L1, "Duotone Light App Theme"_L1, "Duotone Light Theme"_L1},
    {"Duotone Snow"_L1, "Duotone Snow App Theme"_L1, "Duotone Snow Theme"_L1},
    {"Duotone Heat"_L1, "Duotone Heat App Theme"_L1, "Duotone Heat Text Theme"_L1},
    {"Dieci"_L1, "Dieci App Theme"_L1, "Dieci Theme"_L1},
    {"Ayu"_L1, "Ayu App Theme"_L1, "Ayu Text Theme"_L1},
};

/// Only ever asked for by name: for paper.
constexpr Entry kPrintTheme = {"Print"_L1, "Print Text Theme"_L1};

constexpr Entry kFontThemes[] = {
    {"System"_L1, "System Font Theme"_L1},
    {"Avenir Next"_L1, "Avenir Next Font Theme"_L1},
    {"Helvetica Neue"_L1, "Helvetica Neue Font Theme"_L1},
    {"Menlo"_L1, "Menlo"_L1},
    {"Georgia"_L1, "Georgia"_L1},
    {"Courier"_L1, "Courier"_L1},
    {"Open Dyslexic"_L1, "Open Dyslexic"_L1},
};

const ThemeEntry &themeNamed(const QString &name)
{
    const auto found = std::find_if(std::begin(kThemes), std::end(kThemes),
                                    [&name](const ThemeEntry &entry) { return entry.name == name; });
    return found == std::end(kThemes) ? kThemes[0] : *found;
}

const Entry *fontThemeNamed(const QString &name)
{
    const auto found = std::find_if(std::begin(kFontThemes), std::end(kFontThemes),
                                    [&name](const Entry &entry) { return entry.name == name; });
    return found == std::end(kFontThemes) ? nullptr : found;
}

/// An empty theme where there is no such file, or it is damaged: then text is in the system's font.
std::shared_ptr<QBTheme> themeOfFile(const QString &fileName)
{
    NSError error;
    std::shared_ptr<QBTheme> theme =
        QBTheme::initWithContentOfURL(QBNotesThemesManager::urlForThemeFileName(fileName), &error);
    if (theme == nullptr) {
        QBLogError(error.localizedDescription());
        theme = std::make_shared<QBTheme>();
    }
    return theme;
}

} // namespace

QString QBNotesThemesManager::defaultThemeName()
{
    return u"Red Graphite"_s;
}

QString QBNotesThemesManager::defaultTextThemeName()
{
    return u"Red Graphite"_s;
}

QString QBNotesThemesManager::defaultFontThemeName()
{
    return u"Avenir Next"_s;
}

QStringList QBNotesThemesManager::availableThemesNames()
{
    QStringList names;
    for (const ThemeEntry &entry : kThemes) {
        names.append(QString(entry.name));
    }
    return names;
}

QStringList QBNotesThemesManager::availableFontThemesNames()
{
    QStringList names;
    for (const Entry &entry : kFontThemes) {
        names.append(QString(entry.name));
    }
    return names;
}

std::shared_ptr<QBTheme> QBNotesThemesManager::appThemeForThemeName(const QString &name)
{
    return themeOfFile(appThemeFileNameForThemeName(name));
}

std::shared_ptr<QBTheme> QBNotesThemesManager::fontThemeForThemeName(const QString &name)
{
    return themeOfFile(fontThemeFileNameForThemeName(name));
}

std::shared_ptr<QBTheme> QBNotesThemesManager::textThemeForThemeName(const QString &name, const QString &fontThemeName)
{
    const std::shared_ptr<QBTheme> theme = themeOfFile(textThemeFileNameForThemeName(name));
    theme->addThemeItemsFromTheme(*fontThemeForThemeName(fontThemeName));
    return theme;
}

QString QBNotesThemesManager::appIconNameForThemeName(const QString &name)
{
    return name.isEmpty() || name == defaultThemeName() ? u"AppIcon"_s : QString(u"AppIcon "_s % name);
}

QString QBNotesThemesManager::appThemeFileNameForThemeName(const QString &name)
{
    return QString(themeNamed(name).appFile);
}

QString QBNotesThemesManager::textThemeFileNameForThemeName(const QString &name)
{
    return QString(name == kPrintTheme.name ? kPrintTheme.file : themeNamed(name).textFile);
}

QString QBNotesThemesManager::fontThemeFileNameForThemeName(const QString &name)
{
    const Entry *const entry = fontThemeNamed(name);
    return QString((entry != nullptr ? entry : fontThemeNamed(defaultFontThemeName()))->file);
}

QUrl QBNotesThemesManager::urlForThemeFileName(const QString &fileName)
{
    QUrl url;
    url.setScheme(u"qrc"_s);
    url.setPath(u"/Themes/"_s % fileName % u".theme");
    return url;
}
