// Headers, lists, todos, quotes and separators: what a line looks like, as runs and attachments.

#include "StyledBlocks.h"

#include <Markup/Attachments/QBCheckBoxTextAttachment.h>
#include <Markup/Attachments/QBHeaderTextAttachment.h>
#include <Markup/Stylers/QBNoteCheckBoxMarkdownStyler.h>
#include <Markup/Stylers/QBNoteCodeInlineTextStyler.h>
#include <Markup/Stylers/QBNoteCodeTextStyler.h>
#include <Markup/Stylers/QBNoteHeaderTextStyler.h>
#include <Markup/Stylers/QBNoteLineSeparatorMarkdownStyler.h>
#include <Markup/Stylers/QBNoteNormalTextStyler.h>
#include <Markup/Stylers/QBNoteOrderedListTextStyler.h>
#include <Markup/Stylers/QBNoteQuoteTextStyler.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Markup/Stylers/QBNoteUnorderedListMarkdownStyler.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using quib::tests::StyledBlocks;

namespace {

struct Line
{
    QString text;
    QString shown;
    QString marks;
};

const QList<Line> &nativeLines()
{
    static const QList<Line> lines{
        // Headers. The guards begin behind the badge and end before the line feed.
        {u"# Title\nx"_s, u"«#» Title\nx"_s,
         u"header 0+8, headerMarker 0+2, noStyling 1+6, noAttachment 1+6, noLineBreak 0+2"_s},
        {u"###### x"_s, u"«######» x"_s,
         u"header 0+3, headerMarker 0+2, noStyling 1+2, noAttachment 1+2, noLineBreak 0+2"_s},
        {u"# "_s, u"«#» "_s, u"header 0+2, headerMarker 0+2, noStyling 1+1, noAttachment 1+1, noLineBreak 0+2"_s},
        {u"# \n"_s, u"«#» \n"_s, u"header 0+3, headerMarker 0+2, noStyling 1+1, noAttachment 1+1, noLineBreak 0+2"_s},
        {u"# a\r\nb"_s, u"«#» a\r\nb"_s,
         u"header 0+5, headerMarker 0+2, noStyling 1+3, noAttachment 1+3, noLineBreak 0+2"_s},
        {u"# - x"_s, u"«#» - x"_s, u"header 0+5, headerMarker 0+2, noStyling 1+4, noAttachment 1+4, noLineBreak 0+2"_s},
        {u"# [file:a/b]"_s, u"«#» [file:a/b]"_s,
         u"header 0+12, headerMarker 0+2, noStyling 1+11, noAttachment 1+11, noLineBreak 0+2"_s},
        {u"#Title"_s, u"#Title"_s, {}},
        {u"####### x"_s, u"####### x"_s, {}},
        {u"  # x"_s, u"  # x"_s, {}},
        {u"x # y"_s, u"x # y"_s, {}},

        // Quotes.
        {u"> a\nb"_s, u"> a\nb"_s, u"quote 0+4, quoteMarker 0+2"_s},
        {u"a\n> "_s, u"a\n> "_s, u"quote 2+2, quoteMarker 2+2"_s},
        {u"> > a"_s, u"> > a"_s, u"quote 0+5, quoteMarker 0+2"_s},
        {u" > a"_s, u" > a"_s, {}},
        {u">a"_s, u">a"_s, {}},

        // Items.
        {u"* a\n\t• b"_s, u"«*» a\n\t«•» b"_s, u"list 0+8, listMarker 0+2 5+2"_s},
        {u"* "_s, u"«*» "_s, u"list 0+2, listMarker 0+2"_s},
        {u"*a"_s, u"*a"_s, {}},
        {u"a * b"_s, u"a * b"_s, {}},
        {u"* * a"_s, u"«*» * a"_s, u"list 0+5, listMarker 0+2"_s},

        // Todos. A line of a marker alone is too short to be struck through.
        {u"- a\n+ bc\nd"_s, u"«-» a\n«+» bc\nd"_s, u"box 0+9, boxMarker 0+2 4+2, checked 4+5, strike 6+3"_s},
        {u" \t- a"_s, u" \t«-» a"_s, u"box 0+5, boxMarker 2+2"_s},
        {u"\t+ a"_s, u"\t«+» a"_s, u"box 0+4, boxMarker 1+2, checked 0+4, strike 3+1"_s},
        {u"+ "_s, u"«+» "_s, u"box 0+2, boxMarker 0+2, checked 0+2"_s},
        {u"- [ ] a"_s, u"«-» [ ] a"_s, u"box 0+7, boxMarker 0+2"_s},
        {u"-a"_s, u"-a"_s, {}},

        // Numbers. They stay text.
        {u"1. a\n12. b"_s, u"1. a\n12. b"_s, u"number 0+10, numberMarker 0+3 5+4, kern 1+1 7+1"_s},
        {u"  7. "_s, u"  7. "_s, u"number 0+5, numberMarker 2+3, kern 3+1"_s},
        {u"1.a"_s, u"1.a"_s, {}},
        {u"1) a"_s, u"1) a"_s, {}},

        // Separators.
        {u"---"_s, u"«---»"_s, {}},
        {u"a\n---\nb"_s, u"a\n«---»\nb"_s, {}},
        {u"--- "_s, u"--- "_s, {}},
        {u"----"_s, u"----"_s, {}},
        {u" ---"_s, u" ---"_s, {}},
        {u"***"_s, u"***"_s, {}},
        {u"___"_s, u"___"_s, {}},
    };
    return lines;
}

const QList<Line> &markdownLines()
{
    static const QList<Line> lines{
        {u"- [ ] a\n- [x] b"_s, u"«- [ ]» a\n«- [x]» b"_s, u"box 0+7, boxMarker 0+2 4+2, checked 4+3, strike 6+1"_s},
        {u"\t- [x] "_s, u"\t«- [x]» "_s, u"box 0+3, boxMarker 1+2, checked 0+3"_s},
        {u"- [X] a"_s, u"«-» [X] a"_s, u"list 0+7, listMarker 0+2"_s},
        {u"- [ ]a"_s, u"«-» [ ]a"_s, u"list 0+6, listMarker 0+2"_s},
        {u"- a\n+ b\n* c\n• d"_s, u"«-» a\n«+» b\n«*» c\n«•» d"_s, u"list 0+15, listMarker 0+2 4+2 8+2 12+2"_s},
        {u"* [ ] a"_s, u"«*» [ ] a"_s, u"list 0+7, listMarker 0+2"_s},
        {u"---\n----\n___\n_____\n***\n"_s, u"«---»\n«----»\n«___»\n«_____»\n«***»\n"_s, {}},
        {u"--"_s, u"--"_s, {}},
        {u"-*-"_s, u"-*-"_s, {}},
        {u"# a"_s, u"«#» a"_s, u"header 0+3, headerMarker 0+2, noStyling 1+2, noAttachment 1+2, noLineBreak 0+2"_s},
        {u"> a"_s, u"> a"_s, u"quote 0+3, quoteMarker 0+2"_s},
    };
    return lines;
}

void checkLines(const QList<Line> &lines, int syntax, StyledBlocks::Theme theme)
{
    for (const Line &line : lines) {
        SCOPED_TRACE(qPrintable(line.text));
        StyledBlocks blocks(syntax, theme);
        blocks.load(line.text);
        EXPECT_EQ(blocks.shown(), line.shown);
        EXPECT_EQ(blocks.expanded(), line.text);
        QString marks = line.marks;
        if (theme == StyledBlocks::Theme::None) {
            marks = marks.section(u", kern"_s, 0, 0); // comes from the theme, and stands last
        }
        EXPECT_EQ(blocks.marks(), marks);
        const QString loaded = blocks.description();
        blocks.restyle();
        EXPECT_EQ(blocks.description(), loaded) << "when styled again";
    }
}

} // namespace

