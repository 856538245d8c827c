#include "EditedNote.h"

#include <Markup/Attachments/QBFoldTextAttachment.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

constexpr QChar kFold(u'\uFFFC');

QString identifier()
{
    return QBNoteCheckboxStylerCheckedAttributeName.string();
}

void foldCompleted(EditedNote &note, NoteTextView *view)
{
    note.controller().foldTextWithAttributeName(QBNoteCheckboxStylerCheckedAttributeName,
                                                note.textStorage().fullRange(), view);
}

} // namespace

TEST(FoldingTest, ALineFeedAtTheEndStaysOutside)
{
    EditedNote note(0, u"a\n+ done #x\nb|");
    const QString text = note.text();
    foldCompleted(note, &note);
    EXPECT_EQ(note.textStorage().string(), QString(u"a\n"_s + kFold + u"\nb"_s));
    EXPECT_EQ(note.text(), text) << "a note is saved whole";
    EXPECT_EQ(note.marked(), u"a\n+ done #x\nb|"_s) << "the caret stays on its character";
    note.undoManager().undo();
    EXPECT_EQ(note.marked(), u"a\n+ done #x\nb|"_s);
    EXPECT_GT(note.textStorage().length(), 5);
}

TEST(FoldingTest, NothingIsFoldedWhereNothingIs)
{
    EditedNote note(0, u"a\n\n- open|");
    note.controller().foldTextInRange({2, 1}, identifier(), &note);
    note.controller().foldTextInRange({2, 0}, identifier(), &note);
    note.controller().foldTextInRange({90, 5}, identifier(), &note);
    foldCompleted(note, &note);
    note.controller().unfoldTextWithFoldIdentifier(identifier(), note.textStorage().fullRange(), &note);
    EXPECT_FALSE(note.undoManager().canUndo());
    EXPECT_EQ(note.marked(), u"a\n\n- open|"_s);
}

TEST(FoldingTest, EachStretchIsAFoldAndAllAreOpenedTogether)
{
    const QString text = u"+ a\nx\n+ b\n+ c\ny\n\t+ d"_s;
    for (const bool hasView : {true, false}) {
        EditedNote note(0, text);
        const NSAttributedString before = note.textStorage().attributedString();
        NoteTextView *view = hasView ? &note : nullptr;
        foldCompleted(note, view);
        EXPECT_EQ(note.textStorage().string(), QString(QString(kFold) + u"\nx\n"_s + kFold + u"\ny\n"_s + kFold));
        EXPECT_EQ(note.text(), text);
        EXPECT_EQ(note.undoManager().canUndo(), hasView);
        note.controller().unfoldTextWithFoldIdentifier(u"another"_s, note.textStorage().fullRange(), view);
        EXPECT_EQ(note.textStorage().length(), 9);
        note.controller().unfoldTextWithFoldIdentifier(identifier(), note.textStorage().fullRange(), view);
        EXPECT_EQ(note.textStorage().string(), before.string());
        EXPECT_EQ(note.text(), text);
        if (hasView) {
            note.undoManager().undo();
            EXPECT_EQ(note.textStorage().length(), 9) << "all folds are back in one step";
            note.undoManager().undo();
            EXPECT_EQ(note.textStorage().string(), before.string());
        }
    }
}

TEST(FoldingTest, AFoldedLineIsEditedAroundAndStaysFolded)
{
    EditedNote note(0, u"+ a\nx|");
    foldCompleted(note, &note);
    note.type(u" more"_s);
    note.pressReturn();
    note.type(u"* y"_s);
    EXPECT_EQ(note.text(), u"+ a\nx more\n* y"_s);
    EXPECT_EQ(note.textStorage().string().count(kFold), 2) << "the fold and a bullet";
    note.controller().unfoldTextWithFoldIdentifier(identifier(), note.textStorage().fullRange(), &note);
    EXPECT_EQ(note.marked(), u"+ a\nx more\n* y|"_s);
}

TEST(FoldingTest, AFoldThatLostItsAttributesIsOpenedToItsText)
{
    EditedNote note(0, u"+ a\nx|");
    foldCompleted(note, &note);
    const auto value = note.textStorage().attributedString().attribute(NSAttachmentAttributeName, 0);
    const auto copy = value.as<QBFoldTextAttachment>()->copy();
    note.textStorage().addAttribute(NSAttachmentAttributeName, copy, {0, 1});
    note.run([&] {
        note.controller().unfoldFoldAttachment(static_cast<QBFoldTextAttachment &>(*copy), {0, 1}, &note);
    });
    EXPECT_EQ(note.text(), u"+ a\nx"_s);
}

} // namespace quib::tests
