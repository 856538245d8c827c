#pragma once

#include "QBNoteAttachmentTextStyler.h"

#include <QStringList>

/// Markers of stored files, "[file:id/name]". An attachment stands for the whole marker and stays where it is: it
/// carries what was loaded for it, so it is neither cached nor made anew because of what is typed around it.
class QBNoteGenericFileStyler : public QBNoteAttachmentTextStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    /// What stands before and behind identifier and name.
    [[nodiscard]] static QStringList stylerMarkerComponents();
    /// "id/name": what stands between the first ":" and the last unit; empty where there is no ":".
    [[nodiscard]] static QString pathComponentFromTextRepresentation(const QString &textRepresentation);
    /// The name, that is what stands between the first "/" and the closing "]", as the query of a URL has it; empty
    /// where there is no "/".
    [[nodiscard]] static QString filenameFromAttachmentRepresentedString(const QString &representedString);

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;
    /// Removes the markers in a range, and each line that held nothing else. range afterwards covers what is left.
    void removeInString(QString &string, NSRange &range) const;

protected:
    [[nodiscard]] std::optional<quib::AttributeSet>
    attributesWithTextAttachmentForRepresentedText(const QString &representedText) override;
    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment>
    makeTextAttachment(const QString &representedText) const override;
    [[nodiscard]] bool isOwnTextAttachment(const QBNotesTextAttachment &attachment) const override;
    [[nodiscard]] quib::AttributeNameMask ownTextAttachmentClasses() const override;
    [[nodiscard]] int stylerRegularExpressionRepresentedTextGroupIndex() const override;
    [[nodiscard]] bool shouldCacheTextAttachment() const override { return false; }
    /// All of them.
    void enumerateValidAttachmentsInAttributedString(const NSAttributedString &attributedString, NSRange range,
                                                     const AttachmentBlock &usingBlock) const override;
    /// What the theme has for the attachment's one unit; empty without a theme.
    [[nodiscard]] virtual quib::AttributeSet attachmentAttributes() const;
};
