#include <Text/NSStringHelpers.h>

#include <Platform/Text/RandomText.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QRegularExpression>

#include <random>

using namespace Qt::StringLiterals;
using quib::tests::randomText;
using quib::tests::TestSeed;

namespace {

/// A text with "[" and "]" around a range.
NSRange rangeIn(QString &marked)
{
    const qint64 start = marked.indexOf(u'[');
    marked.remove(start, 1);
    const qint64 limit = marked.indexOf(u']');
    marked.remove(limit, 1);
    return {start, limit - start};
}

QString marked(QString text, NSRange range)
{
    return text.insert(range.limit(), u']').insert(range.location, u'[');
}

TEST(ParagraphRange, IsTheWholeLinesThatARangeTouches)
{
    const std::pair<QString, QString> cases[] = {
        {u"[]"_s, u"[]"_s},
        {u"a[]b"_s, u"[ab]"_s},
        {u"ab\n[]"_s, u"ab\n[]"_s},
        {u"ab[]\ncd"_s, u"[ab\n]cd"_s},
        {u"ab\n[]cd"_s, u"ab\n[cd]"_s},
        {u"a[b\n]cd"_s, u"[ab\n]cd"_s},
        {u"a[b\nc]d\ne"_s, u"[ab\ncd\n]e"_s},
        {u"a\r[]\nb"_s, u"[a\r\n]b"_s},
        {u"a[\r]\nb"_s, u"[a\r\n]b"_s},
        {u"a\r\n[b]\r\nc"_s, u"a\r\n[b\r\n]c"_s},
        {u"a\r[b]\rc"_s, u"a\r[b\r]c"_s},
        {u"a\u0085[b]\u2028c"_s, u"a\u0085[b\u2028]c"_s},
        {u"a\u2029[]\u2029c"_s, u"a\u2029[\u2029]c"_s},
        {u"\n[]\n"_s, u"\n[\n]"_s},
    };
    for (const auto &[given, expected] : cases) {
        QString text = given;
        const NSRange range = rangeIn(text);
        EXPECT_EQ(marked(text, quib::paragraphRangeForRange(text, range)), expected) << given.toStdString();
    }
}

TEST(ComposedCharacterSequences, AreNotSplit)
{
    const std::pair<QString, QString> cases[] = {
        {u"a[b]c"_s, u"a[b]c"_s},
        {u"a[]c"_s, u"a[]c"_s},
        {u"a[e]\u0301c"_s, u"a[e\u0301]c"_s},
        {u"ae[\u0301]c"_s, u"a[e\u0301]c"_s},
        {u"[👩]\u200D💻x"_s, u"[👩\u200D💻]x"_s},
        {u"x[\r]\n"_s, u"x[\r\n]"_s},
    };
    for (const auto &[given, expected] : cases) {
        QString text = given;
        const NSRange range = rangeIn(text);
        EXPECT_EQ(marked(text, quib::rangeOfComposedCharacterSequencesForRange(text, range)), expected)
            << given.toStdString();
    }
    EXPECT_EQ(quib::rangeOfComposedCharacterSequencesForRange(u"x😀y", {2, 1}), (NSRange{1, 2}));
    EXPECT_EQ(quib::rangeOfComposedCharacterSequencesForRange(u"x😀y", {2, 100}), (NSRange{1, 3}));
}

TEST(WhiteSpace, KnowsBlanksFromLineEnds)
{
    for (const char16_t unit : u"\t \u00A0\u1680\u2003\u200A\u202F\u205F\u3000"_s.toStdU16String()) {
        EXPECT_TRUE(quib::isWhitespace(unit)) << static_cast<int>(unit);
        EXPECT_FALSE(quib::isNewline(unit)) << static_cast<int>(unit);
        EXPECT_TRUE(quib::isWhitespaceOrNewline(unit)) << static_cast<int>(unit);
    }
    for (const char16_t unit : u"\n\v\f\r\u0085\u2028\u2029"_s.toStdU16String()) {
        EXPECT_FALSE(quib::isWhitespace(unit)) << static_cast<int>(unit);
        EXPECT_TRUE(quib::isNewline(unit)) << static_cast<int>(unit);
        EXPECT_TRUE(quib::isWhitespaceOrNewline(unit)) << static_cast<int>(unit);
    }
    for (const char16_t unit : {u'\0', u'a', u'\u200B', u'\uFEFF', u'\x1F', u'\u180E'}) {
        EXPECT_FALSE(quib::isWhitespaceOrNewline(unit)) << static_cast<int>(unit);
    }
    EXPECT_EQ(quib::trimmedWhitespace(u" \t\na\n\t "), u"\na\n"_s);
    EXPECT_EQ(quib::trimmedWhitespaceAndNewlines(u" \t\na b\n\u3000 "), u"a b"_s);
    EXPECT_EQ(quib::trimmedWhitespaceAndNewlines(u" \n "), u""_s);
}

TEST(LowercaseString, FollowsNoLanguage)
{
    EXPECT_EQ(quib::lowercaseString(u"ABC xyz @[`{"), u"abc xyz @[`{"_s);
    EXPECT_EQ(quib::lowercaseString(u"ÀÉ I\u0130"), u"àé ii\u0307"_s);
    EXPECT_EQ(quib::lowercaseString(u"ΟΔΟΣ/ΣΑΣ"), u"οδος/σας"_s);
    const QString odd = QString(QChar(0xD800)) + u"A\uFEFF"_s;
    EXPECT_EQ(quib::lowercaseString(odd), QString(QChar(0xD800)) + u"a\uFEFF"_s);
}

TEST(RemovingWithoutGaps, TakesOneNeighbouringBlank)
{
    const std::pair<QString, QString> cases[] = {
        {u"a [x] b"_s, u"a [x ]b"_s},     {u"[x] b"_s, u"[x ]b"_s},
        {u"a\n[x] b"_s, u"a\n[x ]b"_s},   {u"a [x]"_s, u"a[ x]"_s},
        {u"a [x]\nb"_s, u"a[ x]\nb"_s},   {u"a\n[x]"_s, u"a[\nx]"_s},
        {u"a\n[x]\nb"_s, u"a\n[x]\nb"_s}, {u"a[x] b"_s, u"a[x] b"_s},
        {u"a [x]b"_s, u"a [x]b"_s},       {u"[x]"_s, u"[x]"_s},
        {u"[x]\nb"_s, u"[x]\nb"_s},
    };
    for (const auto &[given, expected] : cases) {
        QString text = given;
        const NSRange range = rangeIn(text);
        EXPECT_EQ(marked(text, quib::rangeForRemovingCharactersInRangeLeavingNoGaps(text, range)), expected)
            << given.toStdString();
    }
}

TEST(RemovingWithoutGaps, RemovesAgainAndAgain)
{
    EXPECT_EQ(quib::stringByRemovingOccurrencesOfStringLeavingNoGaps(u"a x b"_s, u"x"), u"a b"_s);
    EXPECT_EQ(quib::stringByRemovingOccurrencesOfStringLeavingNoGaps(u"aabb"_s, u"ab"), u""_s);
    EXPECT_EQ(quib::stringByRemovingOccurrencesOfStringLeavingNoGaps(u"abc"_s, u""), u"abc"_s);
    EXPECT_EQ(quib::stringByRemovingOccurrencesOfStringLeavingNoGaps(u"ab"_s, u"abc"), u"ab"_s);
    // The second place is looked up in the original, where a blank stands behind it: the "a" goes too.
    EXPECT_EQ(quib::stringByRemovingOccurrencesOfStringLeavingNoGaps(u"x xab"_s, u"x"), u"b"_s);
}

TEST(RemovingWithoutGaps, EqualsThePlainLoop)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    for (int round = 0; round < 20'000; ++round) {
        const QString text = randomText(random, u"aab \n", 16);
        const QString occurrence = randomText(random, u"ab ", 3);
        QString copy = text;
        for (qsizetype at = copy.indexOf(occurrence); !occurrence.isEmpty() && at >= 0; at = copy.indexOf(occurrence)) {
            const NSRange range = quib::rangeForRemovingCharactersInRangeLeavingNoGaps(text, {at, occurrence.size()});
            copy.remove(range.location, range.length);
        }
        ASSERT_EQ(quib::stringByRemovingOccurrencesOfStringLeavingNoGaps(text, occurrence), copy)
            << text.toStdString() << " without " << occurrence.toStdString();
    }
}

