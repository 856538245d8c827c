#pragma once

#include "QBNoteAttachmentTextStyler.h"

/// Colour codes, `#12abEF`. A swatch goes in front; the code stays text.
class QBNoteColorStyler final : public QBNoteAttachmentTextStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static const NSAttributeName &stylerAttributeName();

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;
    void removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                             NSTextStorage *textStorage) override;
    void applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range, NSTextStorage *textStorage) override;

protected:
    [[nodiscard]] const NSRegularExpression *attachmentRegularExpression() const override;
    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment>
    makeTextAttachment(const QString &representedText) const override;
    [[nodiscard]] bool isOwnTextAttachment(const QBNotesTextAttachment &attachment) const override;
    [[nodiscard]] quib::AttributeNameMask ownTextAttachmentClasses() const override;
    [[nodiscard]] NSRange offsetMatchedRange(NSRange range, const QString &forMatchedString) const override;
    [[nodiscard]] bool shouldCacheTextAttachment() const override { return false; }
    /// When the code behind the swatch is no longer the swatch's.
    [[nodiscard]] bool shouldRemoveAttachment(const QBNotesTextAttachment &attachment,
                                              const NSAttributedString &inAttributedString, NSRange attachmentRange,
                                              NSRange editedRange) const override;
};
