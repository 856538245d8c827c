#pragma once

#include <Markup/Editing/NoteTextView.h>
#include <Markup/QBNoteTextKitStack.h>

#include <QString>
#include <QStringView>

namespace quib::tests {

/// A text with a selection in one line of a test: "|" is a caret, "[" and "]" enclose a selection. A "\\" before one of
/// them makes it a character of the text.
struct MarkedText
{
    QString text;
    NSRange selection;

    [[nodiscard]] static MarkedText parsed(QStringView marked);
    [[nodiscard]] QString printed() const;
};

/// A text view without a window: it holds a note in the engine.
class FakeTextView : public NoteTextView
{
public:
    explicit FakeTextView(int syntax, QStringView marked = {});

    [[nodiscard]] NSRange selectedRange() const override { return m_selection; }
    void setSelectedRange(NSRange range) override { m_selection = range; }
    [[nodiscard]] QBNotesTextStorage &textStorage() override { return m_stack.noteTextStorage(); }
    [[nodiscard]] NSUndoManager &undoManager() override { return m_undoManager; }
    void setNeedsDisplay() override { ++m_displays; }

    [[nodiscard]] QBNoteTextKitStack &stack() { return m_stack; }
    [[nodiscard]] int displays() const { return m_displays; }
    /// The note's text with the selection where it stands in it, attachments as what they stand for.
    [[nodiscard]] QString marked();
    /// The buffer with the selection, an attachment as U+FFFC.
    [[nodiscard]] QString markedBuffer();
    /// Selects what the notation says of the note's text; the text stays. Requires: it is the note's text.
    void select(QStringView marked);

private:
    /// A place of the note's text as one of the buffer, and back.
    [[nodiscard]] qint64 bufferPlace(qint64 textPlace);
    [[nodiscard]] qint64 textPlace(qint64 bufferPlace);

    QBNoteTextKitStack m_stack;
    NSUndoManager m_undoManager;
    NSRange m_selection;
    int m_displays = 0;
};

} // namespace quib::tests
