#pragma once

#include "QBNoteGenericFileStyler.h"

#include <QList>
#include <QUrl>

/// Markers of stored pictures, "[image:id/name]".
class QBNoteImageStyler final : public QBNoteGenericFileStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static QStringList stylerMarkerComponents();

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;
    /// The files of the pictures in a range, in order, those without a file left out. For a "tiff" file stands a PNG of
    /// the picture in a temporary folder of its own; one that cannot be read stands for itself.
    [[nodiscard]] static QList<QUrl> imagesURLInAttributedString(const NSAttributedString &attributedString,
                                                                 NSRange range);

protected:
    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment>
    makeTextAttachment(const QString &representedText) const override;
    [[nodiscard]] bool isOwnTextAttachment(const QBNotesTextAttachment &attachment) const override;
    [[nodiscard]] quib::AttributeNameMask ownTextAttachmentClasses() const override;
    [[nodiscard]] quib::AttributeSet attachmentAttributes() const override;
};
