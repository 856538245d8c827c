#include "EditedNote.h"

#include <Markup/Attachments/QBCheckBoxTextAttachment.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

/// Toggles the box at the start of a line.
void toggleBoxAt(EditedNote &note, qint64 place)
{
    const auto value = note.textStorage().attributedString().attribute(NSAttachmentAttributeName, place);
    auto *box = value.as<QBCheckBoxTextAttachment>();
    ASSERT_NE(box, nullptr);
    note.controller().toggleCheckboxAttachment(*box, place, note);
}

} // namespace

TEST(CheckboxCommandsTest, AToggleChangesTheMarkerAlone)
{
    for (const int syntax : {0, 1}) {
        EditedNote note(syntax, syntax == 0 ? u"a\n- milk|" : u"a\n- \\[ \\] milk|");
        const QString before = note.text();
        const QString buffer = note.markedBuffer();
        toggleBoxAt(note, 2);
        EXPECT_EQ(note.text(), syntax == 0 ? u"a\n+ milk"_s : u"a\n- [x] milk"_s);
        EXPECT_EQ(note.markedBuffer(), buffer);
        EXPECT_EQ(note.displays(), 1);
        EXPECT_TRUE(
            note.textStorage().attributedString().attribute(QBNoteCheckboxStylerCheckedAttributeName, 4).boolValue());
        toggleBoxAt(note, 2);
        EXPECT_EQ(note.text(), before);
        EXPECT_FALSE(
            note.textStorage().attributedString().attribute(QBNoteCheckboxStylerCheckedAttributeName, 4).boolValue());
    }
}

TEST(CheckboxCommandsTest, AToggleIsUndoneAndDoneAgainAmongOtherEdits)
{
    EditedNote note(0, u"- milk|");
    toggleBoxAt(note, 0);
    note.type(u"!"_s);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(note.marked(), u"+ milk!|"_s);
        note.undoManager().undo();
        EXPECT_EQ(note.marked(), u"+ milk|"_s);
        note.undoManager().undo();
        EXPECT_EQ(note.marked(), u"- milk|"_s);
        note.undoManager().redo();
        note.undoManager().redo();
        note.setSelectedRange({note.textStorage().length(), 0});
    }
}

TEST(CheckboxCommandsTest, AllBoxesOfARangeGetOneState)
{
    EditedNote note(0, u"- a\n+ b\n* c\n\t- d\n- e");
    const NSRange range = {0, note.textStorage().length() - 2};
    EXPECT_TRUE(note.controller().containsCheckboxesInRange(range));
    EXPECT_FALSE(note.controller().containsCheckboxesInRange({8, 4}));
    EXPECT_FALSE(note.controller().containsCheckboxesInRange({0, 0}));
    note.controller().setCheckboxAttachmentsState(true, {0, 14}, note);
    EXPECT_EQ(note.text(), u"+ a\n+ b\n* c\n\t+ d\n- e"_s);
    note.controller().setCheckboxAttachmentsState(false, note.textStorage().fullRange(), note);
    EXPECT_EQ(note.text(), u"- a\n- b\n* c\n\t- d\n- e"_s);
    note.undoManager().undo();
    EXPECT_EQ(note.text(), u"+ a\n+ b\n* c\n\t+ d\n- e"_s) << "as one step";
    note.undoManager().undo();
    EXPECT_EQ(note.text(), u"- a\n+ b\n* c\n\t- d\n- e"_s);
}

} // namespace quib::tests
