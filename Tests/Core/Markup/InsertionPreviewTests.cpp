// How a piece of text would look in a place of a note, which stays as it is.

#include "StyledNote.h"

#include <Markup/Stylers/QBNoteTextStylerAttributes.h>

using namespace Qt::StringLiterals;
using quib::tests::StyledNote;

namespace {

TEST(InsertionPreview, LooksAsThePieceWouldInItsPlace)
{
    const struct
    {
        const char *label;
        int syntax;
        QString text;
        NSRange range; ///< in the buffer
        QString string;
        QString expected;
        NSAttributeName mark; ///< what one unit of the piece has
        qint64 marked;        ///< that unit, or -1 where none has it
    } cases[] = {
        {"a tag", 0, u"see  here"_s, {4, 0}, u"#tag"_s, u"\ufffc#tag\ufffc"_s, QBNoteTagStylerAttributeName, 2},
        {"a tag in the place of a word",
         0,
         u"see this here"_s,
         {4, 4},
         u"#tag"_s,
         u"\ufffc#tag\ufffc"_s,
         QBNoteTagStylerAttributeName,
         2},
        {"a tag in the place of a tag",
         0,
         u"see #this here"_s,
         {4, 7},
         u"#tag"_s,
         u"\ufffc#tag\ufffc"_s,
         QBNoteTagStylerAttributeName,
         2},
        {"the whole text", 0, u"all of it"_s, {0, 9}, u"*x*"_s, u"*x*"_s, QBNoteBoldTextStylerAttributeName, 1},
        {"the end", 0, u"see "_s, {4, 0}, u"*x*"_s, u"*x*"_s, QBNoteBoldTextStylerAttributeName, 1},
        {"an empty text", 0, QString(), {0, 0}, u"# x"_s, u"\ufffc x"_s, QBHeaderTextStylerAttributeName, 2},
        {"half of a pair that stands already",
         0,
         u"a *b"_s,
         {4, 0},
         u"c*"_s,
         u"c*"_s,
         QBNoteBoldTextStylerAttributeName,
         0},
        {"the other syntax", 1, u"a b"_s, {2, 0}, u"**x**"_s, u"**x**"_s, QBNoteBoldTextStylerAttributeName, 2},
        {"lines",
         0,
         u"a b"_s,
         {1, 0},
         u"\n- c\n+ d\n"_s,
         u"\n\ufffc c\n\ufffc d\n"_s,
         QBNoteCheckboxStylerCheckedAttributeName,
         7},
        {"a box that is ticked", 0, u"- a"_s, {0, 1}, u"+"_s, u"\ufffc"_s, QBNoteCheckboxStylerCheckedAttributeName, 0},
        {"an opening fence",
         0,
         u"a\n\nb\n```\nc"_s,
         {2, 0},
         u"```"_s,
         u"```"_s,
         QBNoteCodeTextStylerMarkerAttributeName,
         1},
        {"a block",
         0,
         u"a\n\nb"_s,
         {2, 0},
         u"```\n*x*\n```"_s,
         u"```\n*x*\n```"_s,
         QBNoteCodeTextStylerAttributeName,
         5},
        {"code", 0, u"```\nb\n```"_s, {4, 0}, u"*x* #y"_s, u"*x* #y"_s, QBNoteBoldTextStylerAttributeName, -1},
        {"what a header guards",
         0,
         u"# a b"_s,
         {3, 0},
         u"*x* #y"_s,
         u"*x* #y"_s,
         QBNoteBoldTextStylerAttributeName,
         -1},
        {"a part of a tag", 0, u"see #tag here"_s, {6, 0}, u"xy"_s, u"xy"_s, QBNoteTagStylerAttributeName, 0},
        {"nothing", 0, u"see #tag here"_s, {1, 1}, u""_s, u""_s, QBNoteTagStylerAttributeName, -1},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(test.label);
        StyledNote note(test.syntax, test.text);
        const QString before = note.looks();
        const auto piece = note.storage().styledAttributedStringFromString(test.string, test.range);
        EXPECT_EQ(piece.string().toString().toStdString(), test.expected.toStdString());
        EXPECT_FALSE(piece.containsAttribute(QBNoteBoundaryMarkerAttributeName, piece.fullRange()));
        if (test.marked >= 0 && test.marked < piece.length()) {
            EXPECT_TRUE(piece.attribute(test.mark, test.marked));
        } else {
            EXPECT_FALSE(piece.containsAttribute(test.mark, piece.fullRange()));
        }
        EXPECT_EQ(note.looks(), before) << "the note stays as it is";
    }
}

} // namespace
