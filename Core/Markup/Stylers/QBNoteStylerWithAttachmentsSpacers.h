#pragma once

#include "QBNoteAttachmentTextStyler.h"

class QBSpacerTextAttachment;

/// A styler that puts an empty attachment before and behind its construct and replaces nothing. Spacers that no pattern
/// justifies go out and those of the matches come in; one that would come back to the very place it left stays, and is
/// only told to have gone and come.
class QBNoteStylerWithAttachmentsSpacers : public QBNoteAttachmentTextStyler
{
public:
    void replaceTextAttachmentsInAttributedString(NSMutableAttributedString &attributedString, NSRange &range,
                                                  const ReplacementBlock &usingBlock) override;
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
    /// The spacers that go out, in order; nullopt where one of them stands for a text.
    [[nodiscard]] std::optional<std::vector<NSRange>> spacersToRemove(const NSAttributedString &attributedString,
                                                                      NSRange range) const;
    /// Puts spacers around the matches in the text without some of its characters, and takes those out.
    void replaceSpacers(const std::vector<NSRange> &removed, NSMutableAttributedString &attributedString,
                        NSRange &range, const ReplacementBlock &usingBlock);
    /// What a spacer has beside its attachment.
    [[nodiscard]] quib::AttributeSet commonAttributes() const;
    [[nodiscard]] std::shared_ptr<QBSpacerTextAttachment> spacerTemplate();
    /// Gives a spacer that stays those of a new one.
    static void resetSpacer(NSMutableAttributedString &text, qint64 place, const quib::AttributeSet &common);
};
