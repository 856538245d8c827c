// Code blocks: what their pieces look like, and the identifiers of their languages.

#include "StyledBlocks.h"

#include <Markup/Stylers/QBNoteCodeTextStyler.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <gtest/gtest.h>

#include <QSet>

using namespace Qt::StringLiterals;
using quib::tests::StyledBlocks;

namespace {

QString identifierAt(StyledBlocks &blocks, qint64 place)
{
    return blocks.text().attribute(QBNoteCodeTextStylerLanguageAttributeName, place).stringValue();
}

} // namespace

TEST(CodeBlockStyler, MarksFencesBodyAndLanguage)
{
    const struct
    {
        QString text;
        QString marks;
    } rows[] = {
        {u"```\na\n```"_s, u"code 3+3, codeMarker 0+3 6+3, codeBackground 0+9, noStyling 0+9, noAttachment 3+3, "
                           "noSpelling 0+9"_s},
        {u"x\n```c++\na\n```\ny"_s,
         u"code 5+6, codeMarker 2+3 11+3, codeBackground 2+12, language 5+3, noStyling 2+12, noAttachment 5+6, "
         "noSpelling 2+12"_s},
        // Whatever stands behind the closing fence belongs to it.
        {u"```\na\n```swift x\ny"_s,
         u"code 3+3, codeMarker 0+3 6+10, codeBackground 0+16, noStyling 0+16, noAttachment 3+3, noSpelling 0+16"_s},
        {u"```\n```"_s,
         u"code 3+1, codeMarker 0+3 4+3, codeBackground 0+7, noStyling 0+7, noAttachment 3+1, noSpelling 0+7"_s},
        {u"```\n- a\n# b\n> c\n1. d\n---\n* e\n[file:a/b]\n```"_s,
         u"code 3+37, codeMarker 0+3 40+3, codeBackground 0+43, noStyling 0+43, noAttachment 3+37, noSpelling 0+43"_s},
        {u"```\na\n``` \n```\nb"_s,
         u"code 3+3, codeMarker 0+3 6+4, codeBackground 0+10, noStyling 0+10, noAttachment 3+3, noSpelling 0+10"_s},
        {u"```"_s, {}},
        {u"```\nabc"_s, {}},
        {u" ```\na\n ```"_s, {}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(qPrintable(row.text));
        for (const int syntax : {0, 1}) {
            StyledBlocks blocks(syntax);
            blocks.load(row.text);
            EXPECT_EQ(blocks.marks(), row.marks);
            EXPECT_EQ(blocks.shown(), row.text) << "nothing in code is replaced";
            const QString loaded = blocks.description();
            blocks.restyle();
            EXPECT_EQ(blocks.description(), loaded) << "when styled again";
        }
        StyledBlocks plain(0, StyledBlocks::Theme::None);
        plain.load(row.text);
        EXPECT_EQ(plain.marks(), row.marks) << "without a theme";
    }
}

TEST(CodeBlockStyler, PaintsThem)
{
    StyledBlocks blocks;
    blocks.load(u"x\n```c\na\n```\ny"_s);
    EXPECT_EQ(blocks.colours(), u"Style Marker Text Color 2+3, Syntax Keyword 5+1, Code Font Color 6+3, "
                                "Style Marker Text Color 9+3"_s);
    EXPECT_EQ(blocks.fonts(), u"mono 2+10"_s);
    const auto &theme = *blocks.themeManager();
    const NSParagraphStyle &plain = *theme.defaultParagraphStyle();
    const NSParagraphStyle &style = blocks.paragraphStyleAt(7);
    const double margin = 2 * theme.paragraphFontXHeight();
    EXPECT_DOUBLE_EQ(style.headIndent(), plain.headIndent() + margin);
    EXPECT_DOUBLE_EQ(style.firstLineHeadIndent(), plain.firstLineHeadIndent() + margin);
    EXPECT_DOUBLE_EQ(style.tailIndent(), (plain.tailIndent() + margin) * 3);
    EXPECT_EQ(style.paragraphSpacing(), plain.paragraphSpacing());
}

TEST(CodeBlockStyler, KeepsAThemesPlainColourWhereItHasNoOther)
{
    auto theme = std::make_shared<QBNotesTextThemeManager>();
    StyledBlocks blocks(QList<std::shared_ptr<QBNoteTextStyler>>{std::make_shared<QBNoteCodeTextStyler>()}, theme);
    blocks.load(u"```c\na\n```"_s);
    EXPECT_EQ(blocks.runs(NSForegroundColorAttributeName), QString());
    EXPECT_EQ(blocks.runs(NSFontAttributeName), u"0+10"_s);
}

TEST(CodeBlockStyler, TakesBackWhatItPainted)
{
    StyledBlocks blocks;
    blocks.load(u"```c\n- a\n```"_s);
    blocks.edit({10, 1}, QString());
    blocks.restyle();
    EXPECT_EQ(blocks.shown(), u"```c\n«-» a\n``"_s);
    EXPECT_EQ(blocks.marks(), u"box 5+4, boxMarker 5+2"_s);
    EXPECT_EQ(blocks.colours(), QString());
    EXPECT_EQ(blocks.fonts(), QString());

    // By itself it goes back to the theme's plain text where its background was, and nowhere else.
    StyledBlocks alone(QList<std::shared_ptr<QBNoteTextStyler>>{std::make_shared<QBNoteCodeTextStyler>()},
                       quib::tests::blockTheme());
    alone.load(u"x\n```\na\n```"_s);
    NSRange range = alone.text().fullRange();
    alone.styler<QBNoteCodeTextStyler>().removeUnusedStyleIn(alone.text(), range, nullptr);
    EXPECT_EQ(alone.runs(NSForegroundColorAttributeName), u"2+9"_s);
    EXPECT_EQ(alone.colours(), QString());
    EXPECT_EQ(alone.runs(QBNoteCodeTextStylerAttributeName), QString());
    EXPECT_EQ(alone.runs(QBNoteCodeTextStylerMarkerAttributeName), QString());
    EXPECT_EQ(alone.runs(QBNoteCodeTextStylerBackgroundAttributeName), QString());
}

TEST(CodeBlockStyler, TurnsAttachmentsInsideBackIntoText)
{
    StyledBlocks blocks;
    blocks.load(u"- a\n# b\n[file:c/d]\n---\n```"_s);
    blocks.edit({0, 0}, u"```\n"_s);
    blocks.restyle();
    EXPECT_EQ(blocks.shown(), u"```\n- a\n# b\n[file:c/d]\n---\n```"_s);
    EXPECT_EQ(blocks.fonts(), u"mono 0+30"_s);
}

TEST(CodeBlockStyler, KeepsTheIdentifierOfALanguage)
{
    StyledBlocks blocks;
    blocks.load(u"```swift\na\n```"_s);
    const QString identifier = identifierAt(blocks, 3);
    EXPECT_EQ(identifier.size(), 36);
    blocks.restyle();
    EXPECT_EQ(identifierAt(blocks, 3), identifier);
    blocks.edit({9, 1}, u"abc"_s);
    blocks.restyle();
    EXPECT_EQ(identifierAt(blocks, 3), identifier) << "after an edit of the body";
    blocks.text().replaceCharactersInRange({8, 0}, u"2");
    blocks.restyle();
    EXPECT_EQ(identifierAt(blocks, 3), identifier) << "after a letter more";
    EXPECT_EQ(blocks.runs(QBNoteCodeTextStylerLanguageAttributeName), u"3+6"_s);
    blocks.text().replaceCharactersInRange({3, 1}, u"W");
    blocks.restyle();
    EXPECT_EQ(identifierAt(blocks, 3), identifier) << "after another first letter";
}

TEST(CodeBlockStyler, TakesTheIdentifierFromWhatIsNoLanguageAnyMore)
{
    StyledBlocks blocks;
    blocks.load(u"```swift\na\n```"_s);
    blocks.text().deleteCharactersInRange({0, 1});
    blocks.restyle();
    EXPECT_EQ(blocks.runs(QBNoteCodeTextStylerLanguageAttributeName), QString()) << "the fence is none";

    blocks.load(u"```swift\na\n```"_s);
    const QString identifier = identifierAt(blocks, 3);
    blocks.text().replaceCharactersInRange({5, 0}, u"\n"); // takes over what stands before it
    blocks.restyle();
    EXPECT_EQ(blocks.runs(QBNoteCodeTextStylerLanguageAttributeName), u"3+2"_s) << "the rest is in the body";
    EXPECT_EQ(identifierAt(blocks, 3), identifier);
}

TEST(CodeBlockStyler, GivesEachBlockAnIdentifierOfItsOwn)
{
    StyledBlocks blocks;
    blocks.load(u"```a\n```\n```b\n```\n```c\n```"_s);
    QSet<QString> identifiers{identifierAt(blocks, 3), identifierAt(blocks, 12), identifierAt(blocks, 21)};
    EXPECT_EQ(identifiers.size(), 3);
    EXPECT_FALSE(identifiers.contains(QString()));

    // A name that is cut by two more fences is the name of two blocks.
    blocks.load(u"```swift\na\n```"_s);
    blocks.text().replaceCharactersInRange({5, 0}, u"\n```\n```");
    blocks.restyle();
    EXPECT_EQ(blocks.runs(QBNoteCodeTextStylerLanguageAttributeName), u"3+2 13+3"_s);
    EXPECT_NE(identifierAt(blocks, 3), identifierAt(blocks, 13));
}

TEST(CodeBlockStyler, HeedsGuards)
{
    StyledBlocks blocks(QList<std::shared_ptr<QBNoteTextStyler>>{std::make_shared<QBNoteCodeTextStyler>()});
    blocks.load({});
    blocks.text() = NSMutableAttributedString(u"```\na\n```"_s);
    blocks.text().addAttribute(QBNoteSkipStylingAttributeName, 1, {4, 1});
    NSRange range = blocks.text().fullRange();
    blocks.styler<QBNoteCodeTextStyler>().applyStyleIn(blocks.text(), range, nullptr);
    EXPECT_EQ(blocks.marks(), u"noStyling 4+1"_s);
}

TEST(CodeBlockStyler, TellsItsMarkerAndNames)
{
    EXPECT_EQ(QBNoteCodeTextStyler::stylerMarker(), u"```"_s);
    EXPECT_EQ(QBNoteCodeTextStyler::stylerAttributeName().string(), u"QBNoteCodeTextStylerAttributeName"_s);
    EXPECT_EQ(QBNoteCodeTextStyler::stylerMarkerAttributeName().string(), u"QBNoteCodeTextStylerMarkerAttributeName"_s);
    EXPECT_EQ(QBNoteCodeTextStyler::stylerRegularExpression().options(), 24U);
}
