#pragma once

#include "QBNoteAttachmentTextStyler.h"

/// A styler that puts an empty attachment before and behind its construct and replaces nothing.
class QBNoteStylerWithAttachmentsSpacers : public QBNoteAttachmentTextStyler
{
public:
    void addTextAttachmentsInAttributedString(NSMutableAttributedString &attributedString, NSRange &range,
                                              const ReplacementBlock &usingBlock) override;

protected:
    /// What marks the spacers; null for none.
    [[nodiscard]] virtual const NSAttributeName *spacerAttributeName() const { return nullptr; }
    [[nodiscard]] virtual int prefixAttachmentRegularExpressionTextGroupIndex() const { return 1; }
    [[nodiscard]] virtual int suffixAttachmentRegularExpressionTextGroupIndex() const { return 1; }
    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment>
    makeTextAttachment(const QString &representedText) const override;
    [[nodiscard]] bool isOwnTextAttachment(const QBNotesTextAttachment &attachment) const override;
    [[nodiscard]] quib::AttributeNameMask ownTextAttachmentClasses() const override;
    void enumerateValidAttachmentsInAttributedString(const NSAttributedString &attributedString, NSRange range,
                                                     const AttachmentBlock &usingBlock) const override;

private:
    [[nodiscard]] quib::AttributeSet spacerAttributes(const quib::AttributeSet &common);
};
