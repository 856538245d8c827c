#include "QBNoteTitledUrlStyler.h"

#include "AttributeAdditions.h"
#include "PercentEncoding.h"
#include "QBNoteTextStylerAttributes.h"
#include "ThemeValues.h"

#include <Markup/Attachments/QBLinkedNoteTextAttachment.h>
#include <Markup/Attachments/QBTitledURLTextAttachment.h>
#include <Markup/Syntax/StylerSyntax.h>
#include <Text/URIReference.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QUrl>

#include <optional>

using namespace Qt::StringLiterals;
using quib::AttributeSet;
using quib::syntax::Construct;

namespace {

/// The text of a link as a URL: as it stands, or else percent-encoded; nothing where neither is one.
std::optional<QString> linkText(const QString &text)
{
    if (quib::isURIReference(text)) {
        return text;
    }
    const auto encoded = quib::percentEncoded(text, quib::PlainCharacters::Query);
    return encoded && quib::isURIReference(*encoded) ? encoded : std::nullopt;
}

/// Where a link leads to; nothing where it names a host that none can be. A text without a scheme begins with the
/// host's name.
std::optional<QUrl> linkURL(const QString &text)
{
    const auto link = linkText(text);
    if (!link) {
        return std::nullopt;
    }
    // Tolerant, as the name of a host may be escaped: it is read in its own letters then.
    QUrl url(*link, QUrl::TolerantMode);
    if (url.scheme().isEmpty()) {
        url = QUrl(QString(u"//" % *link), QUrl::TolerantMode);
        if (url.isValid()) {
            url.setScheme(u"http"_s);
        }
    }
    return url.isValid() ? std::optional(url) : std::nullopt;
}

} // namespace

const NSRegularExpression &QBNoteTitledUrlStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::TitledURL, /*syntax=*/0);
}

QStringList QBNoteTitledUrlStyler::stylerMarkerComponents()
{
    return quib::syntax::stylerMarkerComponents(Construct::TitledURL);
}

const NSAttributeName &QBNoteTitledUrlStyler::stylerAttributeName()
{
    return QBTitledUrlStylerAttributeName;
}

NSRange QBNoteTitledUrlStyler::titleRangeForAttachmentAtIndex(qint64 index,
                                                              const NSAttributedString &inAttributedString)
{
    // The pattern has the brackets right before the attachment, and a title that keeps to its line.
    const qint64 limit = index - 2;
    if (limit < 1 || index > inAttributedString.length() || inAttributedString.characterAtIndex(index - 1) != u'(' ||
        inAttributedString.characterAtIndex(limit) != u']') {
        return kNotFoundRange;
    }
    for (qint64 place = limit - 1; place >= 0; --place) {
        const char16_t unit = inAttributedString.characterAtIndex(place);
        if (unit == u'[') {
            return place + 1 < limit ? NSRange{place + 1, limit - place - 1} : kNotFoundRange;
        }
        if (unit == u'\n') {
            break;
        }
    }
    return kNotFoundRange;
}

QString QBNoteTitledUrlStyler::titledURLForUrlString(const QString &urlString, const QString &title,
                                                     const QString & /*inString*/, NSRange /*atRange*/)
{
    QString plainTitle = title;
    plainTitle.remove(u'[').remove(u']');
    const QStringList components = stylerMarkerComponents();
    return QString(components[0] % plainTitle % components[1] % urlString % components[2]);
}

const NSRegularExpression *QBNoteTitledUrlStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

const NSRegularExpression *QBNoteTitledUrlStyler::attachmentRegularExpression() const
{
    return quib::syntax::attachmentRegularExpression(Construct::TitledURL, /*syntax=*/0);
}

int QBNoteTitledUrlStyler::stylerRegularExpressionRepresentedTextGroupIndex() const
{
    return quib::syntax::representedTextGroupIndex(Construct::TitledURL);
}

int QBNoteTitledUrlStyler::attachmentRegularExpressionTextGroupIndex() const
{
    return quib::syntax::attachmentTextGroupIndex(Construct::TitledURL);
}

std::shared_ptr<QBNotesTextAttachment> QBNoteTitledUrlStyler::makeTextAttachment(const QString &representedText) const
{
    return linkText(representedText) ? makeLinkAttachment(representedText) : nullptr;
}

std::shared_ptr<QBNotesTextAttachment> QBNoteTitledUrlStyler::makeLinkAttachment(const QString &representedText) const
{
    return std::make_shared<QBTitledURLTextAttachment>(representedText, themeManager());
}

