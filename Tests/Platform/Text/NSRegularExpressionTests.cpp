#include <Text/NSRegularExpression.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

NSRange whole(QStringView text)
{
    return {0, text.size()};
}

/// "3+2 7+0": the matches' ranges; a group that took no part is "-". Groups stand behind the match, split by "/".
QString shown(const QList<NSTextCheckingResult> &matches)
{
    QStringList words;
    for (const NSTextCheckingResult &match : matches) {
        QStringList ranges;
        for (qint64 group = 0; group < match.numberOfRanges(); ++group) {
            const NSRange range = match.rangeAtIndex(group);
            ranges.append(range.isFound() ? u"%1+%2"_s.arg(range.location).arg(range.length) : u"-"_s);
        }
        words.append(ranges.join(u'/'));
    }
    return words.join(u' ');
}

QString matched(const QString &pattern, NSRegularExpression::Options options, QStringView text, NSRange range)
{
    return shown(NSRegularExpression(pattern, options).matchesInString(text, 0, range));
}

TEST(NSRegularExpression, MatchesByItsOptions)
{
    struct Case
    {
        QString pattern;
        NSRegularExpression::Options options;
        QString text;
        QString expected;
    };
    const Case cases[] = {
        {u"b"_s, 0, u"abcb"_s, u"1+1 3+1"_s},
        {u"B"_s, 0, u"abcb"_s, u""_s},
        {u"B"_s, NSRegularExpression::CaseInsensitive, u"abcb"_s, u"1+1 3+1"_s},
        {u"STRASSE"_s, NSRegularExpression::CaseInsensitive, u"straße"_s, u"0+6"_s},
        {u"a.b"_s, 0, u"a\nb"_s, u""_s},
        {u"a.b"_s, NSRegularExpression::DotMatchesLineSeparators, u"a\nb"_s, u"0+3"_s},
        {u"^b$"_s, 0, u"a\nb\nc"_s, u""_s},
        {u"^b$"_s, NSRegularExpression::AnchorsMatchLines, u"a\nb\nc"_s, u"2+1"_s},
        {u"(a)|(b)"_s, 0, u"ba"_s, u"0+1/-/0+1 1+1/1+1/-"_s},
        {u"(x)?a"_s, 0, u"a"_s, u"0+1/-"_s},
        {u"."_s, 0, u"😀x"_s, u"0+2 2+1"_s},
    };
    for (const Case &test : cases) {
        EXPECT_EQ(matched(test.pattern, test.options, test.text, whole(test.text)), test.expected)
            << test.pattern.toStdString();
    }
}

TEST(NSRegularExpression, AdvancesPastEmptyMatchesByACodePoint)
{
    EXPECT_EQ(matched(u"a*"_s, 0, u"baac", {0, 4}), u"0+0 1+2 3+0 4+0"_s);
    EXPECT_EQ(matched(u""_s + u"(?=x)"_s, 0, u"xx", {0, 2}), u"0+0 1+0"_s);
    EXPECT_EQ(matched(u"x*"_s, 0, u"😀", {0, 2}), u"0+0 2+0"_s);
    EXPECT_EQ(matched(u"^"_s, NSRegularExpression::AnchorsMatchLines, u"a\n\nb", {0, 4}), u"0+0 2+0 3+0"_s);
    EXPECT_EQ(matched(u"x*"_s, 0, u"", {0, 0}), u"0+0"_s);
}

TEST(NSRegularExpression, SeesNothingOutsideOfTheRange)
{
    EXPECT_EQ(matched(u"^b"_s, 0, u"abc", {1, 2}), u"1+1"_s) << "the range's start is an anchor";
    EXPECT_EQ(matched(u"b$"_s, 0, u"abc", {0, 2}), u"1+1"_s) << "the range's end is an anchor";
    EXPECT_EQ(matched(u"(?<=a)b"_s, 0, u"ab", {1, 1}), u""_s);
    EXPECT_EQ(matched(u"(?<!a)b"_s, 0, u"ab", {1, 1}), u"1+1"_s);
    EXPECT_EQ(matched(u"b(?!c)"_s, 0, u"bc", {0, 1}), u"0+1"_s);
    EXPECT_EQ(matched(u"\\bb"_s, 0, u"ab", {1, 1}), u"1+1"_s);
}

