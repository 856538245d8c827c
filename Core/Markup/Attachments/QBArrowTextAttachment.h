#pragma once

#include "QBNotesTextAttachment.h"

/// An arrow drawn in the place of "->" or "<-".
class QBArrowTextAttachment : public QBNotesTextAttachment
{
public:
    using QBNotesTextAttachment::QBNotesTextAttachment;

    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment> copy() const override;
    [[nodiscard]] QString className() const override;

    static constexpr bool kIsInline = true;
    [[nodiscard]] bool isInline() const override { return kIsInline; }
    [[nodiscard]] bool needWrappingCharaters() const override { return true; }
    [[nodiscard]] bool canBeDraggedAlone() const override { return true; }

    /// Points to the left.
    [[nodiscard]] bool isFlipped() const;

    [[nodiscard]] QSizeF attachmentSize() const override;
    [[nodiscard]] double attachmentBaselineOffset() const override;
    void drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const override;
};
