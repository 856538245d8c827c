#include "SpellingDictionaries.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QSet>
#include <QStandardPaths>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// A folder with more files than this is no folder of dictionaries.
constexpr qsizetype kMostFiles = 5000;

/// "de" of "de_DE".
QStringView languageCode(QStringView language)
{
    const qsizetype end = language.indexOf(u'_');
    return end < 0 ? language : language.first(end);
}

bool isLanguageName(QStringView name)
{
    const QStringView code = languageCode(name);
    return (code.size() == 2 || code.size() == 3) && name.size() <= 32 &&
           std::ranges::all_of(code, [](QChar unit) { return unit >= u'a' && unit <= u'z'; });
}

} // namespace

QStringList standardSpellingFolders()
{
    QStringList folders = qEnvironmentVariable("DICPATH").split(u':', Qt::SkipEmptyParts);
    for (const QString &data : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
        for (const QStringView name : {u"/hunspell", u"/myspell", u"/myspell/dicts"}) {
            folders.append(data % name);
        }
    }
    folders.removeDuplicates();
    return folders;
}

QStringList desktopSpellingLanguages()
{
    QStringList languages;
    for (const QString &name : QLocale::system().uiLanguages()) {
        if (name == u"C") {
            languages.append(u"en_US"_s);
        } else {
            languages.append(QString(name).replace(u'-', u'_'));
        }
    }
    languages.removeDuplicates();
    return languages;
}

QList<SpellingDictionaryFile> spellingDictionariesInFolders(const QStringList &folders)
{
    QList<SpellingDictionaryFile> found;
    QSet<QString> languages;
    for (const QString &folder : folders) {
        const QDir dir(folder);
        const QStringList names = dir.entryList({u"*.aff"_s}, QDir::Files | QDir::Readable);
        for (const QString &name : names.first(std::min(names.size(), kMostFiles))) {
            const QString language = name.chopped(4);
            const QString wordsPath = dir.filePath(language % u".dic"_s);
            if (isLanguageName(language) && !languages.contains(language) && QFileInfo(wordsPath).isFile()) {
                languages.insert(language);
                found.append({language, dir.filePath(name), wordsPath});
            }
        }
    }
    std::ranges::sort(found, {}, &SpellingDictionaryFile::language);
    return found;
}

QList<SpellingDictionaryFile> spellingDictionariesForLanguages(const QList<SpellingDictionaryFile> &found,
                                                               const QStringList &languages)
{
    QList<SpellingDictionaryFile> chosen;
    const auto take = [&chosen](const SpellingDictionaryFile &dictionary) {
        const bool isThere = std::ranges::any_of(chosen, [&dictionary](const SpellingDictionaryFile &other) {
            return languageCode(other.language) == languageCode(dictionary.language);
        });
        if (!isThere) {
            chosen.append(dictionary);
        }
    };
    for (const QString &language : languages) {
        const auto exact = std::ranges::find(found, language, &SpellingDictionaryFile::language);
        if (exact != found.end()) {
            take(*exact);
        }
        // "en_US" may stand behind "en" or behind a country that has no dictionary: it is the better one then.
        for (const SpellingDictionaryFile &dictionary : found) {
            const bool isSame = languageCode(dictionary.language) == languageCode(language);
            const bool isExactLater = languages.contains(dictionary.language);
            if (isSame && isExactLater) {
                take(dictionary);
            }
        }
        for (const SpellingDictionaryFile &dictionary : found) {
            if (languageCode(dictionary.language) == languageCode(language)) {
                take(dictionary);
            }
        }
    }
    std::ranges::for_each(found, take);
    return chosen;
}

} // namespace quib