TEST(BlockStylers, MarkTheLinesOfTheNativeSyntax)
{
    checkLines(nativeLines(), 0, StyledBlocks::Theme::Plain);
}

TEST(BlockStylers, MarkTheLinesOfTheMarkdownSyntax)
{
    checkLines(markdownLines(), 1, StyledBlocks::Theme::Plain);
}

TEST(BlockStylers, MarkLinesWithoutATheme)
{
    checkLines(nativeLines(), 0, StyledBlocks::Theme::None);
    checkLines(markdownLines(), 1, StyledBlocks::Theme::None);
}

TEST(BlockStylers, PaintMarkersAndDoneTodos)
{
    const struct
    {
        QString text;
        QString colours;
        QString fonts;
    } rows[] = {
        {u"# a\nb"_s, u"Title Text Color 0+4"_s, u"h1 0+1, h1 2+2"_s},
        {u"## a"_s, u"Title Text Color 0+4"_s, u"h2 0+1, h2 2+2"_s},
        {u"### a"_s, u"Title Text Color 0+4"_s, u"h3 0+1, h3 2+2"_s},
        {u"#### a"_s, u"Title Text Color 0+4"_s, u"h4 0+1, h4 2+2"_s},
        {u"###### a"_s, u"Title Text Color 0+4"_s, u"h4 0+1, h4 2+2"_s},
        {u"> a"_s, u"clear 0+2"_s, {}},
        {u"12. a"_s, u"Accent Text Color 0+2, Light Text Color@0.6 2+1"_s, {}},
        {u"* a"_s, {}, {}},
        {u"- a"_s, {}, {}},
        {u"+ a\nb"_s, u"Light Text Color 2+2"_s, {}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(qPrintable(row.text));
        StyledBlocks blocks;
        blocks.load(row.text);
        // The hashes are one unit in the buffer: positions in the rows are those of "# a".
        EXPECT_EQ(blocks.colours(),
                  QString(row.colours).replace(u"0+4"_s, u"0+%1"_s.arg(row.text.contains(u'\n') ? 4 : 3)));
        EXPECT_EQ(blocks.fonts(),
                  QString(row.fonts).replace(u"2+2"_s, u"2+%1"_s.arg(row.text.contains(u'\n') ? 2 : 1)));
    }
}

TEST(BlockStylers, LeaveOtherColoursOfDoneTodosAlone)
{
    StyledBlocks blocks;
    blocks.load(u"+ abcd"_s);
    const auto accent = blocks.themeManager()->colorAttributeForKey(u"Accent Text Color"_s);
    blocks.text().addAttributes(blocks.themeManager()->defaultTextAttributes(), blocks.text().fullRange());
    blocks.text().addAttribute(NSForegroundColorAttributeName, accent, {3, 2});
    NSRange range = blocks.text().fullRange();
    blocks.styler<QBNoteCheckBoxStyler>().styleTextInAttributedString(blocks.text(), range, nullptr);
    EXPECT_EQ(blocks.colours(), u"Light Text Color 2+1, Accent Text Color 3+2, Light Text Color 5+1"_s);
}

TEST(BlockStylers, GiveHeadersTheSpacingOfTheirLevelAndHangTheBadge)
{
    StyledBlocks blocks;
    blocks.load(u"# a\n## b\n#### c"_s);
    const auto &theme = *blocks.themeManager();
    const quib::AttributeSet sets[] = {theme.h1TextAttributes(), theme.h2TextAttributes(),
                                       theme.h4OrMoreTextAttributes()};
    for (int line = 0; line < 3; ++line) {
        const qint64 place = line * 4;
        const auto plain = sets[line].value(NSParagraphStyleAttributeName);
        const auto badge = blocks.text().attribute(NSAttachmentAttributeName, place).sharedAs<QBNotesTextAttachment>();
        ASSERT_TRUE(badge);
        const NSParagraphStyle &style = blocks.paragraphStyleAt(place);
        EXPECT_EQ(style.paragraphSpacing(), plain.as<NSParagraphStyle>()->paragraphSpacing());
        EXPECT_EQ(style.headIndent(), theme.paragraphHeadIndent());
        EXPECT_DOUBLE_EQ(style.firstLineHeadIndent(),
                         std::max(theme.paragraphHeadIndent() - badge->cachedAttachmentSize().width(), 0.0));
    }
}

TEST(BlockStylers, LeaveCodeInsideHeadersToItsOwnStyler)
{
    StyledBlocks blocks({std::make_shared<QBNoteNormalTextStyler>(), std::make_shared<QBNoteCodeInlineTextStyler>(),
                         std::make_shared<QBNoteHeaderTextStyler>()},
                        quib::tests::blockTheme());
    blocks.load(u"# `a` b"_s);
    EXPECT_EQ(blocks.shown(), u"«#» `a` b"_s);
    EXPECT_EQ(blocks.runs(QBNoteCodeInlineTextStylerBackgroundAttributeName), u"2+3"_s);
    EXPECT_EQ(blocks.runs(QBHeaderTextStylerAttributeName), u"0+7"_s);
    EXPECT_EQ(blocks.fonts(), u"h1 0+1, h1 2+5"_s) << "the header's font is set later";
}

TEST(BlockStylers, HangMarkersToTheLeftOfTheColumn)
{
    StyledBlocks blocks;
    blocks.load(u"* a\n- b\n> c\n1. d\n  * e\n\t* f\n \t* g"_s);
    const auto &theme = *blocks.themeManager();
    const NSFont font = theme.paragraphFont();
    const double blank = font.advanceOfText(u" ");
    const double column = theme.paragraphHeadIndent();
    const auto widthAt = [&](qint64 place) {
        return blocks.text()
            .attribute(NSAttachmentAttributeName, place)
            .sharedAs<QBNotesTextAttachment>()
            ->cachedAttachmentSize()
            .width();
    };
    const struct
    {
        qint64 place;
        double marker;
        double indentation;
    } rows[] = {
        {0, widthAt(0) + blank, 0},
        {4, widthAt(4) + blank, 0},
        {8, font.advanceOfText(u"> "), 0},
        {12, font.advanceOfText(u"1.") + blank, 0}, // the point's kern is beyond
        {19, widthAt(19) + blank, 2 * blank},
        {24, widthAt(24) + blank, theme.paragraphTabLenght()},
        {30, widthAt(30) + blank, theme.paragraphTabLenght()}, // a tab goes on to the next stop
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.place);
        const NSParagraphStyle &style = blocks.paragraphStyleAt(row.place);
        EXPECT_NEAR(style.firstLineHeadIndent(), column - row.marker, 0.01);
        EXPECT_NEAR(style.headIndent(), column + row.indentation, 0.01);
        ASSERT_FALSE(style.tabStops().isEmpty());
        EXPECT_NEAR(style.tabStops().constFirst().location, theme.paragraphTabLenght() - row.marker, 0.01);
        EXPECT_EQ(style.tailIndent(), theme.paragraphTailIndent());
        EXPECT_EQ(style.paragraphSpacing(), theme.paragraphSpacing());
    }
}

