#include <Graphics/GraphicsAttributes.h>
#include <Graphics/ParagraphLayout.h>

#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>
#include <Text/NSAttributeName.h>
#include <Text/NSMutableAttributedString.h>
#include <Text/NSParagraphStyle.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

class Dot : public NSTextAttachment
{
};

NSFont sans(double size = 16)
{
    const auto font = NSFont::fontWithName(u"DejaVu Sans", size);
    EXPECT_TRUE(font);
    return *font;
}

NSMutableAttributedString styled(const QString &text, const NSFont &font = sans())
{
    NSMutableAttributedString string(text);
    string.addAttribute(NSFontAttributeName, attributeValue(font), string.fullRange());
    return string;
}

void setStyle(NSMutableAttributedString &text, const NSMutableParagraphStyle &style)
{
    text.addAttribute(NSParagraphStyleAttributeName, AttributeValue(style.copy()), text.fullRange());
}

NSImage drawn(const ParagraphLayout &layout, QSizeF size)
{
    GraphicsContext context(size);
    layout.drawIn(context, {0, 0});
    return context.image();
}

} // namespace

TEST(ParagraphLayoutLines, OneLineIsAsWideAndHighAsItsFontSays)
{
    const auto text = styled(u"A single line"_s, sans(13.25));
    const ParagraphLayout layout(text, text.fullRange(), 1000);
    ASSERT_EQ(layout.lines().size(), 1U);
    const auto &line = layout.lines()[0];
    EXPECT_EQ(line.range, text.fullRange());
    EXPECT_NEAR(line.rect.width(), sans(13.25).advanceOfText(u"A single line"), 0.3);
    EXPECT_NEAR(line.rect.height(), sans(13.25).ascender() - sans(13.25).descender(), 0.4);
    EXPECT_NEAR(line.baseline, sans(13.25).ascender(), 0.3);
    EXPECT_EQ(layout.height(), line.rect.height());
}

TEST(ParagraphLayoutLines, HoldTheTextBetweenThemWithoutItsLineEnd)
{
    auto random = TestSeed().generator();
    for (int round = 0; round < 60; ++round) {
        QString string = u"first paragraph\n"_s;
        const qint64 start = string.size();
        for (auto words = random() % 40; words > 0; --words) {
            string += QString(static_cast<qsizetype>(1 + random() % 12), QChar(u'a' + char16_t(random() % 26))) % u' ';
        }
        const qint64 end = string.size();
        const auto text = styled(QString(string % u"\nlast"));
        const double width = 60 + double(random() % 300);
        const ParagraphLayout layout(text, {start, end - start + 1}, width);
        qint64 next = start;
        double bottom = 0;
        for (const auto &line : layout.lines()) {
            EXPECT_EQ(line.range.location, next);
            next += line.range.length;
            EXPECT_LE(line.rect.right(), width + 0.01);
            EXPECT_DOUBLE_EQ(line.rect.top(), bottom);
            EXPECT_GT(line.baseline, line.rect.top());
            EXPECT_LT(line.baseline, line.rect.bottom());
            bottom = line.rect.bottom();
        }
        EXPECT_EQ(next, end);
        EXPECT_DOUBLE_EQ(layout.height(), bottom);
    }
}

TEST(ParagraphLayoutLines, AnEmptyParagraphHasOneLine)
{
    for (const QString &string : {QString(), u"\n"_s, u"\r\n"_s}) {
        const auto text = styled(string);
        const ParagraphLayout layout(text, text.fullRange(), 100);
        ASSERT_EQ(layout.lines().size(), 1U);
        EXPECT_EQ(layout.lines()[0].range.length, 0);
        EXPECT_GT(layout.height(), 5);
    }
}

TEST(ParagraphLayoutStyle, IndentsAndSpacingsHold)
{
    auto text = styled(QString(u"word "_s.repeated(60)));
    NSMutableParagraphStyle style;
    style.firstLineHeadIndent = 30;
    style.headIndent = 10;
    style.tailIndent = -20;
    style.minimumLineHeight = 40;
    style.lineSpacing = 3;
    style.paragraphSpacing = 7;
    style.paragraphSpacingBefore = 5;
    setStyle(text, style);
    const ParagraphLayout layout(text, text.fullRange(), 300);
    ASSERT_GT(layout.lines().size(), 3U);
    EXPECT_NEAR(layout.lines()[0].rect.left(), 30, 0.01);
    EXPECT_EQ(layout.lines()[0].rect.top(), 5);
    for (size_t i = 1; i < layout.lines().size(); ++i) {
        EXPECT_NEAR(layout.lines()[i].rect.left(), 10, 0.01);
        EXPECT_NEAR(layout.lines()[i].rect.top() - layout.lines()[i - 1].rect.top(), 43, 0.01);
        EXPECT_LE(layout.lines()[i].rect.right(), 280.01);
    }
    EXPECT_NEAR(layout.height(), 5 + 43.0 * double(layout.lines().size()) + 7, 0.01);
    // The room of a high line lies above the text.
    EXPECT_NEAR(layout.lines()[0].rect.bottom() - layout.lines()[0].baseline, -sans().descender(), 0.3);
}

