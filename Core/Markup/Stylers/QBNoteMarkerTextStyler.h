#pragma once

#include "QBNoteTextStyler.h"

#include <QString>

#include <vector>

/// Highlighted text: `::words::`. It may hold guarded runs, which it paints around, leaving out the markers and the
/// blanks beside them.
class QBNoteMarkerTextStyler final : public QBNoteTextStyler
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
    /// True when the range begins in guarded text.
    [[nodiscard]] static bool markerInsideSkipStyleAttribute(NSRange range, const NSAttributedString &withAttrString);

private:
    /// The parts of a match that are painted.
    [[nodiscard]] static std::vector<NSRange> pieces(NSRange match, const NSAttributedString &attributedString);
};
