#include "QBNoteTagStyler.h"

#include "PercentEncoding.h"
#include "QBNoteTextStylerAttributes.h"
#include "ThemeValues.h"

#include <Tags/QBTagDataDetector.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QUrl>

#include <array>
#include <optional>

using namespace Qt::StringLiterals;
using quib::AttributeSet;

const NSRegularExpression &QBNoteTagStyler::stylerRegularExpression()
{
    return QBTagDataDetector::sharedDetector();
}

QString QBNoteTagStyler::stylerMarker()
{
    return u"#"_s;
}

const NSAttributeName &QBNoteTagStyler::stylerAttributeName()
{
    return QBNoteTagStylerAttributeName;
}

const NSAttributeName &QBNoteTagStyler::stylerMarkerAttributeName()
{
    return QBNoteTagStylerMarkerAttributeName;
}

const NSRegularExpression *QBNoteTagStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

const NSAttributeName *QBNoteTagStyler::spacerAttributeName() const
{
    return &QBNoteTagSpacerAttributeName;
}

void QBNoteTagStyler::enumerateValidAttachmentsInAttributedString(const NSAttributedString & /*attributedString*/,
                                                                  NSRange /*range*/,
                                                                  const AttachmentBlock & /*usingBlock*/) const
{
}

void QBNoteTagStyler::removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                          NSTextStorage * /*textStorage*/)
{
    static const std::array names{QBNoteTagStylerAttributeName, QBNoteTagStylerMarkerAttributeName};
    attributedString.removeAttributes(names, range);
}

void QBNoteTagStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                   NSTextStorage * /*textStorage*/)
{
    std::optional<Attributes> set;
    NSRange pending = kNotFoundRange;
    enumerateOwnAttachments(attributedString, range, [&](const auto & /*attachment*/, NSRange spacer) {
        if (!pending.isFound()) {
            pending = spacer;
            return;
        }
        if (!set) {
            set = attributes();
            set->hasMarks = attributedString.containsAttribute(QBNoteBoundaryMarkerAttributeName, range);
        }
        styleTag(attributedString, NSUnionRange(pending, spacer), *set);
        pending = kNotFoundRange;
    });
}

QBNoteTagStyler::Attributes QBNoteTagStyler::attributes() const
{
    Attributes set{.tag = {{QBNoteSkipHyphenationAttributeName, 1},
                           {QBNoteSkipLineBreakByWordAttributeName, 1},
                           {QBNoteSkipSpellCheckerAttributeName, 1},
                           {QBNoteSkipStylingAttributeName, 1}},
                   .marker = {{QBNoteTagStylerMarkerAttributeName, 1}}};
    if (const auto &theme = themeManager()) {
        set.tag.insert(NSForegroundColorAttributeName, quib::colorValue(theme->hashTextColor()));
        set.marker.insert(NSForegroundColorAttributeName, quib::colorValue(theme->hashMarkerTextColor()));
    }
    return set;
}

void QBNoteTagStyler::styleTag(NSMutableAttributedString &attributedString, NSRange range, Attributes &attributes)
{
    // A spacer, a hash, one character of the name at least, a spacer.
    if (range.length < 4) {
        return;
    }
    const qint64 hash = range.location + 1;
    const qint64 last = range.limit() - 2;
    QString name = attributedString.stringInRange({hash + 1, last - hash}).toString();
    // Two tags of one name are told apart by where they stand.
    const QString identity = QString(name % u'_' % QString::number(hash + 1));
    const bool isClosed = name.endsWith(u'#');
    if (isClosed) {
        name.chop(1);
    }
    AttributeSet tag = attributes.tag;
    tag.insert(QBNoteTagStylerAttributeName, identity);
    tag.insert(QBNoteFullSelectionRangeAttributeName, identity);
    if (attributes.name != name) {
        const auto value = quib::percentEncoded(name, quib::PlainCharacters::QueryValue);
        attributes.link = value ? quib::AttributeValue(QUrl(u"quib://x-callback-url/open-tag?name="_s + *value))
                                : quib::AttributeValue();
        attributes.name = name;
    }
    if (attributes.link) {
        tag.insert(NSLinkAttributeName, attributes.link);
    }
    attributedString.addAttributes(tag, range);
    attributedString.addAttributes(attributes.marker, {hash, 1});
    if (isClosed) {
        attributedString.addAttributes(attributes.marker, {last, 1});
    }
    if (!attributes.hasMarks) {
        return;
    }
    // A mark that covers an end of the tag covers its spacer: tags stay whole within it.
    for (const auto &[place, spacer] : {std::pair(hash, range.location), std::pair(last, range.limit() - 1)}) {
        if (const auto mark = attributedString.attribute(QBNoteBoundaryMarkerAttributeName, place)) {
            attributedString.addAttribute(QBNoteBoundaryMarkerAttributeName, mark, {spacer, 1});
        }
    }
}