TEST(ParagraphLayoutStyle, LinesAreAligned)
{
    for (const auto &[alignment, left] :
         {std::pair(NSTextAlignment::Natural, 0.0), std::pair(NSTextAlignment::Center, 0.5),
          std::pair(NSTextAlignment::Right, 1.0)}) {
        auto text = styled(u"short"_s);
        NSMutableParagraphStyle style;
        style.alignment = alignment;
        setStyle(text, style);
        const ParagraphLayout layout(text, text.fullRange(), 200);
        const QRectF rect = layout.lines()[0].rect;
        EXPECT_NEAR(rect.left(), left * (200 - rect.width()), 0.5);
    }
}

TEST(ParagraphLayoutStyle, NaturalAlignmentAndIndentsFollowTheWriting)
{
    auto hebrew = styled(u"\u05E9\u05DC\u05D5\u05DD"_s);
    NSMutableParagraphStyle style;
    style.firstLineHeadIndent = 30;
    style.tailIndent = -50;
    setStyle(hebrew, style);
    const ParagraphLayout layout(hebrew, hebrew.fullRange(), 200);
    EXPECT_NEAR(layout.lines()[0].rect.right(), 170, 0.5);
    hebrew.replaceCharactersInRange(hebrew.fullRange(), u"\u05E9\u05DC\u05D5\u05DD "_s.repeated(20));
    const ParagraphLayout longer(hebrew, hebrew.fullRange(), 200);
    for (const auto &line : longer.lines()) {
        EXPECT_GE(line.rect.left(), 49.9);
    }
}

TEST(ParagraphLayoutStyle, TabsAreWhereTheStyleSays)
{
    auto text = styled(u"a\tb"_s);
    NSMutableParagraphStyle style;
    style.tabStops = {{.location = 100}};
    setStyle(text, style);
    const ParagraphLayout layout(text, text.fullRange(), 300);
    EXPECT_NEAR(layout.rectsForRange({2, 1})[0].left(), 100, 0.2);
}

TEST(ParagraphLayoutLines, KeepWhatMustNotBeBroken)
{
    constexpr NSAttributeName kTogether{u"Together"};
    const auto broken = [&](const QString &string, const QString &together, double width) {
        auto text = styled(string);
        const NSRange kept{string.indexOf(together), together.size()};
        text.addAttribute(kTogether, 1, kept);
        const ParagraphLayout layout(text, text.fullRange(), width, {}, ParagraphLayout::Part(), &kTogether);
        qint64 next = 0;
        int pieces = 0;
        for (const auto &line : layout.lines()) {
            EXPECT_EQ(line.range.location, next);
            next += line.range.length;
            pieces += NSIntersectionRange(line.range, kept).length > 0 ? 1 : 0;
        }
        EXPECT_EQ(next, string.size());
        return pieces;
    };
    // Wherever the line ends, as long as one line can hold it.
    const QString kept = u"two words-and/more"_s;
    for (double width = sans().advanceOfText(kept) + 20; width < 500; width += 7) {
        EXPECT_EQ(broken(u"Some text and "_s + kept + u" and other text behind it."_s, kept, width), 1) << width;
        EXPECT_EQ(broken(u"Some text and ("_s + kept + u") and other text behind it."_s, kept, width), 1) << width;
    }
    // Too long for any line, or without a blank before it: broken as ever.
    EXPECT_GT(broken(u"so "_s + kept.repeated(9), kept.repeated(9), 100), 3);
    EXPECT_GT(broken(kept.repeated(9), kept.repeated(9), 100), 3);
}

