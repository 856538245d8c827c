#pragma once

#include "QBNoteAttachmentTextStyler.h"

#include <QStringList>

/// Line separators: three dashes alone on a line; a rule stands for them. They get no attributes of their own: the
/// names are for those who ask for them.
class QBNoteLineSeparatorStyler : public QBNoteAttachmentTextStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static QString stylerMarker();
    /// What commands put around the marker, which needs a line of its own.
    [[nodiscard]] static QStringList stylerEnclosingStrings();
    [[nodiscard]] static const NSAttributeName &stylerAttributeName();
    [[nodiscard]] static const NSAttributeName &stylerMarkerAttributeName();

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;

protected:
    /// 0 native, 1 Markdown.
    [[nodiscard]] virtual int syntax() const { return 0; }
    [[nodiscard]] const NSRegularExpression *attachmentRegularExpression() const override;
    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment>
    makeTextAttachment(const QString &representedText) const override;
    [[nodiscard]] bool isOwnTextAttachment(const QBNotesTextAttachment &attachment) const override;
    [[nodiscard]] quib::AttributeNameMask ownTextAttachmentClasses() const override;
};
