#pragma once

#include "QBNoteAttachmentTextStyler.h"

#include <QStringList>

/// A link with a title: `[title](url)`. A symbol stands for the URL; title and brackets stay text.
class QBNoteTitledUrlStyler : public QBNoteAttachmentTextStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static QStringList stylerMarkerComponents();
    [[nodiscard]] static const NSAttributeName &stylerAttributeName();
    /// The title, without its brackets, that belongs to an attachment; kNotFoundRange where none stands before it.
    [[nodiscard]] static NSRange titleRangeForAttachmentAtIndex(qint64 index,
                                                                const NSAttributedString &inAttributedString);
    /// The markup of a link, for commands that make one. A title loses its square brackets.
    [[nodiscard]] static QString titledURLForUrlString(const QString &urlString, const QString &title,
                                                       const QString &inString, NSRange atRange);

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;
    void removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                             NSTextStorage *textStorage) override;
    void applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range, NSTextStorage *textStorage) override;

protected:
    [[nodiscard]] const NSRegularExpression *attachmentRegularExpression() const override;
    [[nodiscard]] int stylerRegularExpressionRepresentedTextGroupIndex() const override;
    [[nodiscard]] int attachmentRegularExpressionTextGroupIndex() const override;
    [[nodiscard]] bool shouldCacheTextAttachment() const override { return false; }
    /// Null for a text that no URL comes out of.
    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment>
    makeTextAttachment(const QString &representedText) const override;
    [[nodiscard]] bool isOwnTextAttachment(const QBNotesTextAttachment &attachment) const override;
    [[nodiscard]] quib::AttributeNameMask ownTextAttachmentClasses() const override;
    [[nodiscard]] virtual std::shared_ptr<QBNotesTextAttachment>
    makeLinkAttachment(const QString &representedText) const;
    /// Whether a pass paints the link of an attachment. Linked notes have the same marks, so what this styler takes
    /// away it gives back to both; they are painted earlier as well, for the sake of the guards.
    [[nodiscard]] virtual bool isStyledTextAttachment(const QBNotesTextAttachment &attachment) const;
};
