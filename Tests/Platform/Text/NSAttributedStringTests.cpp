#include <Text/NSMutableAttributedString.h>
#include <Text/NSParagraphStyle.h>
#include <Text/NSStringHelpers.h>
#include <Text/NSTextAttachment.h>

#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>

#include <Platform/Text/RandomText.h>

#include <gtest/gtest.h>

#include <QStringList>

using namespace Qt::StringLiterals;
using namespace quib;
using quib::tests::randomText;
using quib::tests::TestSeed;

namespace {

/// The runs of one attribute, numbers and texts as they print: "0-3=1 3-5=-".
QString runsOf(const NSAttributedString &text, const NSAttributeName &name,
               NSAttributedStringEnumerationOptions options = NSAttributedStringEnumerationOptions::Forward)
{
    QStringList runs;
    text.enumerateAttribute(name, text.fullRange(), options, [&](const AttributeValue &value, NSRange range, bool *) {
        const QString printed = value.isNothing()  ? u"-"_s
                                : value.isNumber() ? QString::number(value.doubleValue())
                                : value.isString() ? value.stringValue()
                                                   : u"object"_s;
        runs.append(u"%1-%2=%3"_s.arg(range.location).arg(range.limit()).arg(printed));
    });
    return runs.join(u' ');
}

/// "aabb" with kern 1 on the a's and 2 on the b's.
NSMutableAttributedString twoRuns()
{
    NSMutableAttributedString text(u"aabb"_s);
    text.addAttribute(NSKernAttributeName, 1, {0, 2});
    text.addAttribute(NSKernAttributeName, 2, {2, 2});
    return text;
}

std::shared_ptr<NSParagraphStyle> styleWithIndent(double indent)
{
    NSMutableParagraphStyle style;
    style.headIndent = indent;
    return style.copy();
}

} // namespace

TEST(NSAttributedString, PlainReplacementTakesTheAttributesOfTheFirstReplacedUnitOrANeighbour)
{
    struct Case
    {
        const char *what;
        NSRange range;
        QString string;
        QString runs;
    };
    const Case cases[] = {
        {"within a run", {0, 1}, u"xyz"_s, u"0-4=1 4-6=2"_s},
        {"over two runs: the first", {1, 2}, u"xyz"_s, u"0-4=1 4-5=2"_s},
        {"over all", {0, 4}, u"x"_s, u"0-1=1"_s},
        {"inserted: the one before", {2, 0}, u"x"_s, u"0-3=1 3-5=2"_s},
        {"inserted at the start: the one behind", {0, 0}, u"x"_s, u"0-3=1 3-5=2"_s},
        {"inserted at the end", {4, 0}, u"x"_s, u"0-2=1 2-5=2"_s},
        {"inserted beyond the end", {9, 3}, u"x"_s, u"0-2=1 2-5=2"_s},
        {"an empty range beyond the end", {9, 0}, u"x"_s, u"0-2=1 2-5=2"_s},
        {"a range before the start", {-9, 3}, u"x"_s, u"0-3=1 3-5=2"_s},
        {"a range of no place", {NSNotFound, 0}, u"x"_s, u"0-2=1 2-5=2"_s},
        {"a range of negative length", {2, -1}, u"x"_s, u"0-3=1 3-5=2"_s},
        {"a range that runs past the end", {3, 90}, u"x"_s, u"0-2=1 2-4=2"_s},
        {"the largest range", {0, NSNotFound}, u"x"_s, u"0-1=1"_s},
        {"removed", {1, 2}, QString(), u"0-1=1 1-2=2"_s},
        {"all removed", {0, 4}, QString(), QString()},
    };
    for (const Case &one : cases) {
        SCOPED_TRACE(one.what);
        NSMutableAttributedString text = twoRuns();
        text.replaceCharactersInRange(one.range, one.string);
        EXPECT_EQ(runsOf(text, NSKernAttributeName), one.runs);
    }
    NSMutableAttributedString empty;
    empty.replaceCharactersInRange({0, 0}, u"x");
    EXPECT_TRUE(empty.attributesAtIndex(0).isEmpty());
}

