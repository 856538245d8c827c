#pragma once

#include "QBNotesTextAttachment.h"

#include <Foundation/NSDate.h>

#include <QUrl>

#include <optional>

/// A file: its icon and its name on a card. Stands for the whole marker "[file:id/name]", which stays when the file's
/// record is missing; the card is then an empty one.
class QBGenericFileTextAttachment : public QBNotesTextAttachment
{
public:
    using QBNotesTextAttachment::QBNotesTextAttachment;

    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment> copy() const override;
    [[nodiscard]] QString className() const override;

    static constexpr bool kIsInline = true;
    [[nodiscard]] bool isInline() const override { return kIsInline; }
    [[nodiscard]] bool canBeDraggedAlone() const override { return true; }

    /// Empty where the file is not known.
    [[nodiscard]] const QUrl &fileURL() const { return m_fileURL; }
    void setFileURL(const QUrl &fileURL) { m_fileURL = fileURL; }
    [[nodiscard]] const QString &filename() const { return m_filename; }
    void setFilename(const QString &filename) { m_filename = filename; }
    [[nodiscard]] const std::optional<NSDate> &modificationDate() const { return m_modificationDate; }
    void setModificationDate(const std::optional<NSDate> &modificationDate) { m_modificationDate = modificationDate; }

    [[nodiscard]] QSizeF attachmentSize() const override;
    [[nodiscard]] double attachmentBaselineOffset() const override;
    void drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const override;

private:
    void drawSheet(quib::GraphicsContext &context, const QRectF &rect) const;

    QUrl m_fileURL;
    QString m_filename;
    std::optional<NSDate> m_modificationDate;
};
