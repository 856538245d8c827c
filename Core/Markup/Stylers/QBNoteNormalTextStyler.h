#pragma once

#include "QBNoteTextStyler.h"

/// Resets the ground for all others, as the first of them: takes away what text has of its own and all guards, and sets
/// the theme's plain attributes. So nothing outlives the text that justified it, and no other styler has to restore
/// the plain font or colour.
class QBNoteNormalTextStyler final : public QBNoteTextStyler
{
public:
    void removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                             NSTextStorage *textStorage) override;
    void applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range, NSTextStorage *textStorage) override;
};
