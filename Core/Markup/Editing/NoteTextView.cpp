#include "NoteTextView.h"

#include <Markup/QBNotesTextStorage.h>

namespace quib {

NoteTextView::~NoteTextView() = default;

void NoteTextView::insertText(const QString &text, NSRange replacementRange)
{
    QBNotesTextStorage &storage = textStorage();
    const NSRange range = rangeCutToLength(replacementRange, storage.length());
    const NSAttributedString oldText = storage.attributedSubstringFromRange(range, /*expandTextAttachment=*/false);
    registerUndo({range.location, text.size()}, oldText);
    // A null string would change nothing.
    storage.replaceCharactersInRange(range, text.isNull() ? QStringView(u"") : QStringView(text));
    setSelectedRange({range.location + text.size(), 0});
}

void NoteTextView::replaceCharactersInrange(NSRange range, const NSAttributedString &withAttributedString,
                                            NSRange selectRange)
{
    QBNotesTextStorage &storage = textStorage();
    const NSRange cut = rangeCutToLength(range, storage.length());
    registerUndo({cut.location, withAttributedString.length()},
                 storage.attributedSubstringFromRange(cut, /*expandTextAttachment=*/false));
    static_cast<NSTextStorage &>(storage).replaceCharactersInRange(cut, withAttributedString);
    if (selectRange.location != NSNotFound) {
        setSelectedRange(rangeCutToLength(selectRange, storage.length()));
    }
}

void NoteTextView::registerUndo(NSRange newRange, const NSAttributedString &oldText)
{
    const NSRange selection = selectedRange();
    undoManager().registerUndoWithTarget(this, [this, newRange, oldText, selection] {
        replaceCharactersInrange(newRange, oldText, selection);
        didUndoOrRedo();
    });
}

} // namespace quib
