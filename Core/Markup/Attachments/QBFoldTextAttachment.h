#pragma once

#include "QBNotesTextAttachment.h"

/// A stretch of text that is folded away. The represented text is its plain form, so a note is saved whole while parts
/// of it are folded.
class QBFoldTextAttachment : public QBNotesTextAttachment
{
public:
    using QBNotesTextAttachment::QBNotesTextAttachment;

    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment> copy() const override;
    [[nodiscard]] QString className() const override;

    static constexpr bool kIsInline = true;
    [[nodiscard]] bool isInline() const override { return kIsInline; }
    [[nodiscard]] bool canBeDraggedAlone() const override { return true; }

    /// What the fold was made for; folds of one kind are opened together.
    [[nodiscard]] const QString &foldIdentifier() const { return m_foldIdentifier; }
    void setFoldIdentifier(const QString &foldIdentifier) { m_foldIdentifier = foldIdentifier; }
    /// The folded text as it was, attachments included.
    [[nodiscard]] const NSAttributedString &representedAttributedString() const
    {
        return m_representedAttributedString;
    }
    void setRepresentedAttributedString(const NSAttributedString &representedAttributedString)
    {
        m_representedAttributedString = representedAttributedString;
    }

    [[nodiscard]] QSizeF attachmentSize() const override;
    [[nodiscard]] double attachmentBaselineOffset() const override;
    void drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const override;

private:
    QString m_foldIdentifier;
    NSAttributedString m_representedAttributedString;
};
