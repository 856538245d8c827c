#pragma once

#include <Spelling/SpellChecker.h>

#include <Support/TemporaryFolder.h>

#include <gtest/gtest.h>

namespace quib::tests {

/// Two small dictionaries, English and German, and a place for the user's own words.
struct SpellingFolder
{
    SpellingFolder()
    {
        writeDictionary(QStringLiteral("en_US"), "the quick brown fox jump/S over lazy dog/S don't note/S and today I "
                                                 "well known house London");
        writeDictionary(QStringLiteral("de_DE"), "der schnelle braune Fuchs springt \xC3\xBC"
                                                 "ber den faulen Hund und das Haus ist gro\xC3\x9F");
    }

    /// A dictionary of words that are divided by blanks; /S allows a plural.
    void writeDictionary(const QString &language, const QByteArray &words)
    {
        const QList<QByteArray> list = words.split(' ');
        folder.write(language + QStringLiteral(".aff"),
                     "SET UTF-8\nTRY esianrtolcdugmphbyfvkwz\nSFX S Y 1\nSFX S 0 s .\n");
        folder.write(language + QStringLiteral(".dic"),
                     QByteArray::number(list.size()) + '\n' + list.join('\n') + '\n');
    }

    [[nodiscard]] SpellChecker::Options options() const
    {
        return {{folder.path()},
                {QStringLiteral("en_US"), QStringLiteral("de_DE")},
                folder.path(QStringLiteral("own/words.txt"))};
    }

    TemporaryFolder folder;
};

class SpellingFixture : public testing::Test, public SpellingFolder
{
};

} // namespace quib::tests
