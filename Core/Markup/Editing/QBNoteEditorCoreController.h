#pragma once

#include "NoteTextView.h"

#include <Foundation/NSRange.h>
#include <Text/NSAttributeName.h>

#include <QString>

#include <functional>

class QBCheckBoxTextAttachment;
class QBFoldTextAttachment;
class QBNoteTextKitStack;
class QBNotesTextAttachment;

/// What an editor does with a note's text beyond painting it: it continues lists, indents, ticks boxes, moves
/// paragraphs, folds. It changes the text through the view alone, so that everything can be undone. Owned by the
/// editor, which owns the stack too; main queue. Requires, throughout: a view handed in shows the stack's text.
class QBNoteEditorCoreController
{
public:
    /// The stack outlives the controller.
    explicit QBNoteEditorCoreController(QBNoteTextKitStack &noteTextKitStack)
        : m_noteTextKitStack(noteTextKitStack)
    {
    }

    // After each change

    /// Styles again what the last change calls for. While undoing or redoing, in place: the attachments of then have
    /// come back already. Otherwise attachments come and go as a step that can be undone, the selection staying on its
    /// text, and numbers of lists are put in order.
    void performStylingInTextView(quib::NoteTextView &textView);
    /// Numbers the ordered list at the selection anew, as a step that can be undone, unless its numbers are in order.
    void reorderOrderedListInTextView(quib::NoteTextView &textView);
    /// Takes a selection out of the middle of a tag: a caret at the tag's end goes behind it, so that what is typed
    /// next is no part of it, and a selection takes in the whole tags it begins or ends in.
    void correctTagSelectionAfterInsertionInTextView(quib::NoteTextView &textView);

    // Keys: each tells whether it has dealt with the key. Where it has, the text was changed and waits for its styling.

    /// Return: a line of a list, a quote or a to-do is followed by another one, and an empty one is ended.
    [[nodiscard]] bool matchRepeatableStyleOnNewLineInTextView(quib::NoteTextView &textView);
    /// Tab: a line of a list or a to-do goes in or out by a level.
    [[nodiscard]] bool indentTabbableStyle(bool backwards, quib::NoteTextView &textView);

    // Lines: QBNoteEditorCoreController+Lines.cpp. What is changed waits for its styling.

    /// Gives each selected line a leading tab, or takes a tab or up to four blanks off each.
    void shiftSelectionRight(bool right, quib::NoteTextView &inTextView);
    /// Exchanges the selected lines with the one above, or with the one below when up is false; the selection goes with
    /// them. Below the text's last line, when it is an empty one, a new line is made.
    void moveParagraphUp(bool up, quib::NoteTextView &inTextView);

    // To-dos. A change can be undone; the text's length stays, what boxes stand for changes.

    [[nodiscard]] bool containsCheckboxesInRange(NSRange range) const;
    void toggleCheckboxAttachment(QBCheckBoxTextAttachment &attachment, qint64 atIndex, quib::NoteTextView &inTextView);
    void setCheckboxAttachmentsState(bool state, NSRange InRange, quib::NoteTextView &inTextView);

    // Folding: QBNoteEditorCoreController+Folding.cpp. A fold stands for its text, so that the note is saved whole.
    // Without a view the text changes for good; with one the change can be undone.

    /// Folds every stretch that has an attribute, each for itself, under the attribute's name.
    void foldTextWithAttributeName(const NSAttributeName &name, NSRange inRange, quib::NoteTextView *textView);
    /// Shape: a line feed at the range's end stays outside of the fold; nothing is folded where nothing else is left.
    void foldTextInRange(NSRange range, const QString &foldIdentifier, quib::NoteTextView *textView);
    void unfoldTextWithFoldIdentifier(const QString &foldIdentifier, NSRange inRange, quib::NoteTextView *textView);
    void unfoldFoldAttachment(QBFoldTextAttachment &attachment, NSRange attachmentRange, quib::NoteTextView *textView);

    // Ranges

    /// Takes the links into this program off a stretch; those to the outside stay.
    void disableInternalURLsInRange(NSRange range);
    /// A range with all that belongs to the attachments in it, for selecting, copying and deleting: whole lines where
    /// one of them begins a line.
    [[nodiscard]] NSRange extraAttachmentsRangeForRange(NSRange range) const;
    /// What goes when a range is taken out, and is copied with it: what belongs to the attachments in it, but of a line
    /// that one of them begins no more than the marker with its blank. The text behind it was not chosen.
    [[nodiscard]] NSRange rangeTakenWithRange(NSRange range) const;

private:
    /// A range with those of the attachments in it.
    [[nodiscard]] NSRange
    rangeWidenedInRange(NSRange range,
                        const std::function<NSRange(const QBNotesTextAttachment &attachment, NSRange place)> &by) const;
    /// Puts a text in the place of a range, in the view or in the text alone; the selection stays on its characters.
    void replaceCharactersInRange(NSRange range, const NSAttributedString &withAttributedString,
                                  quib::NoteTextView *inTextView);

    QBNoteTextKitStack &m_noteTextKitStack;
};