TEST(BlockStylers, NeverBeginALineOutsideOfItsColumn)
{
    StyledBlocks blocks;
    blocks.load(u"12345678901234567890. a"_s);
    EXPECT_EQ(blocks.paragraphStyleAt(0).firstLineHeadIndent(), 0);
}

TEST(BlockStylers, KeepOneLayoutForEachIndentationUntilTheyForget)
{
    // The first number that is measured decides, so that "9." and "10." begin at the same place.
    StyledBlocks blocks;
    blocks.load(u"9. a\n10. b\n\t10. c"_s);
    const auto &theme = *blocks.themeManager();
    const double nine = blocks.paragraphStyleAt(0).firstLineHeadIndent();
    EXPECT_EQ(blocks.paragraphStyleAt(5).firstLineHeadIndent(), nine);
    EXPECT_LT(blocks.paragraphStyleAt(11).firstLineHeadIndent(), nine);

    blocks.restyle({5, 0});
    EXPECT_EQ(blocks.paragraphStyleAt(5).firstLineHeadIndent(), nine);
    blocks.styler<QBNoteOrderedListTextStyler>().cleanStylerCache();
    blocks.restyle({5, 0});
    EXPECT_LT(blocks.paragraphStyleAt(5).firstLineHeadIndent(), nine);
    EXPECT_GE(blocks.paragraphStyleAt(5).firstLineHeadIndent(), 0);
    EXPECT_EQ(theme.paragraphHeadIndent(), 20);
}