TEST(NSAttributedString, PlacesOutsideOfTheTextHaveNoAttributes)
{
    const NSMutableAttributedString text = twoRuns();
    for (const qint64 index : {qint64(-1), qint64(4), NSNotFound}) {
        NSRange range;
        EXPECT_TRUE(text.attribute(NSKernAttributeName, index, &range).isNothing());
        EXPECT_EQ(range, (NSRange{index, 0}));
        EXPECT_TRUE(text.attributesAtIndex(index).isEmpty());
    }
    for (const NSRange range : {NSRange{7, 2}, {7, 0}, {4, 2}, {-3, 3}, {NSNotFound, NSNotFound}}) {
        EXPECT_TRUE(text.attributedSubstringFromRange(range).isEmpty());
        EXPECT_TRUE(text.stringInRange(range).isEmpty());
        EXPECT_FALSE(text.containsAttribute(NSKernAttributeName, range));
    }
    EXPECT_EQ(text.attributedSubstringFromRange({-1, 2}).string(), u"a");
}

TEST(NSAttributedString, AnyUnitsSurvive)
{
    const QString units(u"\0\xD800\uFEFF\uFFFC\xDC00\r\n"_s);
    NSMutableAttributedString text(units);
    text.replaceCharactersInRange({3, 1}, units);
    text.replaceCharactersInRange({3, units.size()}, u"\uFFFC");
    EXPECT_EQ(text.string(), units);
}

TEST(NSAttributedString, APartOfItsOwnTextCanBeInserted)
{
    NSMutableAttributedString text = twoRuns();
    text.replaceCharactersInRange({1, 1}, text.string());
    EXPECT_EQ(text.string(), u"aaabbbb");
    text.appendAttributedString(text);
    EXPECT_EQ(text.string(), u"aaabbbbaaabbbb");
    EXPECT_EQ(runsOf(text, NSKernAttributeName), u"0-5=1 5-7=2 7-12=1 12-14=2"_s);
    const AttributeSet own = text.attributesAtIndex(6);
    text.setAttributes(own, text.fullRange());
    EXPECT_EQ(runsOf(text, NSKernAttributeName), u"0-14=2"_s);
}

TEST(NSAttributedString, EnumerationVisitsGapsAndStops)
{
    NSMutableAttributedString text = twoRuns();
    text.addAttribute(NSLinkAttributeName, u"u"_s, {1, 2});
    EXPECT_EQ(runsOf(text, NSLinkAttributeName), u"0-1=- 1-3=u 3-4=-"_s);
    EXPECT_EQ(runsOf(text, NSLinkAttributeName, NSAttributedStringEnumerationOptions::Reverse), u"3-4=- 1-3=u 0-1=-"_s);
    int calls = 0;
    text.enumerateAttribute(NSKernAttributeName, text.fullRange(), NSAttributedStringEnumerationOptions::Forward,
                            [&](const AttributeValue &, NSRange, bool *stop) {
                                ++calls;
                                *stop = true;
                            });
    EXPECT_EQ(calls, 1);
}

TEST(NSAttributedString, EnumerationOfAllAttributesJoinsWhatIsEqual)
{
    NSMutableAttributedString text(QString(1000, u'x'));
    for (qint64 index = 0; index < 1000; index += 2) {
        text.addAttribute(NSKernAttributeName, 1, {index, 1});
    }
    text.addAttribute(NSKernAttributeName, 1, {100, 800});
    QList<NSRange> longOnes;
    text.enumerateAttributesInRange({50, 900}, NSAttributedStringEnumerationOptions::Forward,
                                    [&](const AttributeSet &, NSRange range, bool *) {
                                        if (range.length > 1) {
                                            longOnes.append(range);
                                        }
                                    });
    EXPECT_EQ(longOnes, (QList<NSRange>{{100, 801}}));
}