TEST(CleanConcatenatedString, EqualsTheReplacementsOneAfterTheOther)
{
    EXPECT_EQ(quib::qbCleanConcatenatedString(u" a\n\nb\tc \t d\u00A0e\n"_s), u"a b c d\u00A0e"_s);
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    const QRegularExpression gaps(u"\\s\\s+|\\t+"_s, QRegularExpression::UseUnicodePropertiesOption);
    for (int round = 0; round < 20'000; ++round) {
        const QString text = randomText(random, u"ab \n\t\r\u00A0\u2028", 12);
        QString plain = text;
        plain.replace(u'\n', u' ').replace(gaps, u" "_s);
        ASSERT_EQ(quib::qbCleanConcatenatedString(text), quib::trimmedWhitespaceAndNewlines(plain))
            << text.toStdString();
    }
}

TEST(CorrectFilenames, EveryNameIsReplacedLiterallyAndEverywhere)
{
    struct Case
    {
        QString text;
        QMap<QString, QString> names;
        QString expected;
    };
    const Case cases[] = {
        {u"[file:1/a.txt]"_s, {}, u"[file:1/a.txt]"_s},
        {u"a.txt, axtxt, a.txt"_s, {{u"a.txt"_s, u"a 2.txt"_s}}, u"a 2.txt, axtxt, a 2.txt"_s},
        {u"x/a.png x/b.png"_s, {{u"x/a.png"_s, u"a.png"_s}, {u"x/b.png"_s, u"b.png"_s}}, u"a.png b.png"_s},
        {u"A.txt a.txt"_s, {{u"a.txt"_s, u"b"_s}}, u"A.txt b"_s},
        {u"aaa"_s, {{u"aa"_s, u"aaa"_s}}, u"aaaa"_s},
        {u"$1\\"_s, {{u"$1"_s, u"\\0$"_s}}, u"\\0$\\"_s},
        {u"text"_s, {{QString(), u"x"_s}}, u"text"_s},
        {u"[file:1/a.txt]"_s, {{u"/a.txt"_s, QString()}}, u"[file:1]"_s},
    };
    for (const auto &[text, names, expected] : cases) {
        EXPECT_EQ(quib::correctFilenamesWithDictionary(text, names), expected) << text.toStdString();
    }
}

} // namespace
