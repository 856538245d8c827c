// Inline constructs: what each marks, where it begins and ends, and what it leaves alone.

#include "StyledInline.h"

#include <Graphics/GraphicsAttributes.h>
#include <Markup/Stylers/QBNoteBoldTextMarkdownStyler.h>
#include <Markup/Stylers/QBNoteCodeHighlightTextStyler.h>
#include <Markup/Stylers/QBNoteCodeHighlighting.h>
#include <Markup/Stylers/QBNoteItalicTextMarkdownStyler.h>
#include <Markup/Stylers/QBNoteMarkerTextStyler.h>
#include <Markup/Stylers/QBNoteStrikedTextMarkdownStyler.h>
#include <Markup/Stylers/QBNoteUnderlineTextMarkdownStyler.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

/// A text and the runs of one attribute in it, in braces.
struct Case
{
    NSAttributeName name;
    QString text;
    QString marked;
};

/// Each case holds for a new text, for one that is styled again, and without a theme; and the text stays what it was.
void check(int syntax, const QList<Case> &cases)
{
    for (const Case &expected : cases) {
        SCOPED_TRACE(QString(expected.name.string() % u": " % expected.text).toStdString());
        for (const auto theme : {StyledInline::Theme::Plain, StyledInline::Theme::None}) {
            StyledInline styled(syntax, theme);
            styled.load(expected.text);
            EXPECT_EQ(styled.marked(expected.name), expected.marked);
            EXPECT_EQ(styled.expanded(), expected.text);
            const QString fresh = styled.marks();
            styled.restyle();
            EXPECT_EQ(styled.marks(), fresh);
            EXPECT_EQ(styled.expanded(), expected.text);
        }
    }
}

const NSAttributeName &kBold = QBNoteBoldTextStylerAttributeName;
const NSAttributeName &kBoldMarker = QBNoteBoldTextStylerMarkerAttributeName;
const NSAttributeName &kItalic = QBNoteItalicTextStylerAttributeName;
const NSAttributeName &kItalicMarker = QBNoteItalicTextStylerMarkerAttributeName;
const NSAttributeName &kUnderline = QBNoteUnderlineTextStylerAttributeName;
const NSAttributeName &kUnderlineMarker = QBNoteUnderlineTextStylerMarkerAttributeName;
const NSAttributeName &kStrike = QBNoteStrikedTextStylerAttributeName;
const NSAttributeName &kStrikeMarker = QBNoteStrikedTextStylerMarkerAttributeName;
const NSAttributeName &kHighlight = QBNoteHighlighterTextStylerAttributeName;
const NSAttributeName &kHighlightMarker = QBNoteHighlighterTextStylerMarkerAttributeName;
const NSAttributeName &kHighlightBackground = QBNoteHighlighterTextStylerBackgroundAttributeName;
const NSAttributeName &kCode = QBNoteCodeInlineTextStylerAttributeName;
const NSAttributeName &kCodeMarker = QBNoteCodeInlineTextStylerMarkerAttributeName;

} // namespace

