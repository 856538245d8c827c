#include <Graphics/GraphicsAttributes.h>
#include <Graphics/ParagraphLayout.h>

#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>
#include <Text/NSAttributeName.h>
#include <Text/NSMutableAttributedString.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

class Dot : public NSTextAttachment
{
};

NSMutableAttributedString styled(const QString &text, double size = 16)
{
    NSMutableAttributedString string(text);
    const auto font = NSFont::fontWithName(u"DejaVu Sans", size);
    EXPECT_TRUE(font);
    string.addAttribute(NSFontAttributeName, attributeValue(*font), string.fullRange());
    return string;
}

} // namespace

TEST(ParagraphCaret, StepsOverCharactersNotUnits)
{
    // A letter with an accent of its own, a pair of surrogates, and a family of three joined pictures.
    const auto text = styled(u"\nae\u0301\U0001F600\U0001F468\u200D\U0001F469\u200D\U0001F467b"_s);
    const ParagraphLayout layout(text, {1, text.length() - 1}, 400);
    QList<qint64> places = {1};
    while (places.size() < 20 && layout.locationAfter(places.back()) != places.back()) {
        places.append(layout.locationAfter(places.back()));
    }
    EXPECT_EQ(places, (QList<qint64>{1, 2, 4, 6, 14, 15}));
    for (qsizetype i = places.size() - 1; i > 0; --i) {
        EXPECT_EQ(layout.locationBefore(places[i]), places[i - 1]);
    }
}

TEST(ParagraphCaret, APlaceWhereALineIsWrappedIsOnEitherLine)
{
    const auto text = styled(u"aaaa bbbb cccc"_s);
    const ParagraphLayout layout(text, text.fullRange(), 60);
    ASSERT_EQ(layout.lines().size(), 3U);
    EXPECT_EQ(layout.lineIndexOfLocation(5), 1U);
    EXPECT_EQ(layout.lineIndexOfLocation(5, /*upstream=*/true), 0U);
    EXPECT_GT(layout.caretRect(5, true).left(), layout.caretRect(5).left() + 20);
    EXPECT_LT(layout.caretRect(5, true).top(), layout.caretRect(5).top());
    bool upstream = false;
    // Behind the end of a line that a space ends, the place is the one before the space.
    EXPECT_EQ(layout.locationAtX(0, 1000, &upstream), 4);
    EXPECT_FALSE(upstream);
    EXPECT_EQ(layout.locationAtX(1, -5, &upstream), 5);
    EXPECT_FALSE(upstream);
    EXPECT_EQ(layout.locationAtPoint({1000, 1000}, &upstream), 14);
    EXPECT_FALSE(upstream);

    const auto word = styled(u"aaaaaaaaaaaaaaaaaa"_s);
    const ParagraphLayout wrapped(word, word.fullRange(), 60);
    ASSERT_GT(wrapped.lines().size(), 1U);
    EXPECT_EQ(wrapped.locationAtX(0, 1000, &upstream), wrapped.lines()[1].range.location);
    EXPECT_TRUE(upstream);
}

TEST(ParagraphCaret, IsFoundWhereItStands)
{
    auto random = TestSeed().generator();
    for (int round = 0; round < 40; ++round) {
        // In one direction: where it changes, two places of the text are one to the eye.
        const QString letters = round % 2 != 0 ? u"ab c.d e"_s : u"\u05D0\u05D1 \u05D2\u05D3 \u05D4"_s;
        QString string = letters.first(1);
        for (int i = 0; i < 60; ++i) {
            string += letters[static_cast<qsizetype>(random() % size_t(letters.size()))];
        }
        const auto text = styled(string);
        const ParagraphLayout layout(text, text.fullRange(), 100 + double(random() % 200));
        for (qint64 location = 0; location <= text.length(); location = location + 1 + qint64(random() % 5)) {
            const QRectF caret = layout.caretRect(location);
            const qint64 found = layout.locationAtPoint(caret.center());
            EXPECT_NEAR(layout.caretRect(found).left(), caret.left(), 0.2)
                << string.toStdString() << " at " << location << " found " << found;
        }
    }
}

