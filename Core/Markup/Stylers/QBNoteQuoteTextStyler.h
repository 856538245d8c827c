#pragma once

#include "MarkerParagraphStyles.h"
#include "QBNoteTextStyler.h"

/// Quotes: ">" in the first column and a blank. The marker stays text and is not seen; the layout draws a bar there.
class QBNoteQuoteTextStyler final : public QBNoteTextStyler
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
