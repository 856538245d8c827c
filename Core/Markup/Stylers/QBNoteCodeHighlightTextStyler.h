#pragma once

#include "QBNoteTextStyler.h"

class QBNoteCodeHighlighting;

/// Hands a pass on to who colours code. Sets nothing by itself, and nothing at all until that is enabled.
class QBNoteCodeHighlightTextStyler final : public QBNoteTextStyler
{
public:
    /// Not owned; set back to null before it goes.
    void enableSyntaxHightlight(QBNoteCodeHighlighting *delegate) { m_delegate = delegate; }

    void applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range, NSTextStorage *textStorage) override;

private:
    QBNoteCodeHighlighting *m_delegate = nullptr;
};