TEST(ParagraphLayoutStyle, TabStopsCountFromTheEdgeOfTheColumn)
{
    for (const double indent : {0.0, 30.0, 55.0}) {
        for (const QString &string : {u"a\tb\tc"_s, u"\t\uFFFC b"_s}) {
            auto text = styled(string);
            NSMutableParagraphStyle style;
            style.firstLineHeadIndent = indent;
            style.tabStops = {{.location = 50}, {.location = 100}};
            style.defaultTabInterval = 40;
            setStyle(text, style);
            text.addAttribute(NSAttachmentAttributeName, AttributeValue(std::make_shared<Dot>()),
                              {text.string().indexOf(u'\uFFFC'), 1});
            const ParagraphLayout layout(text, text.fullRange(), 300, [](NSTextAttachment &) {
                return AttachmentBox{.size = {7, 7}};
            });
            // What follows the tab stands at the next stop, and is drawn where it is said to stand.
            const qint64 behind = string.indexOf(u'\t') + 1;
            const double reached = indent + sans().advanceOfText(QStringView(string).first(behind - 1));
            const double stop = reached < 50 ? 50 : 100;
            EXPECT_NEAR(layout.rectsForRange({behind, 1})[0].left(), stop, 0.2) << indent;
            const NSImage image = drawn(layout, {300, 40});
            if (!layout.attachments().empty()) {
                EXPECT_NEAR(layout.attachments()[0].rect.left(), stop, 0.2);
                EXPECT_GT(image.opaqueBounds().left(), stop + 7) << "the letter stands behind the attachment";
            }
        }
    }
}

TEST(ParagraphLayoutDrawing, BaselineOffsetsLiftAndLowerTextWithoutTouchingItsLine)
{
    const auto layoutWith = [](double offset) {
        auto text = styled(u"xxHxx"_s);
        NSMutableParagraphStyle style;
        style.minimumLineHeight = 40;
        style.maximumLineHeight = 40;
        setStyle(text, style);
        text.addAttribute(NSForegroundColorAttributeName, attributeValue(NSColor::clearColor()), {0, 2});
        text.addAttribute(NSForegroundColorAttributeName, attributeValue(NSColor::clearColor()), {3, 2});
        if (offset != 0) {
            text.addAttribute(NSBaselineOffsetAttributeName, offset, {2, 1});
        }
        return std::make_unique<ParagraphLayout>(text, text.fullRange(), 200);
    };
    const auto still = layoutWith(0);
    const QRect letter = drawn(*still, {200, 60}).opaqueBounds();
    for (const double offset : {5.0, 2.0, -2.0, -6.0}) {
        const auto layout = layoutWith(offset);
        EXPECT_NEAR(drawn(*layout, {200, 60}).opaqueBounds().bottom(), letter.bottom() - offset, 1.01) << offset;
        EXPECT_NEAR(layout->lines()[0].baseline, still->lines()[0].baseline, 0.01) << offset;
        EXPECT_EQ(layout->height(), still->height());
    }
}

TEST(ParagraphLayoutAttachments, TakeTheirRoom)
{
    auto text = styled(u"ab\uFFFC\uFFFCcd"_s);
    const auto first = std::make_shared<Dot>();
    const auto second = std::make_shared<Dot>();
    text.addAttribute(NSAttachmentAttributeName, AttributeValue(first), {2, 1});
    text.addAttribute(NSAttachmentAttributeName, AttributeValue(second), {3, 1});
    const ParagraphLayout layout(text, text.fullRange(), 500, [&first](NSTextAttachment &attachment) {
        return &attachment == first.get() ? AttachmentBox{.size = {50, 80}, .baselineOffset = -10}
                                          : AttachmentBox{.size = {0, 5}};
    });
    ASSERT_EQ(layout.attachments().size(), 2U);
    const auto &placed = layout.attachments()[0];
    EXPECT_EQ(placed.location, 2);
    EXPECT_EQ(placed.attachment, first);
    EXPECT_NEAR(placed.rect.left(), sans().advanceOfText(u"ab"), 0.3);
    EXPECT_NEAR(placed.rect.top(), 0, 0.01);
    EXPECT_EQ(placed.rect.size(), QSizeF(50, 80));
    EXPECT_NEAR(layout.lines()[0].baseline, 70, 0.01);
    EXPECT_NEAR(layout.lines()[0].rect.height(), 80, 0.01);
    EXPECT_NEAR(layout.rectsForRange({4, 1})[0].left(), placed.rect.right(), 0.3);
    EXPECT_NEAR(layout.attachments()[1].rect.left(), placed.rect.right(), 0.3);
}

TEST(ParagraphLayoutAttachments, ThatDoNotFitGoToTheNextLineOrStandAlone)
{
    auto text = styled(u"some words \uFFFC more"_s);
    text.addAttribute(NSAttachmentAttributeName, AttributeValue(std::make_shared<Dot>()), {11, 1});
    const ParagraphLayout layout(text, text.fullRange(), 120, [](NSTextAttachment &) {
        return AttachmentBox{.size = {400, 20}};
    });
    ASSERT_EQ(layout.attachments().size(), 1U);
    EXPECT_NEAR(layout.attachments()[0].rect.left(), 0, 0.01);
    EXPECT_GT(layout.lines().size(), 1U);
}

