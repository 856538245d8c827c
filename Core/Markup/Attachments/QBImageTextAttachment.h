#pragma once

#include "QBGenericFileTextAttachment.h"

#include <Graphics/NSImage.h>

/// A picture. Stands for the whole marker "[image:id/name]". Without a picture it keeps the room that the picture will
/// take; without a size it is an empty file.
class QBImageTextAttachment : public QBGenericFileTextAttachment,
                              public std::enable_shared_from_this<QBImageTextAttachment>
{
public:
    using QBGenericFileTextAttachment::QBGenericFileTextAttachment;

    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment> copy() const override;
    [[nodiscard]] QString className() const override;

    static constexpr bool kIsFullLine = true;
    [[nodiscard]] bool isFullLine() const override { return kIsFullLine; }
    static constexpr bool kIsInline = false;
    [[nodiscard]] bool isInline() const override { return kIsInline; }
    [[nodiscard]] NSRange
    extraAttachmentRangeForAttachmentRange(NSRange range, const NSAttributedString &inAttributedString) const override;

    /// The whole picture's size. Units: pixels.
    [[nodiscard]] QSizeF originalImageSize() const { return m_originalImageSize; }
    void setOriginalImageSize(QSizeF originalImageSize) { m_originalImageSize = originalImageSize; }
    /// What is drawn, which may be a smaller copy; empty until it is loaded.
    [[nodiscard]] const NSImage &attachmentImage() const { return m_attachmentImage; }
    void setAttachmentImage(const NSImage &attachmentImage) { m_attachmentImage = attachmentImage; }
    /// The size in the text.
    [[nodiscard]] QSizeF attachmentImageSize() const { return m_attachmentImageSize; }
    void setAttachmentImageSize(QSizeF attachmentImageSize) { m_attachmentImageSize = attachmentImageSize; }

    /// Empty: the sizes of pictures differ and are not cached.
    [[nodiscard]] QString baseCacheKey() const override { return {}; }
    [[nodiscard]] QSizeF attachmentSize() const override;
    [[nodiscard]] double attachmentBaselineOffset() const override;
    void drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const override;

private:
    void drawPlaceholder(quib::GraphicsContext &context, const QRectF &rect, double corner) const;

    QSizeF m_originalImageSize;
    NSImage m_attachmentImage;
    QSizeF m_attachmentImageSize;
};