TEST(BlockStylers, MeasureAnewWhenTheThemeChanges)
{
    for (const QString &text : {u"* a"_s, u"+ a"_s, u"> a"_s, u"1. a"_s, u"# a"_s, u"```\na\n```"_s}) {
        SCOPED_TRACE(qPrintable(text));
        StyledBlocks blocks;
        blocks.load(text);
        const double before = blocks.paragraphStyleAt(0).headIndent();
        blocks.themeManager()->setBaseFontSize(40);
        blocks.restyle();
        EXPECT_GT(blocks.paragraphStyleAt(0).headIndent(), before * 2);
        StyledBlocks fresh;
        fresh.themeManager()->setBaseFontSize(40);
        fresh.load(text);
        EXPECT_EQ(blocks.description(), fresh.description());
    }
}

TEST(BlockStylers, TakeAttachmentsOfTheThemeThatIsSetLater)
{
    StyledBlocks blocks(0, StyledBlocks::Theme::None);
    blocks.load(u"* a"_s);
    const auto theme = quib::tests::blockTheme();
    blocks.styler<QBNoteUnorderedListStyler>().setThemeManager(theme);
    const auto text =
        blocks.styler<QBNoteUnorderedListStyler>().attributedStringWithTextAttachmentForRepresentedText(u"*"_s);
    EXPECT_EQ(text->attribute(NSAttachmentAttributeName, 0).sharedAs<QBNotesTextAttachment>()->themeManager(), theme);
}

