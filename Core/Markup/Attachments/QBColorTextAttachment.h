#pragma once

#include "QBNotesTextAttachment.h"

#include <Graphics/NSColor.h>

/// The swatch in front of a colour's code. Stands for no text, since the code behind it stays.
class QBColorTextAttachment : public QBNotesTextAttachment
{
public:
    using QBNotesTextAttachment::QBNotesTextAttachment;

    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment> copy() const override;
    [[nodiscard]] QString className() const override;

    static constexpr bool kIsInline = true;
    [[nodiscard]] bool isInline() const override { return kIsInline; }
    [[nodiscard]] bool needWrappingCharaters() const override { return true; }
    [[nodiscard]] NSRange
    extraAttachmentRangeForAttachmentRange(NSRange range, const NSAttributedString &inAttributedString) const override;

    /// The text behind the attachment that it belongs to; not in the represented text, since it stands there itself.
    [[nodiscard]] const QString &fullRepresentedText() const { return m_fullRepresentedText; }
    void setFullRepresentedText(const QString &fullRepresentedText) { m_fullRepresentedText = fullRepresentedText; }

    /// The colour of the code; black for a code that is none.
    [[nodiscard]] NSColor representedColor() const { return colorFromHEX(m_fullRepresentedText); }
    /// The three low bytes of a hexadecimal number, "#" passed over, as red, green and blue; opaque.
    [[nodiscard]] static NSColor colorFromHEX(const QString &string);

    [[nodiscard]] QSizeF attachmentSize() const override;
    [[nodiscard]] double attachmentBaselineOffset() const override;
    void drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const override;

protected:
    [[nodiscard]] double attachmentRightSpacing() const override;

private:
    QString m_fullRepresentedText;
};
