#include "QBNotesTextStorage.h"

#include <Markup/Stylers/CodeRanges.h>

void QBNotesTextStorage::codeSyntaxHighlighter(QBNoteCodeHighlighting & /*highlighter*/,
                                               const NSAttributedString &highlightedString, const QString &forCodeUUID)
{
    const NSRange range = quib::codeRangeForCodeUUID(forCodeUUID, attributedString());
    // An edit that was faster than the highlighter has asked for its own colours.
    if (!range.isFound() || attributedString().stringInRange(range) != highlightedString.string()) {
        return;
    }
    contents().replaceCharactersInRange(range, highlightedString);
    contents().fixAttributesInRange(range);
    edited(kEditedAttributes, range, 0);
}
