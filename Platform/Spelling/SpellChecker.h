#pragma once

#include "SpellingDictionaries.h"

#include <Foundation/NSError.h>
#include <Foundation/NSRange.h>

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace quib {

class HunspellDictionary;

/// Finds misspelt words. Which language a paragraph is in is guessed by its own words, among the languages that there
/// are dictionaries for; a paragraph in none of them has no misspelt words. Dictionaries are looked for, and loaded,
/// when they are first needed. One thread at a time, whichever.
class SpellChecker
{
public:
    struct Options
    {
        QStringList folders;   ///< of dictionaries
        QStringList languages; ///< of the user, the preferred first
        /// The words that the user added: one a line, UTF-8, nothing else. Need not be there.
        QString ownWordsPath;
        /// Dictionaries of other languages than the user's are left alone.
        bool hasOnlyLanguages = false;
    };

    /// So many words of a paragraph are read to guess its language.
    static constexpr qsizetype kWordsToGuessBy = 24;
    /// Of fewer words nothing can be guessed: the languages at hand are tried.
    static constexpr qsizetype kFewestWordsToGuessBy = 4;
    /// Among so many languages is guessed: each costs megabytes.
    static constexpr qsizetype kMostLanguages = 4;
    static constexpr qsizetype kMostMarks = 1000;

    explicit SpellChecker(Options options);
    ~SpellChecker();
    SpellChecker(const SpellChecker &) = delete;
    SpellChecker &operator=(const SpellChecker &) = delete;

    /// Other languages from now on; words that were ignored stay so.
    void setLanguages(const QStringList &languages, bool hasOnlyLanguages);

    /// The misspelt words of a paragraph, in their order.
    /// Shape: skipped is sorted; words that touch it are not looked at. Single letters are right; words with digits, in
    /// capitals throughout, or with capitals inside are names of things, and addresses are addresses: they are right.
    [[nodiscard]] std::vector<NSRange> misspeltRangesInParagraph(QStringView paragraph,
                                                                 std::span<const NSRange> skipped);
    /// Words to put in the place of one, the best first, in the language of its paragraph.
    [[nodiscard]] QStringList suggestionsForWord(const QString &word, QStringView inParagraph);
    /// The word is right from now on, in its own case and capitalised.
    void ignoreWord(const QString &word);
    /// As ignoreWord, and in all runs to come.
    /// Errors: what writing the file tells; the word is then right for this run.
    [[nodiscard]] bool learnWord(const QString &word, NSError *error);

private:
    struct Language
    {
        SpellingDictionaryFile file;
        /// ICU's numbers of the scripts that it is written in; none of a language that nobody knows.
        std::vector<int> scripts;
        bool isTried = false;
        std::unique_ptr<HunspellDictionary> dictionary;
        /// What was asked before.
        QHash<QString, bool> answers;
    };
    struct Word
    {
        NSRange range;
        QString text;
    };

    void prepare();
    [[nodiscard]] bool load(Language &language);
    [[nodiscard]] bool isRight(Language &language, const QString &word);
    [[nodiscard]] bool isOwn(const QString &word) const;
    [[nodiscard]] static std::vector<Word> wordsOf(QStringView paragraph, std::span<const NSRange> skipped);
    /// Null where the paragraph is in none of the languages.
    [[nodiscard]] Language *languageOfWords(const std::vector<Word> &words);
    [[nodiscard]] std::optional<QStringList> wordsInFile(NSError *error) const;

    Options m_options;
    bool m_isPrepared = false;
    std::vector<Language> m_languages;
    QSet<QString> m_ownWords;
};

} // namespace quib
