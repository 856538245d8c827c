#pragma once

#include "QBNoteStylerWithAttachmentsSpacers.h"

#include <QString>

#include <optional>

/// Tags, `#tag` and `#a tag#`. Between a pair of spacers, which go out and come in again at each pass, so that no edit
/// leaves one behind; guarded from all later stylers.
class QBNoteTagStyler final : public QBNoteStylerWithAttachmentsSpacers
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static QString stylerMarker();
    [[nodiscard]] static const NSAttributeName &stylerAttributeName();
    [[nodiscard]] static const NSAttributeName &stylerMarkerAttributeName();

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;
    void removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                             NSTextStorage *textStorage) override;
    void applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range, NSTextStorage *textStorage) override;

protected:
    [[nodiscard]] const NSAttributeName *spacerAttributeName() const override;
    void enumerateValidAttachmentsInAttributedString(const NSAttributedString &attributedString, NSRange range,
                                                     const AttachmentBlock &usingBlock) const override;

private:
    struct Attributes
    {
        quib::AttributeSet tag;
        quib::AttributeSet marker;
        std::optional<QString> name{}; ///< the last tag's; its neighbours often have the same
        quib::AttributeValue link{};   ///< of that name; nothing where it has none
        bool hasMarks = false;         ///< whether marks that go with tags stand in the range of the pass
    };
    [[nodiscard]] Attributes attributes() const;
    /// Paints a tag with its two spacers.
    static void styleTag(NSMutableAttributedString &attributedString, NSRange range, Attributes &attributes);
};