TEST(ParagraphLayoutRects, CoverARangeLineByLine)
{
    const auto text = styled(QString(u"word "_s.repeated(40)));
    const ParagraphLayout layout(text, text.fullRange(), 200);
    const size_t count = layout.lines().size();
    ASSERT_GT(count, 2U);
    const auto all = layout.rectsForRange(text.fullRange());
    ASSERT_EQ(all.size(), count);
    const auto one = layout.rectsForRange({5, 4});
    ASSERT_EQ(one.size(), 1U);
    EXPECT_NEAR(one[0].width(), sans().advanceOfText(u"word"), 0.3);
    EXPECT_TRUE(layout.rectsForRange({5, 0}).empty());
    EXPECT_TRUE(layout.rectsForRange({10'000, 5}).empty());
}

TEST(ParagraphLayoutDrawing, PaintsTextInItsColorsWithWhatIsUnderAndOverIt)
{
    auto text = styled(QString(12, QChar(0x2588)), *NSFont::fontWithName(u"DejaVu Sans Mono", 20));
    const NSColor colors[] = {NSColor::colorWithRed(1, 0, 0), NSColor::colorWithRed(0, 0, 1)};
    text.addAttribute(NSForegroundColorAttributeName, attributeValue(colors[0]), {0, 6});
    text.addAttribute(NSForegroundColorAttributeName, attributeValue(colors[1]), {6, 6});
    const ParagraphLayout layout(text, text.fullRange(), 300);
    const NSImage image = drawn(layout, {300, 40});
    const int y = static_cast<int>(layout.lines()[0].baseline) - 5;
    EXPECT_EQ(image.colorAt(30, y), colors[0]);
    EXPECT_EQ(image.colorAt(110, y), colors[1]);
    EXPECT_NEAR(image.opaqueBounds().right(), layout.lines()[0].rect.right(), 2);

    auto marked = styled(u"          "_s, sans(20));
    const NSColor yellow = NSColor::colorWithRed(1, 1, 0);
    marked.addAttribute(NSBackgroundColorAttributeName, attributeValue(yellow), {2, 4});
    marked.addAttribute(NSStrikethroughStyleAttributeName, 1, {2, 8});
    marked.addAttribute(NSStrikethroughColorAttributeName, attributeValue(colors[1]), {2, 8});
    const ParagraphLayout markedLayout(marked, marked.fullRange(), 300);
    const NSImage markedImage = drawn(markedLayout, {300, 40});
    const QRectF background = markedLayout.rectsForRange({2, 4})[0];
    EXPECT_EQ(markedImage.colorAt(static_cast<int>(background.center().x()), 2), yellow);
    const int strike = static_cast<int>(markedLayout.lines()[0].baseline - sans(20).xHeight() / 2);
    EXPECT_GT(markedImage.colorAt(static_cast<int>(background.center().x()), strike).blueComponent(), 0.3);
    EXPECT_EQ(markedImage.colorAt(1, strike).alphaComponent(), 0);
}

TEST(ParagraphLayoutDrawing, LooksTheSameAtTheOrigin)
{
    const auto text = styled(u"Moved"_s);
    const ParagraphLayout layout(text, text.fullRange(), 100);
    GraphicsContext moved({120, 60});
    layout.drawIn(moved, {20, 30});
    EXPECT_EQ(moved.image().opaqueBounds(), drawn(layout, {120, 60}).opaqueBounds().translated(20, 30));
}

TEST(ParagraphLayout, AnyTextIsLaidOut)
{
    auto random = TestSeed().generator();
    for (int round = 0; round < 30; ++round) {
        QString string;
        for (int i = 0; i < 120; ++i) {
            constexpr char16_t kOdd[] = {0,      0xD800, 0xDC00, 0xFFFC, 0xFEFF, 0x0301,
                                         0x200F, 0x2028, 0x2029, u'\t',  u' '};
            string += random() % 2 != 0 ? QChar(kOdd[random() % std::size(kOdd)]) : QChar(char16_t(random() % 0x10000));
        }
        const auto text = styled(string);
        const ParagraphLayout layout(text, text.fullRange(), double(random() % 200) - 20);
        EXPECT_FALSE(layout.lines().empty());
        EXPECT_TRUE(std::isfinite(layout.height()) && layout.height() > 0);
        (void)drawn(layout, {100, 100});
    }
}

} // namespace quib::tests
