// Where a restyle gives something else than a load of the same text: each exception with a text that shows it.

#include "StyledNote.h"

#include <Graphics/GraphicsAttributes.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Text/NSParagraphStyle.h>
#include <Themes/QBNotesTextThemeManager.h>

using namespace Qt::StringLiterals;
using quib::tests::StyledNote;

namespace {

/// A note in which something was typed, and the same text loaded.
struct Pair
{
    Pair(const QString &text, NSRange range, const QString &typed)
        : restyled(0, text)
        , fresh(0)
    {
        if (!range.isFound()) {
            range = {restyled.storage().length(), 0};
        }
        static_cast<void>(restyled.replace(range, typed));
        fresh.storage().loadString(restyled.text());
    }
    /// A key at the end of both, which is typed at the end of the line.
    void typeOn() { static_cast<void>(restyled.replace({restyled.storage().length(), 0}, u"q"_s)); }

    StyledNote restyled;
    StyledNote fresh;
};

quib::AttributeValue value(StyledNote &note, const NSAttributeName &name, qint64 place)
{
    return note.storage().attributedString().attribute(name, place);
}

const NSRange kAtEnd = kNotFoundRange;

TEST(RestyleExceptions, AttachmentsThatStandHideWhatTheyStandFor)
{
    const struct
    {
        const char *label;
        QString text;
        NSRange range; ///< in the buffer
        QString typed;
        QString restyled;
        QString fresh;
    } cases[] = {
        {"the rule of a separator, from tags",
         u"a\n---\nb"_s,
         {2, 0},
         u"#"_s,
         u"a\n\ufffc#---\ufffc\nb"_s,
         u"a\n#---\nb"_s},
        {"the closing spacer of a tag, from arrows", u"x #a("_s, kAtEnd, u"->"_s, u"x \ufffc#a(->\ufffc"_s,
         u"x \ufffc#a(\ufffc\ufffc"_s},
        {"spacers, from colours, which then come again behind the tag", u"x #aabbcc)# y"_s, kAtEnd, u"z"_s,
         u"x \ufffc#aabbcc)#\ufffc yz"_s, u"x \ufffc\ufffc#aabbcc)#\ufffc yz"_s},
        {"a swatch that ends a tag's content in no blank",
         u"[x](y)#a b #aabbcc"_s,
         {0, 0},
         u"z"_s,
         u"z[x](\ufffc)#a b \ufffc#aabbcc"_s,
         u"z[x](\ufffc)\ufffc#a b \ufffc#\ufffcaabbcc"_s},
        {"a link inside brackets, from links around it", u"[t [x](quib://a)](quib://b"_s, kAtEnd, u")"_s,
         u"[t [x](\ufffc)](\ufffc)"_s, u"[t [x](\ufffc)](quib://b)"_s},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(test.label);
        Pair pair(test.text, test.range, test.typed);
        EXPECT_EQ(pair.restyled.buffer().toStdString(), test.restyled.toStdString());
        EXPECT_EQ(pair.fresh.buffer().toStdString(), test.fresh.toStdString());
        EXPECT_EQ(pair.restyled.text(), pair.fresh.text()) << "what is saved is the same";
    }
}

TEST(RestyleExceptions, AnArrowBehindATagComesWithTheNextKey)
{
    Pair pair(u"x #a("_s, kAtEnd, u"->"_s);
    pair.typeOn();
    EXPECT_EQ(pair.restyled.looks(), StyledNote(0, pair.restyled.text()).looks());
    StyledNote apart(0, u"x #a b"_s);
    static_cast<void>(apart.replace({apart.storage().length(), 0}, u" ->"_s));
    EXPECT_EQ(apart.buffer(), u"x \ufffc#a\ufffc b \ufffc"_s) << "one on its own comes at once";
}

TEST(RestyleExceptions, OnlyALineFeedReachesTheNextParagraph)
{
    for (const QString &end : {u"\r"_s, u"\u2028"_s, u"\u2029"_s}) {
        Pair pair(u"a- x"_s, {1, 0}, end);
        EXPECT_EQ(pair.restyled.buffer(), QString(u'a' % end % u"- x"));
        EXPECT_EQ(pair.fresh.buffer(), QString(u'a' % end % u"\ufffc x"));
        pair.typeOn();
        EXPECT_EQ(pair.restyled.buffer(), QString(u'a' % end % u"\ufffc xq"));
    }
    Pair pair(u"a- x"_s, {1, 0}, u"\n"_s);
    EXPECT_EQ(pair.restyled.buffer(), u"a\n\ufffc x"_s);
}

TEST(RestyleExceptions, ATagCountsItsPlaceFromWhereStylingBegan)
{
    Pair pair(u"one\n#tag x"_s, kAtEnd, u"z"_s);
    EXPECT_EQ(value(pair.fresh, QBNoteTagStylerAttributeName, 5).stringValue(), u"tag_6"_s);
    EXPECT_EQ(value(pair.restyled, QBNoteTagStylerAttributeName, 5).stringValue(), u"tag_2"_s);
}

TEST(RestyleExceptions, CodeAtALinesStartGivesNoKernToTheLineBefore)
{
    Pair pair(u"a\nc` b"_s, {2, 0}, u"`"_s);
    EXPECT_GT(value(pair.fresh, NSKernAttributeName, 1).doubleValue(), 0);
    EXPECT_EQ(value(pair.restyled, NSKernAttributeName, 1).doubleValue(), 0);
    for (qint64 place = 2; place < pair.fresh.storage().length(); ++place) {
        EXPECT_EQ(value(pair.restyled, NSKernAttributeName, place), value(pair.fresh, NSKernAttributeName, place));
    }
}

TEST(RestyleExceptions, AHeaderThatComesOutOfATagIsStyledLast)
{
    Pair pair(u"#tag x\u00a0y *b*"_s, {2, 0}, u" "_s);
    ASSERT_EQ(pair.restyled.buffer(), u"\ufffc tag x\u00a0y *b*"_s);
    EXPECT_TRUE(value(pair.restyled, QBNoteBoldTextStylerAttributeName, 11));
    EXPECT_FALSE(value(pair.fresh, QBNoteBoldTextStylerAttributeName, 11));
    const auto &theme = *pair.fresh.stack().themeManager();
    const auto fontAt = [](StyledNote &note, qint64 place) {
        const auto font = value(note, NSFontAttributeName, place);
        return *quib::fontOfAttribute(font);
    };
    EXPECT_EQ(fontAt(pair.restyled, 7), theme.h1Font());
    EXPECT_EQ(fontAt(pair.fresh, 7), theme.monospaceFont());
    pair.typeOn();
    EXPECT_EQ(fontAt(pair.restyled, 7), theme.monospaceFont()) << "until the next key";
    EXPECT_FALSE(value(pair.restyled, QBNoteBoldTextStylerAttributeName, 11));
}

TEST(RestyleExceptions, AClosingFenceIsReachedWithoutWhatFollowsIt)
{
    Pair pair(u"a\n\nc\n```cpp\nd"_s, {2, 0}, u"```"_s);
    for (const qint64 place : {2, 8}) {
        EXPECT_TRUE(value(pair.restyled, QBNoteCodeTextStylerMarkerAttributeName, place)) << place;
    }
    EXPECT_TRUE(value(pair.fresh, QBNoteCodeTextStylerMarkerAttributeName, 11));
    EXPECT_FALSE(value(pair.restyled, QBNoteCodeTextStylerMarkerAttributeName, 11));
}

TEST(RestyleExceptions, TheFirstLineOfAnIndentationThatIsMeasuredDecides)
{
    Pair pair(u"9. a"_s, {0, 0}, u"1"_s);
    const auto indentAt = [](StyledNote &note) {
        const auto style = value(note, NSParagraphStyleAttributeName, 0);
        return style.as<NSParagraphStyle>()->firstLineHeadIndent();
    };
    EXPECT_GT(indentAt(pair.restyled), indentAt(pair.fresh)) << "as if the number had one digit still";
    pair.restyled.stack().cleanStylerCache();
    pair.typeOn();
    EXPECT_EQ(indentAt(pair.restyled), indentAt(pair.fresh));
}

TEST(RestyleExceptions, InPlaceAColourThatASpacerSplitsIsPaintedOneUnitShort)
{
    StyledNote note(0, u"#12345g #aabbcc."_s);
    StyledNote fresh(0, note.text());
    ASSERT_EQ(note.buffer(), u"\ufffc#12345g \ufffc#\ufffcaabbcc."_s);
    note.storage().applyStylingInRange(note.storage().fullRange());
    EXPECT_EQ(note.buffer(), fresh.buffer());
    const auto painted = [](StyledNote &of) {
        QString places;
        for (qint64 place = 0; place < of.storage().length(); ++place) {
            places += value(of, QBNoteColorStylerAttributeName, place) ? u'c' : u'.';
        }
        return places;
    };
    EXPECT_EQ(painted(fresh), u".........cc.cccccc."_s);
    EXPECT_EQ(painted(note), u".........cccccccc.."_s);
}

TEST(RestyleExceptions, InPlaceAHighlightTakesInTheSpacersOfItsTags)
{
    StyledNote note(0, u"::x #y# z::"_s);
    StyledNote fresh(0, note.text());
    ASSERT_EQ(note.buffer(), u"::x \ufffc#y#\ufffc z::"_s);
    note.storage().applyStylingInRange(note.storage().fullRange());
    const auto painted = [](StyledNote &of) {
        QString places;
        for (qint64 place = 0; place < of.storage().length(); ++place) {
            places += value(of, QBNoteHighlighterTextStylerBackgroundAttributeName, place) ? u'h' : u'.';
        }
        return places;
    };
    EXPECT_EQ(painted(note).size(), painted(fresh).size());
    for (qint64 place = 0; place < note.storage().length(); ++place) {
        if (note.storage().string()[place] != QChar::ObjectReplacementCharacter) {
            EXPECT_EQ(painted(note)[place], painted(fresh)[place]) << place;
        }
    }
    EXPECT_NE(painted(note), painted(fresh));
}

} // namespace