TEST(BlockStylers, FollowEditsOfALine)
{
    const struct
    {
        QString label;
        int syntax;
        QString text;
        NSRange range;
        QString string;
        QString shown;
        QString marks;
    } rows[] = {
        {u"the blank behind a badge goes"_s, 0, u"# a"_s, {1, 1}, {}, u"#a"_s, {}},
        {u"the badge goes"_s, 0, u"# a"_s, {0, 1}, {}, u" a"_s, {}},
        {u"a letter before a badge"_s, 0, u"# a"_s, {0, 0}, u"x"_s, u"x# a"_s, {}},
        {u"a hash before the blank"_s,
         0,
         u"#a"_s,
         {1, 0},
         u" "_s,
         u"«#» a"_s,
         u"header 0+3, headerMarker 0+2, noStyling 1+2, noAttachment 1+2, noLineBreak 0+2"_s},
        {u"a header's line is cut"_s,
         0,
         u"# ab"_s,
         {3, 0},
         u"\n"_s,
         u"«#» a\nb"_s,
         u"header 0+4, headerMarker 0+2, noStyling 1+2, noAttachment 1+2, noLineBreak 0+2"_s},
        {u"a line joins a header"_s,
         0,
         u"# a\n- b"_s,
         {3, 1},
         {},
         u"«#» a- b"_s,
         u"header 0+6, headerMarker 0+2, noStyling 1+5, noAttachment 1+5, noLineBreak 0+2"_s},
        {u"indentation of a bullet"_s, 0, u"* a"_s, {0, 0}, u"\t"_s, u"\t«*» a"_s, u"list 0+4, listMarker 1+2"_s},
        {u"a bullet's text becomes a todo's in Markdown"_s,
         1,
         u"- [ ]a"_s,
         {5, 0},
         u" "_s,
         u"«- [ ]» a"_s,
         u"box 0+3, boxMarker 0+2"_s},
        {u"a todo's blank goes in Markdown"_s,
         1,
         u"- [x] a"_s,
         {1, 1},
         {},
         u"«-» [x]a"_s,
         u"list 0+6, listMarker 0+2"_s},
        {u"text behind a separator"_s, 0, u"---"_s, {1, 0}, u"x"_s, u"---x"_s, {}},
        {u"the last dash"_s, 0, u"--"_s, {2, 0}, u"-"_s, u"«---»"_s, {}},
        {u"a quote's blank goes"_s, 0, u"> a"_s, {1, 1}, {}, u">a"_s, {}},
        {u"a number's point goes"_s, 0, u"1. a"_s, {1, 1}, {}, u"1 a"_s, {}},
        {u"a done todo loses its text"_s, 0, u"+ a"_s, {2, 1}, {}, u"«+» "_s, u"box 0+2, boxMarker 0+2, checked 0+2"_s},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(qPrintable(row.label));
        StyledBlocks blocks(row.syntax);
        blocks.load(row.text);
        blocks.edit(row.range, row.string);
        EXPECT_EQ(blocks.shown(), row.shown);
        EXPECT_EQ(blocks.marks(), row.marks);
    }
}

