#include "SpellingFixture.h"

#include <Spelling/HunspellDictionary.h>
#include <Support/TestSeed.h>

#include <random>

using namespace Qt::StringLiterals;
using namespace quib;
using quib::tests::TestSeed;

namespace {

class Spelling : public quib::tests::SpellingFixture
{
protected:
    /// The misspelt words, parted by blanks.
    static QString misspelt(SpellChecker &checker, const QString &paragraph, const std::vector<NSRange> &skipped = {})
    {
        QStringList words;
        for (const NSRange range : checker.misspeltRangesInParagraph(paragraph, skipped)) {
            words.append(paragraph.sliced(range.location, range.length));
        }
        return words.join(u' ');
    }
};

TEST_F(Spelling, FindsMisspeltWords)
{
    const std::pair<QString, QString> cases[] = {
        {u""_s, u""_s},
        {u"   \t\n"_s, u""_s},
        {u"The quick brown fox jumps over the lazy dogs"_s, u""_s},
        {u"The quick brwon fox jumps ovr the lazy dog."_s, u"brwon ovr"_s},
        {u"brwon"_s, u"brwon"_s},
        {u"THE QUICK FOX"_s, u""_s},
        {u"don't don\u2019t dont"_s, u"dont"_s},
        {u"well-known well-knwon"_s, u"knwon"_s},
        {u"\"dog\" (fox), [note]; dgo!"_s, u"dgo"_s},
        {u"do\u00ADg dog"_s, u""_s},
        // Names of things.
        {u"the dog XQZW xqzw2 xqZw x_qzw"_s, u""_s},
        {u"the dog a@xqzw.com xqzw.com /xqzw/xqzw #xqzw ~xqzw C:\\xqzw"_s, u""_s},
        {u"the dog 漢字 かな 123 1.5 😀"_s, u""_s},
        {u"the dog "_s + QString(65, u'x'), u""_s},
        // Other scripts, in which no English is written.
        {u"\u0643\u0644\u0645\u0629"_s, u""_s},
        {u"the dgo \u05E9\u05DC\u05D5\u05DD \u0441\u043E\u0431\u0430\u043A\u0430 dog"_s, u"dgo"_s},
        {u"the dog"_s + QChar(0xD800) + QChar(u'\0') + QChar(0xFFFC) + u"dgo"_s, u"dgo"_s},
    };
    SpellChecker checker(options());
    for (const auto &[paragraph, expected] : cases) {
        EXPECT_EQ(misspelt(checker, paragraph), expected) << paragraph.toStdString();
    }
}

TEST_F(Spelling, SkipsWhatItIsTold)
{
    SpellChecker checker(options());
    const QString paragraph = u"the xqzw dog xqzw over"_s;
    EXPECT_EQ(checker.misspeltRangesInParagraph(paragraph, {}), (std::vector<NSRange>{{4, 4}, {13, 4}}));
    EXPECT_EQ(checker.misspeltRangesInParagraph(paragraph, std::vector<NSRange>{{0, 1}, {6, 1}}),
              (std::vector<NSRange>{{13, 4}}));
    EXPECT_EQ(misspelt(checker, paragraph, {{17, 5}}), u"xqzw"_s) << "a word that only touches what is skipped";
    EXPECT_EQ(misspelt(checker, paragraph, {{0, 22}}), u""_s);
}

TEST_F(Spelling, GuessesTheLanguageOfAParagraph)
{
    SpellChecker checker(options());
    EXPECT_EQ(misspelt(checker, u"der schnelle braune Fuchs springt über den Hund"_s), u""_s);
    EXPECT_EQ(misspelt(checker, u"der schnele braune Fuchs springt über den Hund"_s), u"schnele"_s);
    EXPECT_EQ(misspelt(checker, u"the quick brown fox und jumps over the lazy dog"_s), u"und"_s);
    EXPECT_EQ(misspelt(checker, u"le renard brun saute par dessus"_s), u""_s) << "there is no such dictionary";
    // Of two words nothing can be guessed, but German is at hand by now.
    EXPECT_EQ(misspelt(checker, u"faulen Hund"_s), u""_s);
    EXPECT_EQ(misspelt(checker, u"fualen"_s), u"fualen"_s);
}

TEST_F(Spelling, IsCheckedInTheChosenLanguagesAlone)
{
    SpellChecker checker(options());
    const QString german = u"der schnele braune Fuchs springt über den Hund"_s;
    const QString english = u"the quick brwon fox jumps over the lazy dog"_s;
    checker.ignoreWord(u"xqzw"_s);
    EXPECT_EQ(misspelt(checker, german), u"schnele"_s);
    checker.setLanguages({u"en_US"_s}, /*hasOnlyLanguages=*/true);
    EXPECT_EQ(misspelt(checker, german), u""_s) << "in none of the languages";
    EXPECT_EQ(misspelt(checker, english), u"brwon"_s);
    EXPECT_EQ(misspelt(checker, u"the quick xqzw fox jumps"_s), u""_s) << "ignored words stay so";
    checker.setLanguages({u"fr_FR"_s}, /*hasOnlyLanguages=*/true);
    EXPECT_EQ(misspelt(checker, english), u""_s);
    checker.setLanguages({u"fr_FR"_s}, /*hasOnlyLanguages=*/false);
    EXPECT_EQ(misspelt(checker, german), u"schnele"_s);
    EXPECT_EQ(misspelt(checker, english), u"brwon"_s);
}

TEST_F(Spelling, MarksNothingWithoutDictionaries)
{
    const quib::tests::TemporaryFolder empty;
    SpellChecker checker({{empty.path(), u"/nonexistent"_s}, {u"en_US"_s}, empty.path(u"words.txt"_s)});
    EXPECT_EQ(misspelt(checker, u"xqzw xqzw xqzw xqzw xqzw"_s), u""_s);
    EXPECT_TRUE(checker.suggestionsForWord(u"xqzw"_s, u"xqzw"_s).isEmpty());
}

TEST_F(Spelling, SuggestsWordsOfTheParagraphsLanguage)
{
    SpellChecker checker(options());
    EXPECT_TRUE(checker.suggestionsForWord(u"quikc"_s, u"the quikc brown fox"_s).contains(u"quick"_s));
    EXPECT_TRUE(checker.suggestionsForWord(u"Hnud"_s, u"und der schnelle Hnud ist groß"_s).contains(u"Hund"_s));
    EXPECT_LE(checker.suggestionsForWord(u"o"_s, u"o"_s).size(), HunspellDictionary::kMostSuggestions);
    EXPECT_TRUE(checker.suggestionsForWord(QString(5000, u'x'), u"the dog"_s).isEmpty());
}

TEST_F(Spelling, KeepsTheUsersWords)
{
    {
        SpellChecker checker(options());
        EXPECT_EQ(misspelt(checker, u"xqzw Qwop zzyx"_s), u"xqzw Qwop zzyx"_s);
        NSError error;
        EXPECT_TRUE(checker.learnWord(u"xqzw"_s, &error));
        EXPECT_TRUE(checker.learnWord(u"xqzw"_s, &error));
        EXPECT_TRUE(checker.learnWord(u"Qwop"_s, &error));
        checker.ignoreWord(u"zzyx"_s);
        EXPECT_EQ(misspelt(checker, u"xqzw Xqzw Qwop zzyx"_s), u""_s);
        EXPECT_EQ(misspelt(checker, u"qwop"_s), u"qwop"_s) << "learned as a name";
    }
    EXPECT_EQ(folder.read(u"own/words.txt"_s), "xqzw\nQwop\n");
    SpellChecker later(options());
    EXPECT_EQ(misspelt(later, u"xqzw Qwop zzyx"_s), u"zzyx"_s) << "ignored for one run only";
}

TEST_F(Spelling, LeavesWordsOfOtherWritersAlone)
{
    SpellChecker checker(options());
    EXPECT_EQ(misspelt(checker, u"xqzw"_s), u"xqzw"_s);
    folder.write(u"own/words.txt"_s, "zzyx\r\n\r\n  qwop  \n\xFF\xFE\n");
    NSError error;
    EXPECT_TRUE(checker.learnWord(u"xqzw"_s, &error));
    const QByteArray written = folder.read(u"own/words.txt"_s);
    EXPECT_TRUE(written.startsWith("zzyx\nqwop\n") && written.endsWith("\nxqzw\n")) << written.toStdString();
}

TEST_F(Spelling, TellsWhereWordsCannotBeKept)
{
    folder.write(u"own"_s, "a file in the way");
    SpellChecker checker(options());
    NSError error;
    EXPECT_FALSE(checker.learnWord(u"xqzw"_s, &error));
    EXPECT_FALSE(error.localizedDescription().isEmpty());
    EXPECT_EQ(misspelt(checker, u"xqzw"_s), u""_s) << "right for this run at least";
}

TEST_F(Spelling, ReadsDictionariesInOtherEncodings)
{
    folder.write(u"es_ES.aff"_s, "SET ISO8859-1\nTRY ae\n");
    folder.write(u"es_ES.dic"_s, "3\nma\xF1"
                                 "ana\nni\xF1o\nsol\n");
    NSError error;
    const auto dictionary = HunspellDictionary::dictionaryWithFile(
        {u"es_ES"_s, folder.path(u"es_ES.aff"_s), folder.path(u"es_ES.dic"_s)}, &error);
    ASSERT_NE(dictionary, nullptr) << error.localizedDescription().toStdString();
    EXPECT_TRUE(dictionary->isRight(u"mañana"_s));
    EXPECT_FALSE(dictionary->isRight(u"manana"_s));
    EXPECT_TRUE(dictionary->isRight(u"ночь"_s)) << "its letters can't tell";
    EXPECT_TRUE(dictionary->suggestionsForWord(u"nino"_s).contains(u"niño"_s));
}

TEST_F(Spelling, SurvivesHostileDictionaries)
{
    const std::pair<QByteArray, QByteArray> files[] = {
        {"", ""},
        {"", "1\n"},
        {"", "2147483647\nword\n"},
        {"", "99999999999999999999\nword\n"},
        {"", "-5\nword\n"},
        {"", "word\n"},
        {"SET NOSUCH-8\n", "1\nword\n"},
        {"SET\n", "1\nword\n"},
        {"SET UTF-8\nAF 2000000000\nAF x\n", "1\nword/1\n"},
        {"SET UTF-8\nREP 2000000000\nREP a b\n", "1\nword\n"},
        {"SET UTF-8\nMAP 1000000000\nMAP (\n", "1\nword\n"},
        {"SET UTF-8\nSFX A Y 99999\nSFX A 0 s .\n", "1\nword/A\n"},
        {"SET UTF-8\nSFX A Y 1\nSFX A aaaaaaaaaaaaaaaaaaaa b [^\n", "2\nword/A\na/A\n"},
        {"SET UTF-8\nPFX A Y 1\nPFX A 0 re [[[[[[\n", "1\nword/A\n"},
        {"SET UTF-8\nFLAG num\n", "1\nword/999999999,,,-1\n"},
        {"SET UTF-8\nFLAG long\n", "1\nword/a\n"},
        {"SET UTF-8\nCOMPOUNDFLAG A\nCOMPOUNDMIN -5\n", "2\na/A\nb/A\n"},
        {"SET UTF-8\nCOMPOUNDRULE 1\nCOMPOUNDRULE (A)*(A)*(A)*(A)*(A)*(A)*B\n", "2\na/A\nb/A\n"},
        {"SET UTF-8\nAM 1\nAM po:noun\n", "2\nword\t7\nwords\t-1\n"},
        {"SET UTF-8\nBREAK 3\nBREAK a\nBREAK ^\nBREAK $\n", "1\nword\n"},
        {"SET UTF-8\nICONV 1\nICONV a aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa\nOCONV 1\nOCONV b \n", "1\nword\n"},
        {QByteArray("\0\0\0SET \xFF\xFE\n", 10), QByteArray("3\n\0\0\xFF\n/\n//\n", 11)},
        {QByteArray(100'000, 'A'), "1\n" + QByteArray(100'000, 'w') + "\n"},
    };
    for (const auto &[affixes, words] : files) {
        SCOPED_TRACE(affixes.left(60).toStdString() + " with " + words.left(30).toStdString());
        folder.write(u"en_US.aff"_s, affixes);
        folder.write(u"en_US.dic"_s, words);
        SpellChecker checker({{folder.path()}, {u"en_US"_s}, folder.path(u"words.txt"_s)});
        const QString paragraph = u"word words aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaab (a) reword über x"_s;
        for (const NSRange range : checker.misspeltRangesInParagraph(paragraph, {})) {
            EXPECT_LE(range.limit(), paragraph.size());
        }
        EXPECT_LE(checker.suggestionsForWord(u"wrod"_s, u"wrod"_s).size(), HunspellDictionary::kMostSuggestions);
    }
}

TEST_F(Spelling, SurvivesDamagedDictionaries)
{
    const QByteArray affixes =
        "SET UTF-8\nFLAG num\nAF 2\nAF 1,2\nAF 3\nAM 1\nAM po:noun\nREP 1\nREP f ph\nMAP 1\nMAP e"
        "\xC3\xA9\nCOMPOUNDFLAG 3\nCOMPOUNDRULE 1\nCOMPOUNDRULE 1*2?\nBREAK 1\nBREAK -\nICONV 1\n"
        "ICONV x y\nPHONE 1\nPHONE AH(AEIOUY)-^ *H\nSFX 1 Y 2\nSFX 1 0 s [^sxy]\nSFX 1 y ies y\n"
        "PFX 2 Y 1\nPFX 2 0 un .\n";
    const QByteArray words = "4\nword/1\t1\nfox/2\nberry/1\nph\xC3\xB6n/1\tph:fon\n";
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    const auto damaged = [&random](QByteArray bytes) {
        for (auto wounds = 1 + random() % 4; wounds > 0; --wounds) {
            const auto place = static_cast<qsizetype>(random() % static_cast<unsigned>(bytes.size()));
            if (random() % 3 == 0) {
                bytes.remove(place, static_cast<qsizetype>(1 + random() % 8));
                bytes.append('\n');
            } else {
                static constexpr QByteArrayView kTelling("\0\n \t/,*?[]^-()0129\xFF", 20);
                bytes[place] = kTelling[static_cast<qsizetype>(random() % 20)];
            }
        }
        return bytes;
    };
    for (int round = 0; round < 60; ++round) {
        folder.write(u"en_US.aff"_s, damaged(affixes));
        folder.write(u"en_US.dic"_s, random() % 2 == 0 ? damaged(words) : words);
        SpellChecker checker({{folder.path()}, {}, folder.path(u"words.txt"_s)});
        const QString paragraph = u"word unwords foxes fonberry well-known xyz"_s;
        for (const NSRange range : checker.misspeltRangesInParagraph(paragraph, {})) {
            EXPECT_LE(range.limit(), paragraph.size());
        }
        EXPECT_LE(checker.suggestionsForWord(u"wrod"_s, u"wrod"_s).size(), HunspellDictionary::kMostSuggestions);
    }
}

TEST_F(Spelling, FindsTheDictionariesOfFolders)
{
    folder.write(u"hyph_de_DE.aff"_s, "");
    folder.write(u"hyph_de_DE.dic"_s, "");
    folder.write(u"fr.aff"_s, "");
    folder.write(u"fr_FR.dic"_s, "");
    const quib::tests::TemporaryFolder own;
    own.write(u"en_US.aff"_s, "");
    own.write(u"en_US.dic"_s, "");
    own.write(u"en_GB.aff"_s, "");
    own.write(u"en_GB.dic"_s, "");
    const auto found = spellingDictionariesInFolders({own.path(), u"/nonexistent"_s, folder.path()});
    QStringList languages;
    for (const SpellingDictionaryFile &file : found) {
        languages.append(file.language);
    }
    EXPECT_EQ(languages, QStringList({u"de_DE"_s, u"en_GB"_s, u"en_US"_s}));
    EXPECT_EQ(found[2].wordsPath, own.path(u"en_US.dic"_s)) << "the first folder counts";
}

TEST(SpellingLanguages, AreOrderedByTheUsersLanguages)
{
    QList<SpellingDictionaryFile> found;
    for (const QString &language : {u"de_AT"_s, u"de_DE"_s, u"en_GB"_s, u"en_US"_s, u"it"_s, u"sr_Latn_RS"_s}) {
        found.append({language, {}, {}});
    }
    const auto chosen = [&found](const QStringList &languages) {
        QStringList names;
        for (const SpellingDictionaryFile &file : spellingDictionariesForLanguages(found, languages)) {
            names.append(file.language);
        }
        return names.join(u' ');
    };
    EXPECT_EQ(chosen({}), u"de_AT en_GB it sr_Latn_RS"_s);
    EXPECT_EQ(chosen({u"en_US"_s, u"en"_s}), u"en_US de_AT it sr_Latn_RS"_s);
    EXPECT_EQ(chosen({u"en"_s, u"en_US"_s, u"de_DE"_s}), u"en_US de_DE it sr_Latn_RS"_s);
    EXPECT_EQ(chosen({u"it_IT"_s, u"it"_s, u"de_CH"_s}), u"it de_AT en_GB sr_Latn_RS"_s);
    EXPECT_EQ(chosen({u"fr_FR"_s}), u"de_AT en_GB it sr_Latn_RS"_s);
}

} // namespace
