#pragma once

#include "QBNoteTextStyler.h"

#include <QString>

/// Code blocks: what stands between two fences. The whole block is set in the monospaced font on a background, and its
/// body is guarded from all later stylers. The language's name behind the opening fence carries an identifier that
/// stays the same through restyling, so that a highlighter at work finds its block again.
class QBNoteCodeTextStyler final : public QBNoteTextStyler
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

    // What the pieces of a block get

    /// The body.
    [[nodiscard]] quib::AttributeSet textAttributes() const;
    /// The fences.
    [[nodiscard]] quib::AttributeSet markerAttributes() const;
    /// The language's name, on top of the body's.
    [[nodiscard]] quib::AttributeSet languageNameAttributesWithUUID(const QString &uuid) const;

private:
    [[nodiscard]] quib::AttributeSet blockAttributes() const;
};