TEST(BlockStylers, StrikeWhatATickedBoxStandsBefore)
{
    StyledBlocks blocks;
    blocks.load(u"- abc"_s);
    const auto box = blocks.text().attribute(NSAttachmentAttributeName, 0).sharedAs<QBCheckBoxTextAttachment>();
    ASSERT_TRUE(box);
    box->toggleCheck();
    blocks.restyle();
    EXPECT_EQ(blocks.expanded(), u"+ abc"_s);
    EXPECT_EQ(blocks.marks(), u"box 0+5, boxMarker 0+2, checked 0+5, strike 2+3"_s);
    box->toggleCheck();
    blocks.restyle();
    EXPECT_EQ(blocks.expanded(), u"- abc"_s);
    EXPECT_EQ(blocks.marks(), u"box 0+5, boxMarker 0+2"_s);
    EXPECT_EQ(blocks.colours(), QString());
}

TEST(BlockStylers, GiveEachPlaceAnAttachmentOfItsOwn)
{
    StyledBlocks blocks;
    blocks.load(u"- a\n- b"_s);
    const auto first = blocks.text().attribute(NSAttachmentAttributeName, 0).sharedAs<QBCheckBoxTextAttachment>();
    const auto second = blocks.text().attribute(NSAttachmentAttributeName, 4).sharedAs<QBCheckBoxTextAttachment>();
    ASSERT_TRUE(first && second);
    first->check();
    EXPECT_EQ(blocks.expanded(), u"+ a\n- b"_s);
    blocks.load(u"- c"_s);
    EXPECT_EQ(blocks.expanded(), u"- c"_s) << "what was ticked is no template";
}

TEST(BlockStylers, KeepTheAttachmentsThatStillStandRight)
{
    StyledBlocks blocks;
    blocks.load(u"# a\n- b\n* c\n---"_s);
    QList<std::shared_ptr<quib::AttributeObject>> before;
    for (const qint64 place : {0, 4, 8, 12}) {
        before.append(blocks.text().attribute(NSAttachmentAttributeName, place).objectValue());
    }
    blocks.restyle();
    for (qsizetype i = 0; i < before.size(); ++i) {
        EXPECT_EQ(blocks.text().attribute(NSAttachmentAttributeName, i * 4).objectValue(), before.at(i));
    }
}