TEST(NSRegularExpression, CutsARangeToTheString)
{
    EXPECT_EQ(matched(u"."_s, 0, u"abc", {1, 100}), u"1+1 2+1"_s);
    EXPECT_EQ(matched(u"."_s, 0, u"abc", {1, NSNotFound}), u"1+1 2+1"_s);
    EXPECT_EQ(matched(u"$"_s, 0, u"abc", {3, 0}), u"3+0"_s);
    EXPECT_EQ(matched(u"."_s, 0, u"abc", {4, 1}), u""_s);
    EXPECT_EQ(matched(u"."_s, 0, u"abc", {-1, 2}), u""_s);
    EXPECT_EQ(matched(u"."_s, 0, u"abc", kNotFoundRange), u""_s);
    EXPECT_EQ(matched(u"x*"_s, 0, QStringView(), {0, 0}), u"0+0"_s);
}

TEST(NSRegularExpression, ReadsAnyUtf16)
{
    const QString text = u"a\0b"_s + QChar(0xD800) + u'c' + QChar(0xFEFF) + QChar(0xFFFC);
    EXPECT_EQ(matched(u"[^a]"_s, 0, text, whole(text)), u"1+1 2+1 3+1 4+1 5+1 6+1"_s);
    EXPECT_EQ(matched(u"\\x{d800}"_s, 0, text, whole(text)), u"3+1"_s);
}

TEST(NSRegularExpression, MatchesNothingWhenThePatternDoesNotBuild)
{
    for (const QString &pattern : {u"("_s, u"["_s, u"a{2,1}"_s, u"(?<=a*)b"_s, u""_s}) {
        const NSRegularExpression expression(pattern);
        EXPECT_FALSE(expression.isValid()) << pattern.toStdString();
        EXPECT_EQ(expression.numberOfMatchesInString(u"(aab[", 0, {0, 5}), 0);
        EXPECT_FALSE(expression.firstMatchInString(u"(aab[", 0, {0, 5}));
        EXPECT_EQ(expression.rangeOfFirstMatchInString(u"(aab[", 0, {0, 5}), kNotFoundRange);

        NSError error;
        EXPECT_EQ(NSRegularExpression::regularExpressionWithPattern(pattern, 0, &error), nullptr);
        EXPECT_TRUE(error.isSet());
        EXPECT_NE(error.causeCode(), 0);
    }
    EXPECT_NE(NSRegularExpression::regularExpressionWithPattern(u"(a)(b)"_s, 0), nullptr);
}

TEST(NSRegularExpression, EscapesWhatAPatternWouldReadAsItsOwn)
{
    EXPECT_EQ(NSRegularExpression::escapedPatternForString(u"a.b"), u"a\\.b"_s);
    QString every;
    for (char16_t unit = 0x20; unit < 0x7F; ++unit) {
        every.append(unit);
    }
    const NSRegularExpression expression(NSRegularExpression::escapedPatternForString(every));
    const QString text = u"<"_s + every + u">"_s;
    EXPECT_EQ(expression.rangeOfFirstMatchInString(text, 0, whole(text)), (NSRange{1, every.size()}));
}

TEST(NSRegularExpression, ReplacesByTemplate)
{
    struct Case
    {
        QString pattern;
        QString text;
        QString replacement;
        QString expected;
    };
    const Case cases[] = {
        {u"b"_s, u"abcb"_s, u"X"_s, u"aXcX"_s}, {u"(a)(b)?"_s, u"ab a"_s, u"<$2$1>"_s, u"<ba> <a>"_s},
        {u"a"_s, u"a"_s, u"[$0]"_s, u"[a]"_s},  {u"(a)"_s, u"a"_s, u"$12"_s, u"a2"_s},
        {u"a"_s, u"a"_s, u"$7"_s, u""_s},       {u"a"_s, u"a"_s, u"\\$1\\\\"_s, u"$1\\"_s},
        {u"a"_s, u"a"_s, u"$x\\"_s, u"$x\\"_s}, {u"x*"_s, u"ab"_s, u"-"_s, u"-a-b-"_s},
    };
    for (const Case &test : cases) {
        EXPECT_EQ(NSRegularExpression(test.pattern)
                      .stringByReplacingMatchesInString(test.text, whole(test.text), test.replacement),
                  test.expected)
            << test.pattern.toStdString() << " by " << test.replacement.toStdString();
    }
    EXPECT_EQ(NSRegularExpression(u"a"_s).stringByReplacingMatchesInString(u"aaaa", {1, 2}, u"b"), u"abba"_s);
}

