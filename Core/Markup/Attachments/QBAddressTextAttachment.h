#pragma once

#include "QBNotesTextAttachment.h"

/// The pin in front of a postal address. Stands for no text, since the address behind it stays.
class QBAddressTextAttachment : public QBNotesTextAttachment
{
public:
    using QBNotesTextAttachment::QBNotesTextAttachment;

    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment> copy() const override;
    [[nodiscard]] QString className() const override;

    static constexpr bool kIsInline = true;
    [[nodiscard]] bool isInline() const override { return kIsInline; }
    [[nodiscard]] NSRange
    extraAttachmentRangeForAttachmentRange(NSRange range, const NSAttributedString &inAttributedString) const override;

    /// The text behind the attachment that it belongs to; not in the represented text, since it stands there itself.
    [[nodiscard]] const QString &fullRepresentedText() const { return m_fullRepresentedText; }
    void setFullRepresentedText(const QString &fullRepresentedText) { m_fullRepresentedText = fullRepresentedText; }

    [[nodiscard]] QSizeF attachmentSize() const override;
    [[nodiscard]] double attachmentBaselineOffset() const override;
    void drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const override;

protected:
    [[nodiscard]] double attachmentRightSpacing() const override;

private:
    QString m_fullRepresentedText;
};
