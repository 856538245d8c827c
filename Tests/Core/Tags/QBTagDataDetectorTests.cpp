#include <Tags/QBTagDataDetector.h>

#include "TagPieces.h"

#include <Support/TestSeed.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using quib::tests::randomTagText;
using quib::tests::TestSeed;

namespace {

/// The joined pattern, matched by the expression engine.
class PatternDetector : public QBTagDataDetector
{
public:
    void enumerateMatchesInString(QStringView string, Options, NSRange range,
                                  const MatchCallback &usingBlock) const override
    {
        enumeratePatternMatches(string, range, usingBlock);
    }
};

/// The matched texts.
QStringList tagsIn(const QString &text)
{
    QStringList tags;
    QBTagDataDetector::sharedDetector().enumerateMatchesInString(
        text, 0, {0, text.size()}, [&](const NSTextCheckingResult &match, bool *) {
            tags.append(text.sliced(match.range().location, match.range().length));
        });
    return tags;
}

TEST(TagDetector, FindsTags)
{
    const std::pair<QString, QStringList> cases[] = {
        // Not tags.
        {u""_s, {}},
        {u"#"_s, {}},
        {u"##"_s, {}},
        {u"## x"_s, {}},
        {u"# x"_s, {}},
        {u"##x"_s, {}},
        {u"#/a"_s, {}},
        {u"#123"_s, {}},
        {u"#1-2"_s, {}},
        {u"#---"_s, {}},
        {u"#123, x"_s, {}},
        {u"word#tag"_s, {}},
        {u"#aabbcc"_s, {}},
        {u"#aabbcc x"_s, {}},
        {u"#aabbcc\nx"_s, {}},
        // The single form.
        {u"#1a"_s, {u"#1a"_s}},
        {u"#a1"_s, {u"#a1"_s}},
        {u"#12-b"_s, {u"#12-b"_s}},
        {u"#a/"_s, {u"#a/"_s}},
        {u"#a//b"_s, {u"#a//b"_s}},
        {u"#a/b/c d"_s, {u"#a/b/c"_s}},
        {u"#a.b"_s, {u"#a"_s}},
        {u"#aabbcc."_s, {u"#aabbcc"_s}},
        {u"#aabbccd"_s, {u"#aabbccd"_s}},
        {u"(#tag)"_s, {u"#tag"_s}},
        {u"\"#tag\""_s, {u"#tag"_s}},
        {u"[#tag]\n{#tag}\n'#tag'"_s, {u"#tag"_s, u"#tag"_s, u"#tag"_s}},
        {u"[#tag] {#tag}"_s, {u"#tag] {#"_s}},
        {u"#tag, x #y; #z…"_s, {u"#tag"_s, u"#y"_s, u"#z"_s}},
        {u"#a b"_s, {u"#a"_s}},
        {u"#a\tb"_s, {u"#a"_s}},
        {u"#a\u00A0b"_s, {u"#a"_s}},
        {u"#😀 x"_s, {u"#😀"_s}},
        {u"#., x"_s, {u"#."_s}},
        // The closed form, which needs no boundary.
        {u"#a b#"_s, {u"#a b#"_s}},
        {u"#a#"_s, {u"#a#"_s}},
        {u"#a b/c d#"_s, {u"#a b/c d#"_s}},
        {u"word#two words#"_s, {u"#two words#"_s}},
        {u"#a b#c"_s, {u"#a b#"_s}},
        {u"#123#"_s, {u"#123#"_s}},
        {u"#a #b"_s, {u"#a"_s, u"#b"_s}},
        {u"#a\n b#"_s, {u"#a"_s}},
        {u"#a b##c d#"_s, {u"#a b#"_s, u"#c d#"_s}},
        {u"#/a#"_s, {u"#/a#"_s}},
    };
    for (const auto &[text, expected] : cases) {
        EXPECT_EQ(tagsIn(text), expected) << text.toStdString();
    }
}

TEST(TagDetector, TellsTheContentOfAClosedTag)
{
    const QString text = u"x#a b# #c"_s;
    const QList<NSTextCheckingResult> matches =
        QBTagDataDetector::sharedDetector().matchesInString(text, 0, {0, text.size()});
    ASSERT_EQ(matches.size(), 2);
    EXPECT_EQ(matches[0].rangeAtIndex(QBTagDataDetector::regularExpressionRepresentedTextGroupIndex()),
              (NSRange{1, 5}));
    EXPECT_EQ(matches[0].rangeAtIndex(1), (NSRange{2, 3}));
    EXPECT_EQ(matches[1].rangeAtIndex(1), kNotFoundRange);
}

TEST(TagDetector, IsDefinedByItsPatterns)
{
    EXPECT_EQ(QBTagDataDetector::multiWordTagRegularExpressionPattern(),
              u"(?!#{2,}|#[0-9a-fA-F]{6}\\s|#[0-9a-fA-F]{6}$)#([^#\n\\s]{1}|[^#\n\\s]{1}[^#\n]*?[^#\n\\s]{1})#"_s);
    const QBTagDataDetector detector;
    EXPECT_TRUE(detector.isValid());
    EXPECT_EQ(detector.options(), 16U);
    EXPECT_EQ(detector.pattern(), QBTagDataDetector::multiWordTagRegularExpressionPattern() + u'|' +
                                      QBTagDataDetector::singleTagRegularExpressionPattern());
    EXPECT_TRUE(QBTagDataDetector::singleTagRegularExpression().isValid());
}

TEST(TagDetector, ScansExactlyWhatThePatternMatches)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    const PatternDetector pattern;
    const QBTagDataDetector scanner;
    qsizetype matched = 0;
    for (int round = 0; round < 40'000; ++round) {
        const QString text = randomTagText(random, 40);
        const auto size = static_cast<size_t>(text.size());
        const auto start = static_cast<qint64>(random() % 3 == 0 ? random() % (size + 1) : 0);
        const auto limit = static_cast<qint64>(random() % 3 == 0 ? random() % (size + 1) : size);
        const NSRange range{qMin(start, limit), qAbs(limit - start)};
        const QList<NSTextCheckingResult> expected = pattern.matchesInString(text, 0, range);
        ASSERT_TRUE(scanner.matchesInString(text, 0, range) == expected)
            << text.toStdString() << " in " << range.location << "+" << range.length;
        ASSERT_EQ(scanner.rangeOfFirstMatchInString(text, 0, range), pattern.rangeOfFirstMatchInString(text, 0, range));
        matched += expected.size();
    }
    EXPECT_GT(matched, 40'000) << "the texts hold too few tags to prove anything";
}

TEST(TagDetector, TakesEveryCharacterAsThePatternDoes)
{
    const PatternDetector pattern;
    const QBTagDataDetector scanner;
    for (char32_t unit = 0; unit < 0x10000; ++unit) {
        const QChar character(static_cast<char16_t>(unit));
        const QString text = u"x"_s + character + u"#b"_s + character + u" c"_s + character + u"# #"_s + character +
                             u" #12"_s + character + u" #aabbcc"_s + character + u'#' + character;
        ASSERT_TRUE(scanner.matchesInString(text, 0, {0, text.size()}) ==
                    pattern.matchesInString(text, 0, {0, text.size()}))
            << std::hex << static_cast<unsigned>(unit);
    }
}

TEST(TagDetector, ReadsHugeTextsInOnePass)
{
    // Quadratic work on any of these would take minutes.
    constexpr qsizetype kUnits = 4'000'000;
    const std::pair<QString, qint64> cases[] = {
        {QString(kUnits, u'#'), 0},
        {u'#' + QString(kUnits, u'a'), 1},
        {u'#' + QString(kUnits, u'1'), 0},
        {u"#a "_s.repeated(kUnits / 3), kUnits / 3},
        {u"# "_s.repeated(kUnits / 2), 0},
        {u"#a b"_s.repeated(kUnits / 4), kUnits / 8},
        {u"#a b \n"_s.repeated(kUnits / 6), kUnits / 6},
        {u'#' + QString(kUnits, u' '), 0},
        {u"x#"_s.repeated(kUnits / 2), kUnits / 4},
    };
    for (const auto &[text, expected] : cases) {
        EXPECT_EQ(QBTagDataDetector::sharedDetector().numberOfMatchesInString(text, 0, {0, text.size()}), expected)
            << text.first(8).toStdString();
    }
}

TEST(TagNames, BecomeHashtags)
{
    const std::pair<QString, QString> cases[] = {
        {u"tag"_s, u"#tag"_s},  {u"a/b"_s, u"#a/b"_s},    {u"a tag"_s, u"#a tag#"_s}, {u"a.b"_s, u"#a.b#"_s},
        {u"123"_s, u"#123#"_s}, {u"a\tb"_s, u"#a\tb#"_s}, {u"/a"_s, u"#/a#"_s},       {u"aabbcc"_s, u"#aabbcc#"_s},
        {u"a#b"_s, u"#a#b"_s},  {u""_s, u"##"_s},         {u"😀"_s, u"#😀"_s},
    };
    for (const auto &[name, expected] : cases) {
        EXPECT_EQ(QBTagDataDetector::hashTagStringForTagName(name), expected);
    }
    EXPECT_EQ(QBTagDataDetector::hashtagsFromTagsStrings({u" a\n"_s, u""_s, u" \t"_s, u"b c"_s, u"#d"_s}),
              (QStringList{u"#a"_s, u"#b c#"_s, u"##d#"_s}));
}

TEST(TagNames, AreSingleWhenThePatternCoversThem)
{
    EXPECT_TRUE(QBTagDataDetector::isSingleTag(u"#tag"));
    EXPECT_FALSE(QBTagDataDetector::isSingleTag(u"tag"));
    EXPECT_FALSE(QBTagDataDetector::isSingleTag(u"#a b#"));
    EXPECT_FALSE(QBTagDataDetector::isSingleTag(u""));

    const TestSeed seed;
    std::mt19937 random = seed.generator();
    for (int round = 0; round < 20'000; ++round) {
        const QString text = randomTagText(random, 4);
        const NSRange whole{0, text.size()};
        const bool covered =
            !text.contains(u' ') &&
            QBTagDataDetector::singleTagRegularExpression().rangeOfFirstMatchInString(text, 0, whole) == whole;
        ASSERT_EQ(QBTagDataDetector::isSingleTag(text), covered) << text.toStdString();
    }
}

TEST(TagExpression, FindsOneTag)
{
    struct Case
    {
        QString hashtag;
        QString text;
        QStringList expected;
    };
    const Case cases[] = {
        {u"#tag"_s, u"#tag #TAG x#tag #tags"_s, {u"#tag"_s, u"#TAG"_s}},
        {u"#tag"_s, u"#tag# (#tag/) #tag/x"_s, {u"#tag#"_s, u"#tag/"_s}},
        {u"#tag"_s, u"#tag#x"_s, {u"#tag"_s}},
        {u"#a.b"_s, u"#a.b #axb"_s, {u"#a.b"_s}},
        {u"#a+b"_s, u"#a+b #aab"_s, {u"#a+b"_s}},
        {u"#a b#"_s, u"x#A b#y #a b"_s, {u"#A b#"_s}},
    };
    for (const Case &test : cases) {
        const auto expression = QBTagDataDetector::tagRegularExpressionForHashtagString(test.hashtag);
        EXPECT_EQ(expression->options(), 17U);
        QStringList found;
        for (const NSTextCheckingResult &match : expression->matchesInString(test.text, 0, {0, test.text.size()})) {
            found.append(test.text.sliced(match.range().location, match.range().length));
        }
        EXPECT_EQ(found, test.expected) << test.hashtag.toStdString();
    }
    EXPECT_FALSE(QBTagDataDetector::tagRegularExpressionForHashtagString(u""_s)->isValid());
}

TEST(TagKey, ComparesTagsByLevels)
{
    const std::pair<QString, QStringList> cases[] = {
        {u"#Caffè"_s, {u"caffe"_s}},
        {u"#a b/C d#"_s, {u"a b"_s, u"c d"_s}},
        {u"#a//"_s, {u"a"_s}},
        {u"#a//b"_s, {u"a"_s, u""_s, u"b"_s}},
        {u"#"_s, {u""_s}},
        {u"a#b"_s, {u"ab"_s}},
        {u"#straße"_s, {u"straße"_s}},
    };
    for (const auto &[tag, expected] : cases) {
        EXPECT_EQ(QBTagDataDetector::diacriticTagComponentsFromString(tag), expected) << tag.toStdString();
    }
}

} // namespace