TEST(NSRegularExpression, StopsWhenTheCallbackSaysSo)
{
    int calls = 0;
    NSRegularExpression(u"."_s).enumerateMatchesInString(u"abcd", 0, {0, 4},
                                                         [&calls](const NSTextCheckingResult &, bool *stop) {
                                                             ++calls;
                                                             *stop = calls == 2;
                                                         });
    EXPECT_EQ(calls, 2);
}

TEST(NSRegularExpression, MayBeUsedFromItsOwnCallback)
{
    const NSRegularExpression expression(u"[a-z]"_s);
    QStringList seen;
    expression.enumerateMatchesInString(u"ab", 0, {0, 2}, [&](const NSTextCheckingResult &outer, bool *) {
        seen.append(shown({outer}) + u':' + shown(expression.matchesInString(u"1xy", 0, {0, 3})));
    });
    EXPECT_EQ(seen, (QStringList{u"0+1:1+1 2+1"_s, u"1+1:1+1 2+1"_s}));
}

TEST(NSRegularExpression, MayBeUsedOnManyThreads)
{
    const NSRegularExpression expression(u"(?<=\\d)x+"_s);
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 6; ++i) {
        threads.emplace_back([&expression, &wrong, i] {
            const QString text = QString(i, u' ') + u"1xx2x"_s;
            for (int round = 0; round < 500; ++round) {
                const QList<NSTextCheckingResult> matches = expression.matchesInString(text, 0, whole(text));
                if (matches.size() != 2 || matches[0].range() != NSRange{i + 1, 2}) {
                    ++wrong;
                }
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, 0);
}

TEST(NSRegularExpression, EndsAPatternThatBacktracksWithoutBounds)
{
    const QString text = u"ok "_s + QString(60, u'a') + u'!';
    EXPECT_EQ(matched(u"ok|(a+)+$"_s, 0, text, whole(text)), u"0+2/-"_s) << "what was found before stays";
    const QString deep(3'000'000, u'a');
    EXPECT_LE(NSRegularExpression(u"(a|b)*c"_s).numberOfMatchesInString(deep, 0, whole(deep)), 0);
}

class EvenPlaces : public NSRegularExpression
{
public:
    EvenPlaces()
        : NSRegularExpression(u"."_s)
    {
    }
    void enumerateMatchesInString(QStringView string, Options, NSRange range,
                                  const MatchCallback &usingBlock) const override
    {
        enumeratePatternMatches(string, range, [&usingBlock](const NSTextCheckingResult &match, bool *stop) {
            if (match.range().location % 2 == 0) {
                usingBlock(match, stop);
            }
        });
    }
};

TEST(NSRegularExpression, AsksASubclassForAllItsAnswers)
{
    const EvenPlaces expression;
    EXPECT_EQ(shown(expression.matchesInString(u"abc", 0, {0, 3})), u"0+1 2+1"_s);
    EXPECT_EQ(expression.numberOfMatchesInString(u"abc", 0, {0, 3}), 2);
    EXPECT_EQ(expression.rangeOfFirstMatchInString(u"abc", 0, {1, 2}), (NSRange{2, 1}));
    EXPECT_EQ(expression.firstMatchInString(u"abc", 0, {1, 2})->range(), (NSRange{2, 1}));
    EXPECT_EQ(expression.stringByReplacingMatchesInString(u"abc", {0, 3}, u"-"), u"-b-"_s);
}

} // namespace
