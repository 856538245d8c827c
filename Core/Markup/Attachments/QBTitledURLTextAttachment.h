#pragma once

#include "QBNotesTextAttachment.h"

/// The link symbol that stands for the URL of a "[title](url)", between the parentheses.
class QBTitledURLTextAttachment : public QBNotesTextAttachment
{
public:
    using QBNotesTextAttachment::QBNotesTextAttachment;

    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment> copy() const override;
    [[nodiscard]] QString className() const override;

    static constexpr bool kIsInline = true;
    [[nodiscard]] bool isInline() const override { return kIsInline; }
    [[nodiscard]] NSRange
    extraAttachmentRangeForAttachmentRange(NSRange range, const NSAttributedString &inAttributedString) const override;
    [[nodiscard]] QSizeF attachmentSize() const override;
    [[nodiscard]] double attachmentBaselineOffset() const override;
    void drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const override;

protected:
    [[nodiscard]] double attachmentLeftSpacing() const override;
    [[nodiscard]] double attachmentRightSpacing() const override;
    /// The side of the symbol. Units: points.
    [[nodiscard]] virtual double symbolSize() const;
    virtual void drawSymbol(quib::GraphicsContext &context, const QRectF &rect) const;
};
