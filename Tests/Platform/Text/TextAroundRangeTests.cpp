// What stands beside a range, and texts taken apart into paragraphs and put together again.

#include <Support/TestSeed.h>
#include <Text/AttributedParagraphs.h>
#include <Text/NSStringHelpers.h>
#include <Text/TextAroundRange.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

constexpr NSAttributeName kColour{u"Colour"};

TEST(TextAroundRange, IsToldOfEveryRangeAsByAListOfUnits)
{
    const QStringList texts{u""_s, u"a"_s, u"a b\n"_s, u"  ab\tba  "_s, u"\u2028a😀b"_s};
    for (const QString &text : texts) {
        for (qint64 location = 0; location <= text.size() + 2; ++location) {
            for (qint64 length = 0; length <= text.size() + 2; ++length) {
                const NSRange range{location, length};
                const bool hasBefore = location > 0 && location <= text.size();
                const bool hasAfter = location + length < text.size();
                const QChar before = hasBefore ? text[location - 1] : QChar();
                const QChar after = hasAfter ? text[location + length] : QChar();
                for (const char16_t unit : {u'a', u' ', u'\0'}) {
                    bool isOut = false;
                    EXPECT_EQ(qbCharBeforeRange(text, range, unit, &isOut), hasBefore && before == unit);
                    EXPECT_EQ(isOut, !hasBefore);
                    EXPECT_EQ(qbCharAfterRange(text, range, unit, &isOut), hasAfter && after == unit);
                    EXPECT_EQ(isOut, !hasAfter);
                }
                for (const CharacterSet set : {isWhitespace, isNewline, isWhitespaceOrNewline}) {
                    bool isOut = false;
                    EXPECT_EQ(qbCharBeforeRange(text, range, set, &isOut), hasBefore && set(before.unicode()));
                    EXPECT_EQ(isOut, !hasBefore);
                    EXPECT_EQ(qbCharAfterRange(text, range, set), hasAfter && set(after.unicode()));
                }
            }
        }
    }
}

TEST(TextAroundRange, WholeStringsNeedTheirRoom)
{
    const QString text = u"one two one"_s;
    const NSRange two{4, 3};
    bool isOut = true;
    EXPECT_TRUE(qbStringBeforeRange(text, two, u"one ", &isOut));
    EXPECT_FALSE(isOut);
    EXPECT_FALSE(qbStringBeforeRange(text, two, u"two ", &isOut));
    EXPECT_FALSE(isOut);
    EXPECT_FALSE(qbStringBeforeRange(text, two, u" one ", &isOut));
    EXPECT_TRUE(isOut);
    EXPECT_TRUE(qbStringAfterRange(text, two, u" one", &isOut));
    EXPECT_FALSE(isOut);
    EXPECT_FALSE(qbStringAfterRange(text, two, u" one ", &isOut));
    EXPECT_TRUE(isOut);
    EXPECT_TRUE(qbStringAfterRange(text, two, u"", &isOut));
    EXPECT_FALSE(isOut);
    EXPECT_FALSE(qbStringAfterRange(text, kNotFoundRange, u"", &isOut));
    EXPECT_TRUE(isOut);
    EXPECT_FALSE(qbStringBeforeRange(text, kNotFoundRange, u"", &isOut));
    EXPECT_TRUE(isOut);
}

TEST(AttributedParagraphs, KeepTheirAttributesAndLoseTheirLineEnds)
{
    NSMutableAttributedString text(u"one\ntwo\r\n\u2029three\n"_s);
    text.addAttribute(kColour, u"red"_s, {2, 4});
    const auto paragraphs = splitParagraphs(text);
    QStringList strings;
    for (const auto &paragraph : paragraphs) {
        strings.append(paragraph.string().toString());
    }
    EXPECT_EQ(strings, (QStringList{u"one"_s, u"two"_s, u""_s, u""_s, u"three"_s, u""_s}));
    EXPECT_EQ(paragraphs[0].attribute(kColour, 2).stringValue(), u"red"_s);
    EXPECT_FALSE(paragraphs[0].attribute(kColour, 1));
    EXPECT_EQ(paragraphs[1].attribute(kColour, 1).stringValue(), u"red"_s);

    const auto joined = attributedStringWithParagraphs(paragraphs);
    EXPECT_EQ(joined.string(), u"one\ntwo\n\n\nthree\n");
    EXPECT_FALSE(joined.attribute(kColour, 3)) << "the line feed is plain";
    EXPECT_EQ(joined.attribute(kColour, 4).stringValue(), u"red"_s);
    EXPECT_TRUE(attributedStringWithParagraphs({}).isEmpty());
    EXPECT_EQ(splitParagraphs(NSAttributedString()).size(), 1);
}

TEST(AttributedParagraphs, JoinedAgainAreTheTextWithPlainLineFeeds)
{
    auto random = TestSeed().generator();
    for (int round = 0; round < 200; ++round) {
        NSMutableAttributedString text;
        NSMutableAttributedString expected;
        for (auto pieces = random() % 12; pieces > 0; --pieces) {
            const bool isLineFeed = random() % 3 == 0;
            const NSAttributedString piece(isLineFeed ? u"\n"_s : u"word"_s.first(1 + random() % 4),
                                           {{kColour, static_cast<int>(random() % 3)}});
            text.appendAttributedString(piece);
            expected.appendAttributedString(isLineFeed ? NSAttributedString(u"\n"_s) : piece);
        }
        EXPECT_TRUE(attributedStringWithParagraphs(splitParagraphs(text)) == expected);
    }
}

} // namespace

} // namespace quib::tests
