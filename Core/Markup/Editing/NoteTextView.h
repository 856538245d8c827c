#pragma once

#include <Foundation/NSRange.h>
#include <Text/NSAttributedString.h>
#include <Text/NSUndoManager.h>

#include <QString>

class QBNotesTextStorage;

namespace quib {

/// The view of a note's text as the logic of editing sees it: a text, a selection, and changes that can be undone. A
/// window implements what is shown; the changes themselves are made here, so that a view and its stand-in in tests
/// undo alike. Main queue.
class NoteTextView
{
public:
    NoteTextView() = default;
    NoteTextView(const NoteTextView &) = delete;
    NoteTextView &operator=(const NoteTextView &) = delete;
    virtual ~NoteTextView();

    [[nodiscard]] virtual NSRange selectedRange() const = 0;
    virtual void setSelectedRange(NSRange range) = 0;
    [[nodiscard]] virtual QBNotesTextStorage &textStorage() = 0;
    [[nodiscard]] virtual NSUndoManager &undoManager() = 0;
    /// Something that is drawn has changed without the text.
    virtual void setNeedsDisplay() = 0;
    /// A change was undone or done again: the time to style it. The undo manager says which.
    virtual void didUndoOrRedo() {}

    /// Puts plain text in the place of a range, as typing does: it takes the attributes that are there, and the caret
    /// goes behind it.
    void insertText(const QString &text, NSRange replacementRange);
    /// Puts a text in the place of a range. Undoing puts the old text back and the selection that was.
    /// Shape: a selectRange of not-found leaves the selection to the view; one past the text is cut to it.
    void replaceCharactersInrange(NSRange range, const NSAttributedString &withAttributedString,
                                  NSRange selectRange = kNotFoundRange);

private:
    void registerUndo(NSRange newRange, const NSAttributedString &oldText);
};

} // namespace quib
