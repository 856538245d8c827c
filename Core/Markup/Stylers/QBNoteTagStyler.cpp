#include "QBNoteTagStyler.h"

#include "AttributeAdditions.h"
#include "ExpandedText.h"
#include "PercentEncoding.h"
#include "QBNoteTextStylerAttributes.h"
#include "ThemeValues.h"

#include <Tags/QBTagDataDetector.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QUrl>

#include <array>
#include <charconv>
#include <limits>

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
    const std::vector<qint64> spacers = placesOfSpacers(attributedString, range);
    if (spacers.size() < 2) {
        return;
    }
    Attributes set = attributes();
    quib::AttributeAdditions additions(attributedString);
    const auto forEachTag = [&](const auto &block) {
        for (size_t closing = 1; closing < spacers.size(); ++closing) {
            const qint64 opening = spacers[closing - 1];
            const NSRange tag{opening, spacers[closing] + 1 - opening};
            if (isTag(attributedString, tag)) {
                block(tag);
                ++closing;
            }
        }
    };
    forEachTag([&](NSRange tag) { addAttributesOfTag(attributedString, tag, set, additions); });
    additions.flush();
    if (attributedString.containsAttribute(QBNoteBoundaryMarkerAttributeName, range)) {
        forEachTag([&](NSRange tag) { spreadMarks(attributedString, tag); });
    }
}

bool QBNoteTagStyler::isTag(const NSAttributedString &text, NSRange range)
{
    if (range.length < kShortestTag || text.characterAtIndex(range.location + 1) != u'#') {
        return false;
    }
    const QStringView name = text.stringInRange({range.location + 2, range.length - 3});
    const QStringView inner = name.endsWith(u'#') ? name.chopped(1) : name;
    return !inner.contains(u'#') && !inner.contains(u'\n');
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
    // Made once with room for all that is unique to a tag: the values are replaced in a copy.
    set.tag.reserve(kValuesOfPlace);
    set.tag.insert(QBNoteTagStylerAttributeName, QString());
    set.tag.insert(QBNoteFullSelectionRangeAttributeName, QString());
    return set;
}

void QBNoteTagStyler::addAttributesOfTag(const NSAttributedString &text, NSRange range, Attributes &attributes,
                                         quib::AttributeAdditions &additions)
{
    const qint64 hash = range.location + 1;
    const qint64 last = range.limit() - 2;
    const QStringView written = text.stringInRange({hash + 1, last - hash});
    // Two tags of one name are told apart by where they stand.
    std::array<char, std::numeric_limits<qint64>::digits10 + 2> digits{};
    char *const digitsLimit = std::to_chars(digits.data(), digits.data() + digits.size(), hash + 1).ptr;
    const quib::AttributeValue identity(
        QString(written % u'_' % QLatin1StringView(digits.data(), digitsLimit - digits.data())));
    const bool isClosed = written.endsWith(u'#');
    const QStringView name = isClosed ? written.chopped(1) : written;
    // An arrow in a name is an attachment here, which looks like any other: the link has what it stands for, as the tag
    // has.
    const bool hasAttachment = name.contains(NSTextAttachment::placeholderString());
    if (attributes.name != name || hasAttachment) {
        attributes.name = name.toString();
        const QString tagName = hasAttachment ? quib::expandedText(text, {hash + 1, name.size()}) : *attributes.name;
        quib::AttributeValue link;
        if (const auto value = quib::percentEncoded(tagName, quib::PlainCharacters::QueryValue)) {
            link = QUrl(QString(u"quib://x-callback-url/open-tag?name="_s % *value));
        }
        attributes.tag.insert(NSLinkAttributeName, link);
    }
    static const std::array names{QBNoteTagStylerAttributeName, QBNoteFullSelectionRangeAttributeName};
    AttributeSet tag = attributes.tag.replacing(names, identity);
    AttributeSet marked = tag;
    marked.insert(attributes.marker);
    additions.add({range.location, 1}, tag);
    if (isClosed) {
        additions.add({hash, 1}, marked);
        additions.add({hash + 1, last - hash - 1}, tag);
        additions.add({last, 1}, std::move(marked));
        additions.add({last + 1, 1}, std::move(tag));
    } else {
        additions.add({hash, 1}, std::move(marked));
        additions.add({hash + 1, range.limit() - hash - 1}, std::move(tag));
    }
}

void QBNoteTagStyler::spreadMarks(NSMutableAttributedString &text, NSRange range)
{
    // A mark that covers an end of the tag covers its spacer: tags stay whole within it.
    for (const auto &[place, spacer] :
         {std::pair(range.location + 1, range.location), std::pair(range.limit() - 2, range.limit() - 1)}) {
        if (const auto mark = text.attribute(QBNoteBoundaryMarkerAttributeName, place)) {
            text.addAttribute(QBNoteBoundaryMarkerAttributeName, mark, {spacer, 1});
        }
    }
}