TEST(ParagraphCaret, GoesAsTheEyeSeesItInMixedDirections)
{
    // Seen: abc, then the Hebrew letters from right to left.
    const auto text = styled(u"abc\u05D0\u05D1\u05D2"_s);
    const ParagraphLayout layout(text, text.fullRange(), 400);
    EXPECT_FALSE(layout.isRightToLeft());
    // What is selected as one stretch of the text lies in two places.
    EXPECT_EQ(layout.rectsForRange({2, 2}).size(), 2U);
    EXPECT_EQ(layout.rectsForRange({0, 3}).size(), 1U);
    EXPECT_EQ(layout.rectsForRange(text.fullRange()).size(), 1U);
    QList<qint64> way = {0};
    while (way.size() < 10 && layout.locationRightOf(way.back()) != way.back()) {
        way.append(layout.locationRightOf(way.back()));
    }
    // The places before and behind the Hebrew are seen at one spot, which is passed once; no step goes back.
    EXPECT_EQ(way, (QList<qint64>{0, 1, 2, 3, 5, 4}));
    EXPECT_EQ(layout.caretRect(3).left(), layout.caretRect(6).left());
    for (qsizetype step = 1; step < way.size(); ++step) {
        EXPECT_GT(layout.caretRect(way[step]).left(), layout.caretRect(way[step - 1]).left());
    }
    const auto hebrew = styled(u"\u05D0\u05D1\u05D2"_s);
    const ParagraphLayout right(hebrew, hebrew.fullRange(), 400);
    EXPECT_TRUE(right.isRightToLeft());
    EXPECT_GT(right.caretRect(0).left(), right.caretRect(3).left());
    EXPECT_EQ(right.locationLeftOf(0), 1);
}

TEST(ParagraphCaret, TellsWhichWayTheWritingGoesWhereItGoesBoth)
{
    const auto directions = [](const QString &string) {
        const auto text = styled(string);
        const ParagraphLayout layout(text, text.fullRange(), 400);
        QString found;
        for (qint64 location = 0; location <= text.length(); ++location) {
            const auto isRightToLeft = layout.isRightToLeftBefore(location);
            found += !isRightToLeft ? u'.' : *isRightToLeft ? u'<' : u'>';
        }
        return found;
    };
    EXPECT_EQ(directions(u"ab \u05D0\u05D1 cd"_s), u">>>><<>>>"_s);
    EXPECT_EQ(directions(u"\u05D0\u05D1 cd"_s), u"<<<<>>"_s);
    EXPECT_EQ(directions(u"\u05D0 12"_s), u"<<<>>"_s) << "numbers are written to the right everywhere";
    EXPECT_EQ(directions(u"abc - d"_s), u"........"_s);
    EXPECT_EQ(directions(u"\u05D0\u05D1 - \u05D2"_s), u"......."_s);
    EXPECT_EQ(directions(u""_s), u"."_s);
}

TEST(ParagraphCaret, IsAsHighAsTheTextWhereOnlyAnAttachmentStands)
{
    auto text = styled(u"\uFFFC"_s, 20);
    text.addAttribute(NSAttachmentAttributeName, AttributeValue(std::make_shared<Dot>()), {0, 1});
    const ParagraphLayout layout(text, text.fullRange(), 200, [](NSTextAttachment &) {
        return AttachmentBox{{30, 5}, 0};
    });
    EXPECT_GT(layout.caretRect(0).height(), 18);
    EXPECT_NEAR(layout.caretRect(1).left() - layout.caretRect(0).left(), 30, 0.5);
    const auto empty = styled(u""_s);
    const ParagraphLayout nothing(empty, {0, 0}, 200);
    EXPECT_GT(nothing.caretRect(0).height(), 10);
}

} // namespace quib::tests
