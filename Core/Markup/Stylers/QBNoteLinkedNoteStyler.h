#pragma once

#include "QBNoteTitledUrlStyler.h"

/// A link to a note, or to another of the program's own URLs: `[title](quib...)`. Runs before the styler of titled
/// URLs, which does not see what an attachment stands for already.
class QBNoteLinkedNoteStyler final : public QBNoteTitledUrlStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static QStringList stylerMarkerComponents();

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;

protected:
    [[nodiscard]] const NSRegularExpression *attachmentRegularExpression() const override;
    [[nodiscard]] bool isOwnTextAttachment(const QBNotesTextAttachment &attachment) const override;
    [[nodiscard]] quib::AttributeNameMask ownTextAttachmentClasses() const override;
    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment>
    makeLinkAttachment(const QString &representedText) const override;
    [[nodiscard]] bool isStyledTextAttachment(const QBNotesTextAttachment &attachment) const override;
};
