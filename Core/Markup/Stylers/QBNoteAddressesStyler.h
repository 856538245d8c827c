#pragma once

#include "QBNoteAttachmentTextStyler.h"

/// Postal addresses, which become links to a map with a pin in front. Not among the stylers of a text: they are painted
/// when that is asked for.
class QBNoteAddressesStyler final : public QBNoteAttachmentTextStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static const NSAttributeName &stylerAttributeName();

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;
    void removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                             NSTextStorage *textStorage) override;
    void applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range, NSTextStorage *textStorage) override;

protected:
    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment>
    makeTextAttachment(const QString &representedText) const override;
    [[nodiscard]] bool isOwnTextAttachment(const QBNotesTextAttachment &attachment) const override;
    [[nodiscard]] quib::AttributeNameMask ownTextAttachmentClasses() const override;
    [[nodiscard]] int stylerRegularExpressionRepresentedTextGroupIndex() const override { return 0; }
    [[nodiscard]] NSRange offsetMatchedRange(NSRange range, const QString &forMatchedString) const override;
    [[nodiscard]] bool shouldCacheTextAttachment() const override { return false; }
};
