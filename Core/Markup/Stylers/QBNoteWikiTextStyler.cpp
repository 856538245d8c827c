#include "QBNoteWikiTextStyler.h"

#include "AttributeAdditions.h"
#include "ExpandedText.h"
#include "PercentEncoding.h"
#include "QBNoteTextStylerAttributes.h"
#include "ThemeValues.h"

#include <Markup/Syntax/StylerSyntax.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <array>

using namespace Qt::StringLiterals;
using quib::AttributeSet;
using quib::syntax::Construct;

const NSRegularExpression &QBNoteWikiTextStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::Wiki, /*syntax=*/0);
}

QString QBNoteWikiTextStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::Wiki, /*syntax=*/0);
}

const NSAttributeName &QBNoteWikiTextStyler::stylerAttributeName()
{
    return QBNoteWikiTextStylerAttributeName;
}

const NSAttributeName &QBNoteWikiTextStyler::stylerMarkerAttributeName()
{
    return QBNoteWikiTextStylerMarkerAttributeName;
}

const NSRegularExpression *QBNoteWikiTextStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

void QBNoteWikiTextStyler::removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                               NSTextStorage * /*textStorage*/)
{
    static const std::array names{QBNoteWikiTextStylerAttributeName, QBNoteWikiTextStylerMarkerAttributeName};
    attributedString.removeAttributes(names, range);
}

void QBNoteWikiTextStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                        NSTextStorage * /*textStorage*/)
{
    struct Attributes
    {
        AttributeSet title;
        AttributeSet marker;
    };
    std::optional<Attributes> set;
    quib::AttributeAdditions additions(attributedString);
    enumerateUnguardedMatches(*regularExpression(), attributedString, range, [&](const NSTextCheckingResult &match) {
        const NSRange title = match.rangeAtIndex(2);
        const quib::AttributeValue link = linkForTitle(quib::expandedText(attributedString, title));
        if (!link) {
            return;
        }
        if (!set) {
            set = Attributes{
                .title = {{QBNoteSkipAttachmentReplacementAttributeName, 1},
                          {QBNoteSkipStylingAttributeName, 1},
                          {QBNoteWikiTextStylerAttributeName, 1}},
                .marker = {{QBNoteWikiTextStylerMarkerAttributeName, 1}, {QBNoteWikiTextStylerAttributeName, 1}}};
            if (const auto &theme = themeManager()) {
                set->title.insert(NSForegroundColorAttributeName, quib::colorValue(theme->linkTextColor()));
                set->marker.insert(NSForegroundColorAttributeName, quib::colorValue(theme->styleMarkerTextColor()));
            }
        }
        AttributeSet linked = set->title;
        linked.insert(NSLinkAttributeName, link);
        additions.add(match.rangeAtIndex(1), set->marker);
        additions.add(title, linked);
        additions.add(match.rangeAtIndex(3), set->marker);
    });
    additions.flush();
}

quib::AttributeValue QBNoteWikiTextStyler::linkForTitle(const QString &title)
{
    if (const auto *known = m_links.object(title)) {
        return *known;
    }
    const auto url = urlForTitle(title);
    const quib::AttributeValue link = url ? quib::AttributeValue(*url) : quib::AttributeValue();
    m_links.insert(title, new quib::AttributeValue(link), title.size());
    return link;
}

std::optional<QUrl> QBNoteWikiTextStyler::urlForTitle(const QString &title)
{
    const auto percent = quib::percentEncoded(title, quib::PlainCharacters::Alphanumeric);
    if (!percent) {
        return std::nullopt;
    }
    // The fallback is a value inside of the link: encoded as a whole, the title in it for the second time.
    static const QString creation =
        quib::percentEncoded(u"quib://x-callback-url/create?title="_s, quib::PlainCharacters::Alphanumeric)
            .value_or(QString());
    const auto twice = quib::percentEncoded(*percent, quib::PlainCharacters::Alphanumeric);
    const QString link = u"quib://x-callback-url/open-note?title="_s + *percent + u"&x-error=" + creation + *twice;
    QUrl url(link, QUrl::StrictMode);
    return url.isValid() ? std::optional(url) : std::nullopt;
}
