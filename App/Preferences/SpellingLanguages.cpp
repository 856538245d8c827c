#include "SpellingLanguages.h"

#include <Spelling/SpellingService.h>
#include <Store/QBNotesPreferenceManager.h>

#include <QLocale>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr QLatin1StringView kKey{"QBSpellingLanguages"};

} // namespace

QStringList chosenSpellingLanguages(const QBNotesPreferenceManager &preferences)
{
    return preferences.preferenceValueForKey(QString(kKey)).toString().split(u',', Qt::SkipEmptyParts);
}

void setChosenSpellingLanguages(QBNotesPreferenceManager &preferences, const QStringList &languages)
{
    preferences.savePreferenceValue(languages.isEmpty() ? PropertyValue() : PropertyValue(languages.join(u',')),
                                    QString(kKey));
    if (SpellingService *service = SpellingService::sharedService(); service != nullptr) {
        service->setLanguages(languages);
    }
}

void applySpellingLanguages(const QBNotesPreferenceManager &preferences)
{
    const QStringList languages = chosenSpellingLanguages(preferences);
    if (SpellingService *service = SpellingService::sharedService(); service != nullptr && !languages.isEmpty()) {
        service->setLanguages(languages);
    }
}

QString titleOfSpellingLanguage(const QString &language)
{
    const QLocale locale(language);
    if (locale.language() == QLocale::C) {
        return language; // one that the toolkit does not know
    }
    QString title = locale.nativeLanguageName();
    title[0] = title[0].toUpper();
    // The language of some countries has a name of its own.
    const bool hasOwnName = locale.nativeLanguageName() != QLocale(locale.language()).nativeLanguageName();
    return hasOwnName || !language.contains(u'_') ? title
                                                  : QString(title % u" ("_s % locale.nativeTerritoryName() % u')');
}

} // namespace quib
