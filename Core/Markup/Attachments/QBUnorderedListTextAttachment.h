#pragma once

#include "QBNotesTextAttachment.h"

/// The bullet of a list's line; stands for "*" or "•", and in the Markdown syntax for "-" and "+" too.
class QBUnorderedListTextAttachment : public QBNotesTextAttachment
{
public:
    using QBNotesTextAttachment::QBNotesTextAttachment;

    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment> copy() const override;
    [[nodiscard]] QString className() const override;

    static constexpr bool kIsFullLine = true;
    [[nodiscard]] bool isFullLine() const override { return kIsFullLine; }
    [[nodiscard]] NSRange
    extraAttachmentRangeForAttachmentRange(NSRange range, const NSAttributedString &inAttributedString) const override;
    [[nodiscard]] QSizeF attachmentSize() const override;
    [[nodiscard]] double attachmentBaselineOffset() const override;
    void drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const override;

protected:
    [[nodiscard]] double attachmentRightSpacing() const override;
};
