#include "QBNoteCodeTextStyler.h"

#include "AttributeAdditions.h"
#include "QBNoteTextStylerAttributes.h"

#include <Foundation/Identifiers.h>
#include <Markup/Syntax/StylerSyntax.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QSet>

#include <array>
#include <optional>
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
    struct Attributes
    {
        AttributeSet fence;
        AttributeSet body;
        AttributeSet language; ///< with some identifier
    };
    std::optional<Attributes> set;
    // Mostly there are none yet: nothing to look up then, and nothing to take away.
    const bool hasIdentifiers = attributedString.containsAttribute(QBNoteCodeTextStylerLanguageAttributeName, range);
    std::vector<NSRange> languages;
    QSet<QString> identifiers;
    quib::AttributeAdditions additions(attributedString);
    enumerateUnguardedMatches(
        stylerRegularExpression(), attributedString, range, [&](const NSTextCheckingResult &match) {
            if (!set) {
                const AttributeSet block = blockAttributes();
                set = Attributes{block, block, {}};
                set->fence.insert(markerAttributes());
                set->body.insert(textAttributes());
                set->language = set->body;
                set->language.insert(languageNameAttributesWithUUID(QString()));
            }
            additions.add(match.rangeAtIndex(kOpeningFence), set->fence);
            const NSRange language = match.rangeAtIndex(kLanguage);
            if (language.isFound() && language.length > 0) {
                QString identifier;
                if (hasIdentifiers) {
                    identifier =
                        attributedString.attribute(QBNoteCodeTextStylerLanguageAttributeName, language.location)
                            .stringValue();
                    // A name that was cut in two by an edit left its identifier on both halves.
                    if (identifiers.contains(identifier)) {
                        identifier.clear();
                    }
                    identifiers.insert(identifier);
                    languages.push_back(language);
                }
                AttributeSet name = set->language;
                name.insert(QBNoteCodeTextStylerLanguageAttributeName,
                            identifier.isEmpty() ? quib::uuidString() : identifier);
                additions.add(language, name);
            }
            additions.add(match.rangeAtIndex(kBody), set->body);
            additions.add(match.rangeAtIndex(kClosingFence), set->fence);
        });
    additions.flush();
    if (hasIdentifiers) {
        removeStrayIdentifiers(attributedString, range, languages);
    }
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
