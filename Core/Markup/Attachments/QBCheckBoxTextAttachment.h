#pragma once

#include "QBNotesTextAttachment.h"

/// The box of a todo. Its state and its syntax are its represented text and nothing else: "-" or "+", and "- [ ]" or
/// "- [x]" in the Markdown syntax, so a toggled box stays in the syntax it has.
class QBCheckBoxTextAttachment : public QBNotesTextAttachment
{
public:
    using QBNotesTextAttachment::QBNotesTextAttachment;

    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment> copy() const override;
    [[nodiscard]] QString className() const override;

    static constexpr bool kIsFullLine = true;
    [[nodiscard]] bool isFullLine() const override { return kIsFullLine; }
    [[nodiscard]] NSRange
    extraAttachmentRangeForAttachmentRange(NSRange range, const NSAttributedString &inAttributedString) const override;

    [[nodiscard]] bool isChecked() const;
    [[nodiscard]] bool isMarkdown() const;
    // Each tells the listener, even where the state is the same.
    void check();
    void uncheck();
    void toggleCheck();

    [[nodiscard]] QSizeF attachmentSize() const override;
    [[nodiscard]] double attachmentBaselineOffset() const override;
    void drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const override;

protected:
    [[nodiscard]] double attachmentRightSpacing() const override;
};