TEST(InlineStylers, BoldItalicUnderlineAndStrikeMarkContentAndMarkers)
{
    check(/*syntax=*/0, {
                            {kBold, u"an *a b* end"_s, u"an *{a b}* end"_s},
                            {kBoldMarker, u"an *a b* end"_s, u"an {*}a b{*} end"_s},
                            {kBold, u"a*b*c"_s, u"a*{b}*c"_s},
                            {kBold, u"x *b*"_s, u"x *{b}*"_s},
                            {kBoldMarker, u"x ** y"_s, u"x {**} y"_s},
                            {kBold, u"x ** y"_s, u"x ** y"_s},
                            {kBoldMarker, u"x * not bold* y"_s, u"x * not bold* y"_s},
                            {kBold, u"*a\nb*"_s, u"*a\nb*"_s},
                            {kBold, u"*a* b *c"_s, u"*{a}* b *c"_s},
                            {kBold, u"*\U0001F600*"_s, u"*{\U0001F600}*"_s},
                            {kItalic, u"an /a b/ end"_s, u"an /{a b}/ end"_s},
                            {kItalicMarker, u"an /a b/ end"_s, u"an {/}a b{/} end"_s},
                            {kItalic, u"2/3 and 4/5"_s, u"2/3 and 4/5"_s},
                            {kItalic, u"a / b"_s, u"a / b"_s},
                            {kItalic, u"/a /b/"_s, u"/{a /b}/"_s},
                            {kItalic, u"/a/1/"_s, u"/{a/1}/"_s},
                            {kItalic, u"/a\nb/"_s, u"/a\nb/"_s},
                            {kItalicMarker, u"//"_s, u"{//}"_s},
                            {kUnderline, u"(_word_)"_s, u"(_{word}_)"_s},
                            {kUnderline, u"_word_."_s, u"_{word}_."_s},
                            {kUnderlineMarker, u"_word_."_s, u"{_}word{_}."_s},
                            {kUnderline, u"a_b_c"_s, u"a_b_c"_s},
                            {kUnderlineMarker, u"x __ y"_s, u"x {__} y"_s},
                            {kStrike, u"a -b c- d"_s, u"a -{b c}- d"_s},
                            {kStrikeMarker, u"a -b c- d"_s, u"a {-}b c{-} d"_s},
                            {kStrike, u"a-b-c"_s, u"a-b-c"_s},
                            {kStrikeMarker, u"x -- y"_s, u"x {--} y"_s},
                            {NSUnderlineStyleAttributeName, u"_word_"_s, u"{_word_}"_s},
                            {NSStrikethroughStyleAttributeName, u"-word-"_s, u"{-word-}"_s},
                            // They guard nothing, so they nest, where their boundaries are.
                            {kUnderline, u"*a _b_ c*"_s, u"*a _{b}_ c*"_s},
                            {kBold, u"*a _b_ c*"_s, u"*{a _b_ c}*"_s},
                            {kItalic, u"*/a/*"_s, u"*/{a}/*"_s},
                            {kUnderline, u"*_a_*"_s, u"*_a_*"_s},
                        });
}

TEST(InlineStylers, TheMarkdownSyntaxHasMarkersOfItsOwn)
{
    check(/*syntax=*/1, {
                            {kBold, u"a **b** __c__ d"_s, u"a **{b}** __{c}__ d"_s},
                            {kBoldMarker, u"a **b**"_s, u"a {**}b{**}"_s},
                            {kBold, u"**b__"_s, u"**{b}__"_s},
                            {kBold, u"*i*"_s, u"*i*"_s},
                            {kItalic, u"*i* and _j_"_s, u"*{i}* and _{j}_"_s},
                            {kItalic, u"/i/"_s, u"/i/"_s},
                            {kItalicMarker, u"**b**"_s, u"**b**"_s},
                            {kItalic, u"**a *b* c**"_s, u"**a *{b}* c**"_s},
                            {kBold, u"***x***"_s, u"**{*x}***"_s},
                            {kItalic, u"***x***"_s, u"***{x**}*"_s},
                            {kItalic, u"`a_b` _c_"_s, u"`a_b` _{c}_"_s},
                            {kUnderline, u"a~b~c"_s, u"a~{b}~c"_s},
                            {kUnderlineMarker, u"~~s~~"_s, u"~~s~~"_s},
                            {kStrike, u"a~~b~~c"_s, u"a~~{b}~~c"_s},
                            {kStrikeMarker, u"a~~b~~c"_s, u"a{~~}b{~~}c"_s},
                            {kStrikeMarker, u"x -y- z"_s, u"x -y- z"_s},
                        });
    EXPECT_EQ(QBNoteBoldTextMarkdownStyler::stylerMarker(), u"**"_s);
    EXPECT_EQ(QBNoteItalicTextMarkdownStyler::stylerMarker(), u"*"_s);
    EXPECT_EQ(QBNoteUnderlineTextMarkdownStyler::stylerMarker(), u"~"_s);
    EXPECT_EQ(QBNoteStrikedTextMarkdownStyler::stylerMarker(), u"~~"_s);
    EXPECT_EQ(QBNoteBoldTextStyler::stylerMarker(), u"*"_s);
    EXPECT_EQ(QBNoteItalicTextStyler::stylerMarker(), u"/"_s);
    EXPECT_EQ(QBNoteUnderlineTextStyler::stylerMarker(), u"_"_s);
    EXPECT_EQ(QBNoteStrikedTextStyler::stylerMarker(), u"-"_s);
}

