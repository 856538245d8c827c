#include "QBNoteCodeHighlightTextStyler.h"

#include "QBNoteCodeHighlighting.h"

void QBNoteCodeHighlightTextStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                                 NSTextStorage * /*textStorage*/)
{
    if (m_delegate != nullptr) {
        m_delegate->highlightSyntaxInAttributedString(attributedString, range);
    }
}
