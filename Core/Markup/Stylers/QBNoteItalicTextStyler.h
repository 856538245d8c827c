#pragma once

#include "DelimitedTextStyler.h"

#include <Markup/Syntax/QBItalicDataDetector.h>

#include <QString>

/// Italic text: `/word/`. A slash in a link is no marker, so the styler of links runs before.
class QBNoteItalicTextStyler : public quib::DelimitedTextStyler, private QBItalicDataDetectorDelegate
{
public:
    QBNoteItalicTextStyler();

    /// Finds italics by the text alone, whatever links it has.
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static QString stylerMarker();
    [[nodiscard]] static const NSAttributeName &stylerAttributeName();
    [[nodiscard]] static const NSAttributeName &stylerMarkerAttributeName();

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;
    void applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range, NSTextStorage *textStorage) override;

protected:
    explicit QBNoteItalicTextStyler(int syntax);

    [[nodiscard]] Attributes attributes() const override;
    [[nodiscard]] std::span<const NSAttributeName> ownAttributeNames() const override;
    /// What a character must not carry to be a marker.
    [[nodiscard]] virtual std::span<const NSAttributeName> refusedMarkerAttributeNames() const;

private:
    [[nodiscard]] bool dataDetectorShouldMatchBeginMarkerInRange(NSRange range) override;
    [[nodiscard]] bool dataDetectorShouldMatchEndMarkerInRange(NSRange range) override;
    [[nodiscard]] bool mayBeMarker(NSRange range) const;

    QBItalicDataDetector m_stylerRegularExpression;
    const NSAttributedString *m_currentAttributedString = nullptr; ///< set while a pass is applied
};
