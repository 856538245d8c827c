#pragma once

#include "QBNotesTextAttachment.h"

#include <Graphics/NSFont.h>

/// The badge that shows a header's level and stands for its "#" to "######". The level is the text, so a copy keeps it.
class QBHeaderTextAttachment : public QBNotesTextAttachment
{
public:
    using QBNotesTextAttachment::QBNotesTextAttachment;

    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment> copy() const override;
    [[nodiscard]] QString className() const override;

    static constexpr bool kIsFullLine = true;
    [[nodiscard]] bool isFullLine() const override { return kIsFullLine; }
    [[nodiscard]] NSRange
    extraAttachmentRangeForAttachmentRange(NSRange range, const NSAttributedString &inAttributedString) const override;

    /// 1 to 6; 0 for a text that is no header's marker.
    [[nodiscard]] int headerLevel() const;
    /// "H1" to "H6", or empty.
    [[nodiscard]] QString headerStringName() const;
    /// The title font of the level. Levels 4 to 6 have that of 3, although their lines are set smaller.
    [[nodiscard]] NSFont headerFont() const;

    [[nodiscard]] QString baseCacheKey() const override;
    [[nodiscard]] QSizeF attachmentSize() const override;
    [[nodiscard]] double attachmentBaselineOffset() const override;
    void drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const override;

protected:
    [[nodiscard]] double attachmentRightSpacing() const override;

private:
    [[nodiscard]] NSFont badgeFont() const;
};
