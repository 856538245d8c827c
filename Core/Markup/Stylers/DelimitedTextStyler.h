#pragma once

#include "QBNoteTextStyler.h"

#include <span>

namespace quib {

/// Paints a content between two markers, groups 2, 1 and 3 of the pattern; the base of bold, italic, underline and
/// strike. Sets attributes only and guards nothing, so that such constructs nest.
class DelimitedTextStyler : public QBNoteTextStyler
{
public:
    void removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                             NSTextStorage *textStorage) override;
    void applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range, NSTextStorage *textStorage) override;

protected:
    struct Attributes
    {
        AttributeSet whole; ///< set first
        AttributeSet content;
        AttributeSet markers;
    };
    /// The same for each match of a pass.
    [[nodiscard]] virtual Attributes attributes() const = 0;
    /// The names that only this styler sets, and so takes away.
    [[nodiscard]] virtual std::span<const NSAttributeName> ownAttributeNames() const = 0;
};

} // namespace quib
