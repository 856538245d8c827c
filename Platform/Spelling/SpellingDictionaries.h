#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace quib {

/// A dictionary on disk: its words, and the rules of their forms. A value.
struct SpellingDictionaryFile
{
    QString language; ///< as the file is named: "en_US", "de", "sr_Latn_RS"
    QString affixPath;
    QString wordsPath;
    friend bool operator==(const SpellingDictionaryFile &a, const SpellingDictionaryFile &b) = default;
};

/// Where programs of the desktop keep their dictionaries; those of DICPATH come first, the user's own next.
[[nodiscard]] QStringList standardSpellingFolders();
/// The languages of the desktop, the preferred first, as "en_US". The C locale knows none; American English stands in.
[[nodiscard]] QStringList desktopSpellingLanguages();

/// The dictionaries of some folders, sorted by language. Where a language is found twice, the first counts. Files for
/// hyphenation and others that only look alike are none.
[[nodiscard]] QList<SpellingDictionaryFile> spellingDictionariesInFolders(const QStringList &folders);
/// The dictionaries that a user of some languages may write in, the likeliest first, one a language: first those of the
/// languages, in their order and of another country where the own has none; then the other installed ones.
[[nodiscard]] QList<SpellingDictionaryFile> spellingDictionariesForLanguages(const QList<SpellingDictionaryFile> &found,
                                                                             const QStringList &languages);

} // namespace quib
