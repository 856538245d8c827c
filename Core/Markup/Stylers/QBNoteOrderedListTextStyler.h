#pragma once

#include "MarkerParagraphStyles.h"
#include "QBNoteTextStyler.h"

/// Numbered items of lists: digits, a point and a blank, indented at will. The number stays text and is coloured;
/// numbering anew is an edit and not a matter of style.
class QBNoteOrderedListTextStyler final : public QBNoteTextStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static QString stylerMarker();
    [[nodiscard]] static const NSAttributeName &stylerAttributeName();
    [[nodiscard]] static const NSAttributeName &stylerMarkerAttributeName();

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;
    void removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                             NSTextStorage *textStorage) override;
    void applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range, NSTextStorage *textStorage) override;
    void cleanStylerCache() override { m_paragraphStyles.clear(); }

    /// The layout of a line whose marker hangs to the left of the text's column; null without a theme.
    [[nodiscard]] std::shared_ptr<NSParagraphStyle>
    attachmentParagraphStyleForAttributeRange(NSRange range, const NSAttributedString &attributedString,
                                              NSRange paragraphRange);

private:
    quib::MarkerParagraphStyles m_paragraphStyles;
};