TEST(InlineStylers, AMarkerOfItalicsIsNoneInALink)
{
    check(/*syntax=*/0, {
                            {kItalic, u"see http://a.bc/d/ now /x/"_s, u"see http://a.bc/d/ now /{x}/"_s},
                            {kItalicMarker, u"/see http://a.bc/d/ now"_s, u"/see http://a.bc/d/ now"_s},
                            {kItalic, u"/see http://a.bc/d/ now/"_s, u"/{see http://a.bc/d/ now}/"_s},
                        });
    check(/*syntax=*/1, {
                            {kItalic, u"http://a.bc/d_e _x_"_s, u"http://a.bc/d_e _{x}_"_s},
                            {kItalic, u"[a _b](u) _c_"_s, u"[a _b](§) _{c}_"_s},
                        });
}

TEST(InlineStylers, CodeIsGuardedFromAllThatComesLater)
{
    check(/*syntax=*/0, {
                            {kCode, u"a `b` c"_s, u"a `{b}` c"_s},
                            {kCodeMarker, u"a `b` c"_s, u"a {`}b{`} c"_s},
                            {QBNoteCodeInlineTextStylerBackgroundAttributeName, u"a `b` c"_s, u"a {`b`} c"_s},
                            {QBNoteSkipStylingAttributeName, u"a `b` c"_s, u"a `{b}` c"_s},
                            {QBNoteSkipAttachmentReplacementAttributeName, u"a `b` c"_s, u"a `{b}` c"_s},
                            {QBNoteSkipSpellCheckerAttributeName, u"a `b` c"_s, u"a {`b`} c"_s},
                            {kCodeMarker, u"``"_s, u"{``}"_s},
                            {kCode, u"`a\nb`"_s, u"`a\nb`"_s},
                            {kCodeMarker, u"```\na `b`\n```"_s, u"```\na `b`\n```"_s},
                            {kBold, u"`*a*` *b*"_s, u"`*a*` *{b}*"_s},
                            // What touches code anywhere is left alone.
                            {kBold, u"*a `c` b*"_s, u"*a `c` b*"_s},
                            {kUnderline, u"_a `c` b_"_s, u"_a `c` b_"_s},
                            {kBold, u"```\n*a*\n```\n*b*"_s, u"```\n*a*\n```\n*{b}*"_s},
                            {QBNoteTagSpacerAttributeName, u"` #a ` #b"_s, u"` #a ` {¦}#b{¦}"_s},
                            {NSAttachmentAttributeName, u"` -> ` and ` #123456 `"_s, u"` -> ` and ` #123456 `"_s},
                            {NSLinkAttributeName, u"`[t](u) http://a.bc [[w]]`"_s, u"`[t](u) http://a.bc [[w]]`"_s},
                            {kBold, u"# *a*\n*b*"_s, u"@ *a*\n*{b}*"_s},
                        });
}

