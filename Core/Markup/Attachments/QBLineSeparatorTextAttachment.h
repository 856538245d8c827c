#pragma once

#include "QBNotesTextAttachment.h"

/// The rule across the text's column that stands for "---" or the like.
class QBLineSeparatorTextAttachment : public QBNotesTextAttachment
{
public:
    using QBNotesTextAttachment::QBNotesTextAttachment;

    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment> copy() const override;
    [[nodiscard]] QString className() const override;

    static constexpr bool kIsFullLine = true;
    [[nodiscard]] bool isFullLine() const override { return kIsFullLine; }
    [[nodiscard]] bool canBeDraggedAlone() const override { return true; }
    [[nodiscard]] QSizeF attachmentSize() const override;
    [[nodiscard]] double attachmentBaselineOffset() const override;
    void drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const override;
};
