#include "QBNoteItalicTextStyler.h"

#include "QBNoteTextStylerAttributes.h"
#include "ThemeValues.h"

#include <Markup/Syntax/StylerSyntax.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>
#include <array>

using quib::syntax::Construct;

namespace {

const QBItalicDataDetector &sharedDetector(int syntax)
{
    return static_cast<const QBItalicDataDetector &>(quib::syntax::stylerRegularExpression(Construct::Italic, syntax));
}

} // namespace

QBNoteItalicTextStyler::QBNoteItalicTextStyler()
    : QBNoteItalicTextStyler(/*syntax=*/0)
{
}

QBNoteItalicTextStyler::QBNoteItalicTextStyler(int syntax)
    : m_stylerRegularExpression(sharedDetector(syntax).beginMarkers(), sharedDetector(syntax).endMarkers(), this)
{
}

const NSRegularExpression &QBNoteItalicTextStyler::stylerRegularExpression()
{
    return sharedDetector(/*syntax=*/0);
}

QString QBNoteItalicTextStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::Italic, /*syntax=*/0);
}

const NSAttributeName &QBNoteItalicTextStyler::stylerAttributeName()
{
    return QBNoteItalicTextStylerAttributeName;
}

const NSAttributeName &QBNoteItalicTextStyler::stylerMarkerAttributeName()
{
    return QBNoteItalicTextStylerMarkerAttributeName;
}

const NSRegularExpression *QBNoteItalicTextStyler::regularExpression() const
{
    return &m_stylerRegularExpression;
}

void QBNoteItalicTextStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                          NSTextStorage *textStorage)
{
    m_currentAttributedString = &attributedString;
    DelimitedTextStyler::applyStyleIn(attributedString, range, textStorage);
    m_currentAttributedString = nullptr;
}

QBNoteItalicTextStyler::Attributes QBNoteItalicTextStyler::attributes() const
{
    Attributes set{.whole = {},
                   .content = {{QBNoteItalicTextStylerAttributeName, 1}},
                   .markers = {{QBNoteItalicTextStylerMarkerAttributeName, 1}}};
    if (const auto &theme = themeManager()) {
        set.content.insert(NSFontAttributeName, theme->paragraphItalicFontAttribute());
        set.markers.insert(NSForegroundColorAttributeName, quib::colorValue(theme->styleMarkerTextColor()));
    }
    return set;
}

std::span<const NSAttributeName> QBNoteItalicTextStyler::ownAttributeNames() const
{
    static const std::array names{QBNoteItalicTextStylerAttributeName, QBNoteItalicTextStylerMarkerAttributeName};
    return names;
}

std::span<const NSAttributeName> QBNoteItalicTextStyler::refusedMarkerAttributeNames() const
{
    static const std::array names{NSLinkAttributeName};
    return names;
}

bool QBNoteItalicTextStyler::dataDetectorShouldMatchBeginMarkerInRange(NSRange range)
{
    return mayBeMarker(range);
}

bool QBNoteItalicTextStyler::dataDetectorShouldMatchEndMarkerInRange(NSRange range)
{
    return mayBeMarker(range);
}

bool QBNoteItalicTextStyler::mayBeMarker(NSRange range) const
{
    if (m_currentAttributedString == nullptr) {
        return true;
    }
    return std::ranges::none_of(refusedMarkerAttributeNames(), [&](const NSAttributeName &name) {
        if (range.length == 1) {
            return m_currentAttributedString->containsAttribute(name, range);
        }
        NSRange run;
        return m_currentAttributedString->attribute(name, range.location, &run, range) || run != range;
    });
}