TEST(BlockStylers, TakeLinesWithinAParagraphForWhatTheyAre)
{
    // A vertical tab begins a line for patterns, and no paragraph for the layout.
    StyledBlocks blocks;
    blocks.load(u"+ a\v- b"_s);
    EXPECT_EQ(blocks.shown(), u"«+» a\v«-» b"_s);
    EXPECT_EQ(blocks.marks(), u"box 0+7, boxMarker 0+2 4+2, checked 0+7, strike 2+5"_s);
    // A header guards the whole paragraph but for its first unit.
    blocks.load(u"+ a\v- b\v# c"_s);
    EXPECT_EQ(blocks.shown(), u"«+» a\v- b\v«#» c"_s);
    EXPECT_EQ(blocks.marks(), u"header 0+11, headerMarker 8+2, box 0+11, boxMarker 0+2, checked 0+11, strike 2+9, "
                              "noStyling 1+10, noAttachment 1+10, noLineBreak 8+2"_s);
    EXPECT_EQ(blocks.fonts(), u"h1 0+9, h1 10+1"_s);
    blocks.load(u"# a\v## b"_s);
    EXPECT_EQ(blocks.fonts(), u"h2 0+5, h2 6+1"_s);
    EXPECT_EQ(blocks.runs(QBHeaderTextStylerMarkerAttributeName), u"0+2 4+2"_s);
    blocks.load(u"> a\v> b"_s);
    EXPECT_EQ(blocks.marks(), u"quote 0+7, quoteMarker 0+2 4+2"_s);
}

TEST(BlockStylers, StyleOneParagraphOfVeryManyMarkersInOnePass)
{
    constexpr int kMarkers = 50'000;
    for (const QString &piece : {u"> \v"_s, u"1. \v"_s, u"+ \v"_s, u"* \v"_s, u"# \v"_s}) {
        SCOPED_TRACE(qPrintable(piece));
        StyledBlocks blocks;
        const QString text = piece.repeated(kMarkers);
        blocks.load(text);
        blocks.restyle();
        EXPECT_EQ(blocks.expanded(), text);
    }
}

TEST(BlockStylers, ResetTheGroundFirst)
{
    StyledBlocks blocks(QList<std::shared_ptr<QBNoteTextStyler>>{std::make_shared<QBNoteNormalTextStyler>()},
                        quib::tests::blockTheme());
    blocks.load(u"abcd"_s);
    const QString plain = blocks.description();
    for (const auto &name : {NSStrikethroughStyleAttributeName, NSLinkAttributeName, NSUnderlineStyleAttributeName,
                             NSBaselineOffsetAttributeName, NSKernAttributeName, NSBackgroundColorAttributeName,
                             QBNoteSkipStylingAttributeName, QBNoteSkipAttachmentReplacementAttributeName,
                             QBNoteSkipLineBreakByWordAttributeName, QBNoteSkipHyphenationAttributeName,
                             QBNotePreventDeletionInRangeAttributeName, QBNotePreventInsertionInRangeAttributeName,
                             QBNoteSkipSpellCheckerAttributeName, QBNoteFullSelectionRangeAttributeName}) {
        blocks.text().addAttribute(name, 1, {1, 2});
    }
    blocks.text().addAttribute(NSForegroundColorAttributeName,
                               blocks.themeManager()->colorAttributeForKey(u"Title Text Color"_s), {0, 3});
    blocks.text().addAttribute(NSFontAttributeName, blocks.themeManager()->monospaceFontAttribute(), {0, 3});
    ASSERT_NE(blocks.description(), plain);
    blocks.text().addAttribute(QBNoteBoundaryMarkerAttributeName, 1, {1, 1});
    blocks.restyle();
    EXPECT_EQ(blocks.description(), plain);
    EXPECT_EQ(blocks.runs(QBNoteBoundaryMarkerAttributeName), u"1+1"_s) << "what belongs to others stays";
}