bool QBNoteTitledUrlStyler::isOwnTextAttachment(const QBNotesTextAttachment &attachment) const
{
    // A linked note's attachment is another styler's, though of the same family.
    return isStyledTextAttachment(attachment) &&
           dynamic_cast<const QBLinkedNoteTextAttachment *>(&attachment) == nullptr;
}

quib::AttributeNameMask QBNoteTitledUrlStyler::ownTextAttachmentClasses() const
{
    auto classes = quib::AttributeNameMask::ofClass(typeid(QBTitledURLTextAttachment));
    classes |= quib::AttributeNameMask::ofClass(typeid(QBLinkedNoteTextAttachment));
    return classes;
}

bool QBNoteTitledUrlStyler::isStyledTextAttachment(const QBNotesTextAttachment &attachment) const
{
    return dynamic_cast<const QBTitledURLTextAttachment *>(&attachment) != nullptr;
}

void QBNoteTitledUrlStyler::removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                                NSTextStorage * /*textStorage*/)
{
    attributedString.removeAttribute(QBTitledUrlStylerAttributeName, range);
}

void QBNoteTitledUrlStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                         NSTextStorage * /*textStorage*/)
{
    struct Attributes
    {
        AttributeSet title;
        AttributeSet kern;
        AttributeSet opening;     ///< the bracket in front of the title
        AttributeSet bracket;     ///< the one behind
        AttributeSet parenthesis; ///< those around the attachment
        AttributeSet attachment;
    };
    std::optional<Attributes> set;
    const AttributeSet whole{{QBTitledUrlStylerAttributeName, 1}};
    quib::AttributeAdditions additions(attributedString);
    const auto makeSet = [&] {
        Attributes made{
            .title = {{QBNoteSkipAttachmentReplacementAttributeName, 1}, {QBNoteSkipStylingAttributeName, 1}},
            .kern = {},
            .opening = {},
            .bracket = {},
            .parenthesis = {},
            .attachment = {{QBNoteSkipLineBreakByWordAttributeName, 1}}};
        if (const auto &theme = themeManager()) {
            made.title.insert(NSForegroundColorAttributeName, quib::colorValue(theme->linkTextColor()));
            made.bracket.insert(NSForegroundColorAttributeName, quib::colorValue(theme->styleMarkerTextColor()));
            made.kern.insert(NSKernAttributeName, theme->paragraphFontXHeight() / 5);
        }
        made.opening = made.bracket;
        made.opening.insert(made.kern);
        made.parenthesis = made.bracket;
        made.parenthesis.insert(made.attachment);
        return made;
    };
    const auto addWhole = [&](NSRange part, AttributeSet attributes) {
        attributes.insert(whole);
        additions.add(part, attributes);
    };
    const auto style = [&](const QBNotesTextAttachment &attachment, NSRange place) {
        if (!set) {
            set = makeSet();
        }
        const NSRange title = titleRangeForAttachmentAtIndex(place.location, attributedString);
        const bool isClosed = place.limit() < attributedString.length();
        if (!title.isFound()) {
            if (place.location > 1 && isClosed) {
                additions.add({place.location - 1, 1}, set->parenthesis);
                additions.add(place, set->attachment);
                additions.add({place.limit(), 1}, set->parenthesis);
            }
            return;
        }
        AttributeSet linked = set->title;
        if (const auto url = linkURL(attachment.representedText())) {
            linked.insert(NSLinkAttributeName, *url);
        }
        addWhole({title.location - 1, 1}, set->opening);
        addWhole({title.location, title.length - 1}, linked);
        linked.insert(set->kern);
        addWhole({title.limit() - 1, 1}, linked);
        addWhole({title.limit(), 1}, set->bracket);
        if (isClosed) {
            addWhole({place.location - 1, 1}, set->parenthesis);
            addWhole(place, set->attachment);
            addWhole({place.limit(), 1}, set->parenthesis);
        } else {
            additions.add({place.location - 1, place.length + 1}, whole);
        }
    };
    enumerateAttachments(
        attributedString, range, QBNoteTitledUrlStyler::ownTextAttachmentClasses(),
        [this](const QBNotesTextAttachment &attachment) { return isStyledTextAttachment(attachment); },
        [&](const auto &attachment, NSRange place) { style(*attachment, place); });
    additions.flush();
}
