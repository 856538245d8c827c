#pragma once

#include "MarkerParagraphStyles.h"
#include "QBNoteAttachmentTextStyler.h"

namespace quib {
class AttributeLayers;
}

/// Todos of the native syntax: "- " open and "+ " done, indented at will; a box stands for the sign. What is done is
/// struck through.
class QBNoteCheckBoxStyler : public QBNoteAttachmentTextStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static const NSRegularExpression &uncheckedRegularExpression();
    [[nodiscard]] static const NSRegularExpression &checkedRegularExpression();
    [[nodiscard]] static QString stylerMarker();
    [[nodiscard]] static QString stylerMarkerChecked(bool isChecked);
    [[nodiscard]] static const NSAttributeName &stylerAttributeName();
    [[nodiscard]] static const NSAttributeName &stylerMarkerAttributeName();
    [[nodiscard]] static const NSAttributeName &stylerCheckedAttributeName();

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
    void strike(const NSAttributedString &text, NSRange range, quib::AttributeLayers &layers) const;

    quib::MarkerParagraphStyles m_paragraphStyles;
};