TEST(InlineStylers, AHighlightIsPaintedInPiecesAroundGuardedRuns)
{
    check(/*syntax=*/0, {
                            {kHighlight, u"a ::b c:: d"_s, u"a ::{b c}:: d"_s},
                            {kHighlightMarker, u"a ::b c:: d"_s, u"a {::}b c{::} d"_s},
                            {kHighlightBackground, u"a ::b c:: d"_s, u"a {::b c::} d"_s},
                            {kHighlight, u"::a:::"_s, u"::{a:}::"_s},
                            {kHighlightMarker, u"::::"_s, u"{::::}"_s},
                            // The code's marker and the blank beside it are left out on both sides.
                            {kHighlight, u"::a `c` b::"_s, u"::{a} `c` {b}::"_s},
                            {kHighlightBackground, u"::a `c` b::"_s, u"{::a} `c` {b::}"_s},
                            {kHighlight, u"::a`c`b::"_s, u"::{a}`c`{b}::"_s},
                            {kHighlightBackground, u"::`c`::"_s, u"{::}`c`{::}"_s},
                            {kHighlight, u"::`c`::"_s, u"::`c`::"_s},
                            {kHighlightBackground, u"::`a`  `b`::"_s, u"{::}`a`  `b`{::}"_s},
                            {kHighlight, u"::a `c` b `d` e::"_s, u"::{a} `c` {b} `d` {e}::"_s},
                            // A marker in code is none.
                            {kHighlightBackground, u"`a::b` c::"_s, u"`a::b` c::"_s},
                            {kHighlightBackground, u"::a `b::`"_s, u"::a `b::`"_s},
                            {kHighlightBackground, u"`::a::`"_s, u"`::a::`"_s},
                            {kHighlightBackground, u"```\n::a::\n```"_s, u"```\n::a::\n```"_s},
                            // It guards nothing.
                            {QBNoteTagSpacerAttributeName, u"::a #t::"_s, u"::a {¦}#t{¦}::"_s},
                            {kBold, u"::a *b*::"_s, u"::a *{b}*::"_s},
                        });
    StyledInline styled;
    styled.load(u"`a` b"_s);
    EXPECT_TRUE(QBNoteMarkerTextStyler::markerInsideSkipStyleAttribute({1, 2}, styled.text()));
    EXPECT_FALSE(QBNoteMarkerTextStyler::markerInsideSkipStyleAttribute({0, 2}, styled.text()));
}

TEST(InlineStylers, ABlankThatIsNoneShowsInGuardedTextToo)
{
    check(/*syntax=*/0,
          {
              {NSUnderlineStyleAttributeName, u"a\u00A0b `\u200B` c\uFEFF"_s, u"a{\u00A0}b `{\u200B}` c{\uFEFF}"_s},
              {NSUnderlineStyleAttributeName, u"```\n\u00A0\n```\n "_s, u"```\n{\u00A0}\n```\n "_s},
          });
}

TEST(InlineStylers, FontsAndColoursComeFromTheTheme)
{
    StyledInline styled;
    const auto &theme = styled.theme();
    const auto font = [&styled](const AttributeValue &value) { return styled.marked(NSFontAttributeName, value); };
    styled.load(u"*b* /i/ _u_ -s- `c` ::h:: \u2003"_s);
    EXPECT_EQ(font(theme.paragraphBoldFontAttribute()), u"*{b}* /i/ _u_ -s- `c` ::h:: \u2003"_s);
    EXPECT_EQ(font(theme.paragraphItalicFontAttribute()), u"*b* /{i}/ _u_ -s- `c` ::h:: \u2003"_s);
    EXPECT_EQ(font(theme.monospaceFontAttribute()), u"*b* /i/ _u_ -s- `{c}` {::}h{::} {\u2003}"_s);
    EXPECT_EQ(styled.coloured(theme.styleMarkerTextColor()), u"{*}b{*} {/}i{/} {_}u{_} {-}s{-} {`}c{`} ::h:: \u2003"_s);
    EXPECT_EQ(styled.coloured(theme.lightTextColor()), u"*b* /i/ _u_ -{s}- `c` ::h:: \u2003"_s);
    EXPECT_EQ(styled.coloured(theme.codeFontColor()), u"*b* /i/ _u_ -s- `{c}` ::h:: \u2003"_s);
    EXPECT_EQ(styled.coloured(theme.highlighterMarkerColor()), u"*b* /i/ _u_ -s- `c` {::}h{::} \u2003"_s);

    // Lines under markers keep their room and don't show.
    const AttributeValue invisible = attributeValue(NSColor::colorWithWhite(1, 0));
    EXPECT_EQ(styled.marked(NSUnderlineColorAttributeName, invisible), u"*b* /i/ {_}u{_} -s- `c` ::h:: \u2003"_s);
    EXPECT_EQ(styled.marked(NSStrikethroughColorAttributeName, invisible), u"*b* /i/ _u_ {-}s{-} `c` ::h:: \u2003"_s);
    EXPECT_EQ(styled.marked(NSUnderlineColorAttributeName, attributeValue(*theme.accentTextColor())),
              u"*b* /i/ _{u}_ -s- `c` ::h:: \u2003"_s);
    EXPECT_EQ(styled.marked(NSUnderlineColorAttributeName, attributeValue(*theme.invalidCharacterColor())),
              u"*b* /i/ _u_ -s- `c` ::h:: {\u2003}"_s);
    const double point = theme.basePointSizeForCurrentBaseFontSize();
    ASSERT_GT(point, 0);
    EXPECT_EQ(styled.marked(NSBaselineOffsetAttributeName, point), u"*b* /i/ {_}u{_} -s- `c` ::h:: \u2003"_s);
    EXPECT_EQ(styled.marked(NSBaselineOffsetAttributeName, -point), u"*b* /i/ _u_ -s- `c` ::h:: {\u2003}"_s);
}