TEST(NSAttributedString, FixingKeepsAttachmentsOnTheirUnitAlone)
{
    const auto attachment = std::make_shared<NSTextAttachment>();
    NSMutableAttributedString text(u"a\uFFFCb\uFFFC\uFFFCc"_s);
    text.addAttribute(NSAttachmentAttributeName, attachment, {0, 4});
    text.fixAttributesInRange({0, 3});
    EXPECT_EQ(runsOf(text, NSAttachmentAttributeName), u"0-1=- 1-2=object 2-3=- 3-4=object 4-6=-"_s);
    EXPECT_EQ(text.attribute(NSAttachmentAttributeName, 3).as<NSTextAttachment>(), attachment.get());
}

TEST(NSAttributedString, FixingGivesAParagraphTheStyleOfItsFirstUnit)
{
    NSMutableAttributedString text(u"ab\ncd\r\nef"_s);
    text.addAttribute(NSParagraphStyleAttributeName, styleWithIndent(1), {0, 1});
    text.addAttribute(NSParagraphStyleAttributeName, styleWithIndent(2), {5, 4});
    text.addAttribute(NSFontAttributeName, 7, {1, 1});
    text.fixAttributesInRange({1, 4});
    NSRange range;
    const AttributeValue first = text.attribute(NSParagraphStyleAttributeName, 0, &range, text.fullRange());
    EXPECT_EQ(first.as<NSParagraphStyle>()->headIndent(), 1);
    EXPECT_EQ(range, (NSRange{0, 3}));
    // The second begins without a style; the third was not touched.
    EXPECT_TRUE(text.attribute(NSParagraphStyleAttributeName, 5).isNothing());
    EXPECT_EQ(text.attribute(NSParagraphStyleAttributeName, 7).as<NSParagraphStyle>()->headIndent(), 2);
    EXPECT_EQ(runsOf(text, NSFontAttributeName), u"0-1=- 1-2=7 2-9=-"_s);
}

TEST(NSAttributedString, ManyReplacementsArePlacedAtOnce)
{
    NSMutableAttributedString text = twoRuns();
    const NSMutableAttributedString::Replacement replacements[] = {
        {{0, 0}, u"["_s, {{NSKernAttributeName, 8}}},
        {{1, 2}, u"\uFFFC"_s, {{NSKernAttributeName, 9}}},
        {{3, 0}, QString(), {}},
        {{4, 0}, u"]"_s, {}},
    };
    text.replaceCharacters(replacements);
    EXPECT_EQ(text.string(), u"[a\uFFFCb]");
    EXPECT_EQ(runsOf(text, NSKernAttributeName), u"0-1=8 1-2=1 2-3=9 3-4=2 4-5=-"_s);
    text.runs().checkInvariants();
}

TEST(NSAttributedString, ParagraphsAndPartsAreThoseOfThePlainStringWhereverTheLastEditWas)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    for (int round = 0; round < 400; ++round) {
        QString plain = randomText(random, u"ab\n\r\u0085\u2028\u2029", 30);
        NSMutableAttributedString text(plain);
        for (int step = 0; step < 10; ++step) {
            const auto place = static_cast<qint64>(random() % static_cast<size_t>(plain.size() + 1));
            const auto length = static_cast<qint64>(random() % static_cast<size_t>(plain.size() - place + 1));
            const QString piece = randomText(random, u"ab\n\r", 3);
            if (random() % 2 == 0) {
                plain.replace(place, length / 2, piece);
                text.replaceCharactersInRange({place, length / 2}, piece);
                continue;
            }
            const NSRange range{place, length};
            ASSERT_EQ(text.paragraphRangeForRange(range), paragraphRangeForRange(plain, range));
            ASSERT_EQ(text.stringInRange(range), QStringView(plain).sliced(place, length));
            ASSERT_EQ(text.attributedSubstringFromRange(range).string(), QStringView(plain).sliced(place, length));
        }
        ASSERT_EQ(text.string(), plain);
    }
}

TEST(NSAttributedString, CopiesAreIndependent)
{
    NSMutableAttributedString text = twoRuns();
    const NSAttributedString copy = text;
    text.addAttribute(NSKernAttributeName, 5, {1, 2});
    text.replaceCharactersInRange({0, 1}, u"zzz");
    EXPECT_EQ(copy.string(), u"aabb");
    EXPECT_EQ(copy, twoRuns());
    EXPECT_FALSE(copy == text);
}
