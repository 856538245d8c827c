#pragma once

#include "FakeTextView.h"

#include <Markup/Editing/QBNoteEditorCoreController.h>

#include <QStringView>

namespace quib::tests {

/// A note that is edited by keys, as in a window: each key is one step to undo, and the text is styled after each
/// change, after undoing and after redoing.
class EditedNote : public FakeTextView
{
public:
    explicit EditedNote(int syntax, QStringView marked = {});

    [[nodiscard]] QBNoteEditorCoreController &controller() { return m_controller; }
    /// What is saved.
    [[nodiscard]] QString text() { return textStorage().stringWithExpandedTextAttachments(); }

    // Keys. Each tells whether the controller has dealt with it.

    void type(const QString &text);
    bool pressReturn();
    void pressShiftReturn() { type(QStringLiteral("\n")); }
    bool pressTab(bool backwards = false);
    void pressBackspace();
    /// Runs a command that changes the text as one step to undo, and styles what it changed.
    template <typename Command> auto run(const Command &command)
    {
        struct Step
        {
            EditedNote &note;
            explicit Step(EditedNote &edited)
                : note(edited)
            {
                note.undoManager().beginUndoGrouping();
            }
            ~Step()
            {
                note.didChangeText();
                note.undoManager().endUndoGrouping();
            }
        };
        const Step step(*this);
        return command();
    }

    void didUndoOrRedo() override { didChangeText(); }

private:
    void didChangeText() { m_controller.performStylingInTextView(*this); }

    QBNoteEditorCoreController m_controller;
};

} // namespace quib::tests
