#pragma once

#include "QBNoteTextStyler.h"

#include <QString>

/// Code in a line: text between back ticks, guarded from all later stylers.
class QBNoteCodeInlineTextStyler final : public QBNoteTextStyler
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

    [[nodiscard]] quib::AttributeSet textAttributes() const;
    [[nodiscard]] quib::AttributeSet markerAttributes() const;
};
