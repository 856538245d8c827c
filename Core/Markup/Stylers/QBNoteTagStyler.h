#pragma once

#include "QBNoteStylerWithAttachmentsSpacers.h"

#include <QString>

#include <optional>

namespace quib {
class AttributeAdditions;
}

/// Tags, `#tag` and `#a tag#`. Between a pair of spacers, none of which outlives its tag, so that no edit leaves one
/// behind; guarded from all later stylers.
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
        quib::AttributeSet tag; ///< with some identity, and with the last tag's link
        quib::AttributeSet marker;
        std::optional<QString> name{}; ///< the last tag's; its neighbours often have the same
    };
    /// Units: UTF-16 units, spacers included.
    static constexpr qint64 kShortestTag = 4;

    /// A link and twice an identity.
    static constexpr size_t kValuesOfPlace = 3;

    /// Whether two spacers stand around a tag: an edit may have left one alone, where a tag goes over the end of a
    /// paragraph, and the next is no end of its tag.
    [[nodiscard]] static bool isTag(const NSAttributedString &text, NSRange range);
    [[nodiscard]] Attributes attributes() const;
    /// Adds what a tag with its two spacers gets.
    static void addAttributesOfTag(const NSAttributedString &text, NSRange range, Attributes &attributes,
                                   quib::AttributeAdditions &additions);
    static void spreadMarks(NSMutableAttributedString &text, NSRange range);
};
