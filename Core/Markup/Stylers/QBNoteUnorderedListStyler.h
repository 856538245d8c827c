#pragma once

#include "MarkerParagraphStyles.h"
#include "QBNoteAttachmentTextStyler.h"

/// Items of lists: "* " or "• ", indented at will; a bullet stands for the sign.
class QBNoteUnorderedListStyler : public QBNoteAttachmentTextStyler
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
    void cleanStylerCache() override;

    /// The layout of a line whose marker hangs to the left of the text's column; null without a theme.
    [[nodiscard]] std::shared_ptr<NSParagraphStyle>
    attachmentParagraphStyleForAttributeRange(NSRange range, const NSAttributedString &attributedString,
                                              NSRange paragraphRange);

protected:
    /// 0 native, 1 Markdown.
    [[nodiscard]] virtual int syntax() const { return 0; }
    [[nodiscard]] const NSRegularExpression *attachmentRegularExpression() const override;
    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment>
    makeTextAttachment(const QString &representedText) const override;
    [[nodiscard]] bool isOwnTextAttachment(const QBNotesTextAttachment &attachment) const override;
    [[nodiscard]] quib::AttributeNameMask ownTextAttachmentClasses() const override;

private:
    quib::MarkerParagraphStyles m_paragraphStyles;
};
