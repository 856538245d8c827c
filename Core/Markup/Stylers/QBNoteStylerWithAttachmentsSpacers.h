#pragma once

#include "QBNoteAttachmentTextStyler.h"

#include <array>

/// A styler that puts an empty attachment before and behind its construct and replaces nothing. Spacers that no pattern
/// justifies go out and those of the matches come in; one that would come back to the very place it left stays, and is
/// only told to have gone and come. All that open a construct are one attachment, all that close one are another: a
/// spacer has nothing of its own, and a text very many.
class QBNoteStylerWithAttachmentsSpacers : public QBNoteAttachmentTextStyler
{
public:
    void replaceTextAttachmentsInAttributedString(NSMutableAttributedString &attributedString, NSRange &range,
                                                  const ReplacementBlock &usingBlock) override;
    void addTextAttachmentsInAttributedString(NSMutableAttributedString &attributedString, NSRange &range,
                                              const ReplacementBlock &usingBlock) override;
    void cleanStylerCache() override;

protected:
    /// The spacers of a range, in order.
    [[nodiscard]] std::vector<qint64> placesOfSpacers(const NSAttributedString &attributedString, NSRange range) const;
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
    // Roles of a spacer. Neighbours have different ones, so that they never are one stretch of one attachment.
    static constexpr size_t kOpening = 0;
    static constexpr size_t kClosing = 1;
    /// Both by role.
    struct Spacers
    {
        quib::AttributeSet common; ///< beside the attachment
        std::array<std::shared_ptr<QBNotesTextAttachment>, 2> attachments;
        std::array<quib::AttributeSet, 2> attributes;
    };
    /// A spacer that stands somewhere, or that is wanted there.
    struct Spacer
    {
        qint64 place;
        size_t role;
    };
    /// That of a spacer which is not exactly as a new one would be.
    static constexpr size_t kNoRole = 2;
    class TextWithoutSpacers;

    /// The spacers that go out, in order; nullopt where one of them stands for a text.
    [[nodiscard]] std::optional<std::vector<Spacer>> spacersToRemove(const NSAttributedString &attributedString,
                                                                     NSRange range);
    /// Puts spacers around the matches in the text without some of its spacers, and takes those out.
    void replaceSpacers(const std::vector<Spacer> &removed, NSMutableAttributedString &attributedString, NSRange &range,
                        const ReplacementBlock &usingBlock);
    [[nodiscard]] quib::AttributeSet commonAttributes() const;
    [[nodiscard]] const Spacers &spacers();
    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment> spacerTemplate();

    /// Empty until the first are wanted in a theme.
    std::optional<Spacers> m_spacers;
};
