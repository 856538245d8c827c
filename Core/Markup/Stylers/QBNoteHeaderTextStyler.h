#pragma once

#include "QBNoteAttachmentTextStyler.h"

#include <QHash>

/// Headers: one to six hashes and a blank at a line's start; a badge stands for the hashes. The rest of the line is
/// guarded from all later stylers, so a header has no markup inside, but for code, which comes before.
class QBNoteHeaderTextStyler final : public QBNoteAttachmentTextStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static QString stylerMarker();
    [[nodiscard]] static QString stylerMarkerForHeaderLevel(int level);
    [[nodiscard]] static const NSAttributeName &stylerAttributeName();
    [[nodiscard]] static const NSAttributeName &stylerMarkerAttributeName();

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;
    void removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                             NSTextStorage *textStorage) override;
    void applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range, NSTextStorage *textStorage) override;
    void cleanStylerCache() override;

    /// What a header's line is set in; kept by the attachment's text.
    /// Shape: empty without a theme.
    [[nodiscard]] quib::AttributeSet paragraphAttributesForAttachment(const QBNotesTextAttachment &attachment,
                                                                      NSRange attachmentRange,
                                                                      const NSAttributedString &attributedString);
    /// Where the line begins when the badge hangs to the left of the text's column.
    /// Requires: a theme.
    [[nodiscard]] double firstLineIndendForForAttributeRange(NSRange range,
                                                             const NSAttributedString &attributedString) const;

protected:
    [[nodiscard]] const NSRegularExpression *attachmentRegularExpression() const override;
    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment>
    makeTextAttachment(const QString &representedText) const override;
    [[nodiscard]] bool isOwnTextAttachment(const QBNotesTextAttachment &attachment) const override;
    [[nodiscard]] quib::AttributeNameMask ownTextAttachmentClasses() const override;

private:
    QHash<QString, quib::AttributeSet> m_paragraphAttributes;
    quint64 m_cacheGeneration = 0; ///< the state of the theme that they hold for
};