TEST(BlockStylers, TellTheirMarkersAndNames)
{
    EXPECT_EQ(QBNoteHeaderTextStyler::stylerMarker(), u"# "_s);
    EXPECT_EQ(QBNoteHeaderTextStyler::stylerMarkerForHeaderLevel(3), u"### "_s);
    EXPECT_EQ(QBNoteQuoteTextStyler::stylerMarker(), u"> "_s);
    EXPECT_EQ(QBNoteOrderedListTextStyler::stylerMarker(), u"1. "_s);
    EXPECT_EQ(QBNoteUnorderedListStyler::stylerMarker(), u"* "_s);
    EXPECT_EQ(QBNoteUnorderedListMarkdownStyler::stylerMarker(), u"* "_s);
    EXPECT_EQ(QBNoteLineSeparatorStyler::stylerMarker(), u"---"_s);
    EXPECT_EQ(QBNoteLineSeparatorMarkdownStyler::stylerMarker(), u"---"_s);
    EXPECT_EQ(QBNoteLineSeparatorStyler::stylerEnclosingStrings(), QStringList{u"\n"_s});
    EXPECT_EQ(QBNoteCheckBoxStyler::stylerMarker(), u"- "_s);
    EXPECT_EQ(QBNoteCheckBoxStyler::stylerMarkerChecked(true), u"+ "_s);
    EXPECT_EQ(QBNoteCheckBoxStyler::stylerMarkerChecked(false), u"- "_s);
    EXPECT_EQ(QBNoteCheckBoxMarkdownStyler::stylerMarkerChecked(true), u"- [x] "_s);
    EXPECT_EQ(QBNoteCheckBoxMarkdownStyler::stylerMarkerChecked(false), u"- [ ] "_s);
    EXPECT_EQ(QBNoteCheckBoxStyler::stylerCheckedAttributeName().string(),
              u"QBNoteCheckboxStylerCheckedAttributeName"_s);
    EXPECT_EQ(QBNoteOrderedListTextStyler::stylerMarkerAttributeName().string(),
              u"QBNoteOrderedListStylerMArkerAttributeName"_s);
    EXPECT_EQ(QBNoteHeaderTextStyler::stylerAttributeName().string(), u"QBHeaderTextStylerAttributeName"_s);
    EXPECT_EQ(QBNoteLineSeparatorStyler::stylerMarkerAttributeName().string(),
              u"QBNoteLineSeparatorStylerMarkerAttributeName"_s);
}

TEST(BlockStylers, TellOpenFromDone)
{
    const struct
    {
        QString text;
        bool isOpen;
        bool isDone;
        bool isOpenInMarkdown;
        bool isDoneInMarkdown;
    } rows[] = {
        {u"- a"_s, true, false, false, false},    {u"\t+ a"_s, false, true, false, false},
        {u"- [ ] a"_s, true, false, true, false}, {u" - [x] a"_s, true, false, false, true},
        {u"- [x]a"_s, true, false, false, false}, {u"* a"_s, false, false, false, false},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(qPrintable(row.text));
        const auto matches = [&row](const NSRegularExpression &expression) {
            return expression.firstMatchInString(row.text, 0, {0, row.text.size()}).has_value();
        };
        EXPECT_EQ(matches(QBNoteCheckBoxStyler::uncheckedRegularExpression()), row.isOpen);
        EXPECT_EQ(matches(QBNoteCheckBoxStyler::checkedRegularExpression()), row.isDone);
        EXPECT_EQ(matches(QBNoteCheckBoxMarkdownStyler::uncheckedRegularExpression()), row.isOpenInMarkdown);
        EXPECT_EQ(matches(QBNoteCheckBoxMarkdownStyler::checkedRegularExpression()), row.isDoneInMarkdown);
    }
}
