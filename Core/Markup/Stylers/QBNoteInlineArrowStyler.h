#pragma once

#include "QBNoteAttachmentTextStyler.h"

/// Arrows, `->` and `<-`, between white space or punctuation. An attachment draws them; nothing else is set.
class QBNoteInlineArrowStyler final : public QBNoteAttachmentTextStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;

protected:
    [[nodiscard]] const NSRegularExpression *attachmentRegularExpression() const override;
    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment>
    makeTextAttachment(const QString &representedText) const override;
    [[nodiscard]] bool isOwnTextAttachment(const QBNotesTextAttachment &attachment) const override;
    [[nodiscard]] quib::AttributeNameMask ownTextAttachmentClasses() const override;
};