TEST(InlineStylers, CodeHasRoomForItsBackground)
{
    StyledInline styled;
    for (const auto &[text, marked] : {
             std::pair(u"x `abc` y"_s, u"x{ `}ab{c`} y"_s),
             std::pair(u"`abc`"_s, u"{`}ab{c`}"_s),
             std::pair(u"x``"_s, u"{x``}"_s),
             std::pair(u"\n`a`"_s, u"{\n`a`}"_s),
         }) {
        styled.load(text);
        EXPECT_EQ(styled.marked(NSKernAttributeName, styled.theme().paragraphFontXHeight() / 2), marked);
    }
}

TEST(InlineStylers, WhatIsNoConstructAnyMoreLosesItsMarks)
{
    struct Edit
    {
        QString text;
        QString old;
        QString withString;
    };
    for (const auto &[text, old, withString] : {
             Edit{u"a *b* c"_s, u"*b*"_s, u"*b"_s},
             Edit{u"a /b/ c"_s, u"/b/"_s, u"b/"_s},
             Edit{u"a _b_ c"_s, u"_ c"_s, u"_c"_s},
             Edit{u"a -b- c"_s, u"a -"_s, u"a-"_s},
             Edit{u"::a `c` b::"_s, u"b::"_s, u"b:"_s},
             Edit{u"a `*b* #c` d"_s, u"`*"_s, u"*"_s},
             Edit{u"a *b* c `d"_s, u"a "_s, u"a ` "_s},
             Edit{u"[[a]] b"_s, u"]]"_s, u"]"_s},
             Edit{u"![a](b \"c\")"_s, u"!"_s, u""_s},
             Edit{u"a\u00A0b"_s, u"\u00A0"_s, u" "_s},
             Edit{u"http://a.bc/d/ e/"_s, u"http:"_s, u""_s},
             Edit{u"a -> b"_s, u"@"_s, u"-"_s},
             Edit{u"a -> b"_s, u"a "_s, u"a"_s},
             Edit{u"a -> b"_s, u"a "_s, u"` "_s},
         }) {
        SCOPED_TRACE(text.toStdString());
        StyledInline styled;
        styled.load(text);
        styled.edit(old, withString);
        StyledInline fresh;
        fresh.load(styled.expanded());
        EXPECT_EQ(styled.marks(), fresh.marks());
        // Attachments are never equal; all else is, fonts, colours and metrics included.
        if (styled.marked(NSAttachmentAttributeName) == styled.shown()) {
            EXPECT_TRUE(styled.text() == fresh.text());
        }
    }
}

TEST(InlineStylers, HighlightedCodeIsHandedOnOnlyWhenThatIsEnabled)
{
    struct Recorder : QBNoteCodeHighlighting
    {
        void highlightSyntaxInAttributedString(NSMutableAttributedString &attributedString, NSRange range) override
        {
            asked.append(attributedString.stringInRange(range).toString());
        }
        QStringList asked;
    } recorder;
    auto styler = std::make_shared<QBNoteCodeHighlightTextStyler>();
    StyledInline styled({styler});
    styled.load(u"a"_s);
    EXPECT_EQ(recorder.asked, QStringList());
    styler->enableSyntaxHightlight(&recorder);
    styled.load(u"b"_s);
    styled.restyle();
    EXPECT_EQ(recorder.asked, (QStringList{u"b"_s, u"b"_s}));
    styler->enableSyntaxHightlight(nullptr);
    styled.load(u"c"_s);
    EXPECT_EQ(recorder.asked.size(), 2);
    EXPECT_EQ(styled.marks(), u"c"_s);
}

} // namespace quib::tests
