#pragma once

#include "SpellingDictionaries.h"

#include <Foundation/NSError.h>

#include <QString>
#include <QStringList>

#include <memory>

namespace quib {

/// The words of one language, in a process of their own: a broken dictionary harms nobody, it just knows nothing.
/// Loading takes tens of milliseconds and megabytes. One thread at a time.
class HunspellDictionary
{
public:
    /// Longer words are taken for right: no dictionary knows them, and looking for them takes long. Units: UTF-16.
    static constexpr qsizetype kLongestWord = 64;
    static constexpr qsizetype kMostSuggestions = 8;

    /// Errors: null for files that are missing, too large, or not a dictionary.
    [[nodiscard]] static std::unique_ptr<HunspellDictionary> dictionaryWithFile(const SpellingDictionaryFile &file,
                                                                                NSError *error);
    ~HunspellDictionary();
    HunspellDictionary(const HunspellDictionary &) = delete;
    HunspellDictionary &operator=(const HunspellDictionary &) = delete;

    /// Whether a word is spelled right; also where the dictionary can't tell.
    [[nodiscard]] bool isRight(const QString &word) const;
    /// Words that are spelled right and look alike, the best first.
    [[nodiscard]] QStringList suggestionsForWord(const QString &word) const;

private:
    struct Handle;
    explicit HunspellDictionary(std::unique_ptr<Handle> handle);

    std::unique_ptr<Handle> m_handle;
};

} // namespace quib
