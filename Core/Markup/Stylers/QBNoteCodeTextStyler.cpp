#include "QBNoteCodeTextStyler.h"

#include "QBNoteTextStylerAttributes.h"

#include <Foundation/Identifiers.h>
#include <Markup/Syntax/StylerSyntax.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QSet>

#include <array>
#include <vector>

using namespace Qt::StringLiterals;
using quib::AttributeSet;
using quib::AttributeValue;
using quib::syntax::Construct;

namespace {

// The groups of the pattern.
constexpr int kOpeningFence = 1;
constexpr int kLanguage = 2;
constexpr int kBody = 3;
constexpr int kClosingFence = 4;

/// Takes the languages' identifiers from all of a range but the languages' names, which are in ascending order.
void removeStrayIdentifiers(NSMutableAttributedString &text, NSRange range, const std::vector<NSRange> &languages)
{
    std::vector<NSRange> strays;
    auto language = languages.begin();
    text.enumerateAttribute(QBNoteCodeTextStylerLanguageAttributeName, range,
                            NSAttributedStringEnumerationOptions::Forward,
                            [&](const AttributeValue &value, NSRange run, bool * /*stop*/) {
                                if (value.isNothing()) {
                                    return;
                                }
                                qint64 start = run.location;
                                for (; language != languages.end() && language->location < run.limit(); ++language) {
                                    strays.push_back({start, language->location - start});
                                    start = language->limit();
                                }
                                strays.push_back({start, run.limit() - start});
                            });
    for (const NSRange stray : strays) {
        if (stray.length > 0) {
            text.removeAttribute(QBNoteCodeTextStylerLanguageAttributeName, stray);
        }
    }
}

} // namespace

const NSRegularExpression &QBNoteCodeTextStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::CodeBlock, /*syntax=*/0);
}

QString QBNoteCodeTextStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::CodeBlock, /*syntax=*/0);
}

const NSAttributeName &QBNoteCodeTextStyler::stylerAttributeName()
{
    return QBNoteCodeTextStylerAttributeName;
}

const NSAttributeName &QBNoteCodeTextStyler::stylerMarkerAttributeName()
{
    return QBNoteCodeTextStylerMarkerAttributeName;
}

const NSRegularExpression *QBNoteCodeTextStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

void QBNoteCodeTextStyler::removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                               NSTextStorage * /*textStorage*/)
{
    if (themeManager()) {
        const AttributeSet plain = themeManager()->defaultTextAttributes();
        attributedString.enumerateAttribute(QBNoteCodeTextStylerBackgroundAttributeName, range,
                                            NSAttributedStringEnumerationOptions::Forward,
                                            [&](const AttributeValue &value, NSRange run, bool * /*stop*/) {
                                                if (value) {
                                                    attributedString.addAttributes(plain, run);
                                                }
                                            });
    }
    static const std::array names{QBNoteCodeTextStylerAttributeName, QBNoteCodeTextStylerMarkerAttributeName,
                                  QBNoteCodeTextStylerBackgroundAttributeName};
    attributedString.removeAttributes(names, range);
}

void QBNoteCodeTextStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                        NSTextStorage * /*textStorage*/)
{
    const AttributeSet block = blockAttributes();
    const AttributeSet text = textAttributes();
    const AttributeSet marker = markerAttributes();
    std::vector<NSRange> languages;
    QSet<QString> identifiers;
    enumerateUnguardedMatches(
        stylerRegularExpression(), attributedString, range, [&](const NSTextCheckingResult &match) {
            const NSRange openingFence = match.rangeAtIndex(kOpeningFence);
            const NSRange closingFence = match.rangeAtIndex(kClosingFence);
            attributedString.addAttributes(block, NSUnionRange(openingFence, closingFence));
            attributedString.addAttributes(text, match.rangeAtIndex(kBody));
            attributedString.addAttributes(marker, openingFence);
            attributedString.addAttributes(marker, closingFence);
            const NSRange language = match.rangeAtIndex(kLanguage);
            if (!language.isFound() || language.length == 0) {
                return;
            }
            QString identifier =
                attributedString.attribute(QBNoteCodeTextStylerLanguageAttributeName, language.location).stringValue();
            // A name that was cut in two by an edit left its identifier on both halves.
            if (identifier.isEmpty() || identifiers.contains(identifier)) {
                identifier = quib::uuidString();
            }
            identifiers.insert(identifier);
            attributedString.addAttributes(text, language);
            attributedString.addAttributes(languageNameAttributesWithUUID(identifier), language);
            languages.push_back(language);
        });
    removeStrayIdentifiers(attributedString, range, languages);
}

AttributeSet QBNoteCodeTextStyler::blockAttributes() const
{
    AttributeSet attributes{{QBNoteCodeTextStylerBackgroundAttributeName, 1}, {QBNoteSkipSpellCheckerAttributeName, 1}};
    if (themeManager()) {
        const double margin = 2 * themeManager()->paragraphFontXHeight();
        NSMutableParagraphStyle style = themeManager()->defaultParagraphStyle()->mutableCopy();
        style.headIndent += margin;
        style.firstLineHeadIndent += margin;
        style.tailIndent = (style.tailIndent + margin) * 3;
        attributes.insert(NSParagraphStyleAttributeName, style.copy());
        attributes.insert(NSFontAttributeName, themeManager()->monospaceFontAttribute());
    }
    return attributes;
}

AttributeSet QBNoteCodeTextStyler::textAttributes() const
{
    AttributeSet attributes{{QBNoteSkipAttachmentReplacementAttributeName, 1},
                            {QBNoteSkipStylingAttributeName, 1},
                            {QBNoteCodeTextStylerAttributeName, 1}};
    if (themeManager()) {
        attributes.insert(NSForegroundColorAttributeName, themeManager()->colorAttributeForKey(u"Code Font Color"_s));
    }
    return attributes;
}

AttributeSet QBNoteCodeTextStyler::markerAttributes() const
{
    AttributeSet attributes{{QBNoteCodeTextStylerMarkerAttributeName, 1}, {QBNoteSkipStylingAttributeName, 1}};
    if (themeManager()) {
        attributes.insert(NSForegroundColorAttributeName,
                          themeManager()->colorAttributeForKey(u"Style Marker Text Color"_s));
    }
    return attributes;
}

AttributeSet QBNoteCodeTextStyler::languageNameAttributesWithUUID(const QString &uuid) const
{
    AttributeSet attributes{{QBNoteSkipAttachmentReplacementAttributeName, 1},
                            {QBNoteSkipStylingAttributeName, 1},
                            {QBNoteCodeTextStylerLanguageAttributeName, uuid}};
    if (themeManager()) {
        attributes.insert(NSForegroundColorAttributeName, themeManager()->colorAttributeForKey(u"Syntax Keyword"_s));
    }
    return attributes;
}
