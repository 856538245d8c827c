#include "QBNoteHeaderTextStyler.h"

#include "AttributeLayers.h"
#include "MarkedParagraphs.h"
#include "MarkerParagraphStyles.h"
#include "QBNoteTextStylerAttributes.h"

#include <Markup/Attachments/QBHeaderTextAttachment.h>
#include <Markup/Syntax/StylerSyntax.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>
#include <array>

using quib::AttributeSet;
using quib::syntax::Construct;

namespace {

/// What the width of a badge is measured in. Units: points.
constexpr double kBadgeBoxWidth = 100;

/// The part of a header's line that no later styler touches: all but its first unit and a line feed at its end.
NSRange guardedRange(const NSAttributedString &text, NSRange paragraph)
{
    NSRange guarded{paragraph.location + 1, paragraph.length - 1};
    if (paragraph.length > 0 && text.characterAtIndex(paragraph.limit() - 1) == u'\n') {
        --guarded.length;
    }
    return NSIntersectionRange(guarded, paragraph);
}

} // namespace

const NSRegularExpression &QBNoteHeaderTextStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::Header, /*syntax=*/0);
}

QString QBNoteHeaderTextStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::Header, /*syntax=*/0);
}

QString QBNoteHeaderTextStyler::stylerMarkerForHeaderLevel(int level)
{
    return quib::syntax::stylerMarkerForHeaderLevel(level);
}

const NSAttributeName &QBNoteHeaderTextStyler::stylerAttributeName()
{
    return QBHeaderTextStylerAttributeName;
}

const NSAttributeName &QBNoteHeaderTextStyler::stylerMarkerAttributeName()
{
    return QBHeaderTextStylerMarkerAttributeName;
}

const NSRegularExpression *QBNoteHeaderTextStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

const NSRegularExpression *QBNoteHeaderTextStyler::attachmentRegularExpression() const
{
    return quib::syntax::attachmentRegularExpression(Construct::Header, /*syntax=*/0);
}

std::shared_ptr<QBNotesTextAttachment> QBNoteHeaderTextStyler::makeTextAttachment(const QString &representedText) const
{
    return std::make_shared<QBHeaderTextAttachment>(representedText, themeManager());
}

bool QBNoteHeaderTextStyler::isOwnTextAttachment(const QBNotesTextAttachment &attachment) const
{
    return dynamic_cast<const QBHeaderTextAttachment *>(&attachment) != nullptr;
}

quib::AttributeNameMask QBNoteHeaderTextStyler::ownTextAttachmentClasses() const
{
    return quib::AttributeNameMask::ofClass(typeid(QBHeaderTextAttachment));
}

void QBNoteHeaderTextStyler::removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                                 NSTextStorage * /*textStorage*/)
{
    static const std::array names{QBHeaderTextStylerAttributeName, QBHeaderTextStylerMarkerAttributeName};
    attributedString.removeAttributes(names, range);
}

void QBNoteHeaderTextStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                          NSTextStorage * /*textStorage*/)
{
    std::vector<quib::BlockMarker> headers;
    enumerateOwnAttachments(attributedString, range, [&](const auto &attachment, NSRange place) {
        headers.push_back({place, attachment});
    });
    const AttributeSet marker{{QBHeaderTextStylerMarkerAttributeName, 1}, {QBNoteSkipLineBreakByWordAttributeName, 1}};
    const AttributeSet guards{{QBNoteSkipAttachmentReplacementAttributeName, 1}, {QBNoteSkipStylingAttributeName, 1}};
    quib::AttributeAdditions additions(attributedString);
    quib::AttributeLayers layers(attributedString, additions);
    quib::forEachMarkedParagraph(attributedString, headers, [&](NSRange paragraph, auto badges) {
        for (const quib::BlockMarker &badge : badges) {
            const qint64 length = std::min(badge.range.length + 1, paragraph.length);
            layers.add({badge.range.location, length}, marker);
        }
        layers.add(guardedRange(attributedString, paragraph), guards);
        // The last badge of a line tells its level.
        const quib::BlockMarker &badge = badges.back();
        AttributeSet line = paragraphAttributesForAttachment(*badge.attachment, badge.range, attributedString);
        line.insert(QBHeaderTextStylerAttributeName, 1);
        layers.add(paragraph, std::move(line));
        if (themeManager()) {
            // The blank behind the badge keeps the body's size.
            layers.add({badge.range.location + 1, badge.range.length},
                       {{NSFontAttributeName, themeManager()->paragraphFontAttribute()}});
        }
        layers.flush();
    });
    additions.flush();
}

void QBNoteHeaderTextStyler::cleanStylerCache()
{
    QBNoteAttachmentTextStyler::cleanStylerCache();
    m_paragraphAttributes.clear();
}

AttributeSet QBNoteHeaderTextStyler::paragraphAttributesForAttachment(const QBNotesTextAttachment &attachment,
                                                                      NSRange attachmentRange,
                                                                      const NSAttributedString &attributedString)
{
    if (!themeManager()) {
        return {};
    }
    if (m_cacheGeneration != themeManager()->cacheGeneration()) {
        m_paragraphAttributes.clear();
        m_cacheGeneration = themeManager()->cacheGeneration();
    }
    const QString level = attachment.representedText();
    if (const auto kept = m_paragraphAttributes.constFind(level); kept != m_paragraphAttributes.cend()) {
        return *kept;
    }
    AttributeSet attributes;
    switch (level.size()) {
    case 1:
        attributes = themeManager()->h1TextAttributes();
        break;
    case 2:
        attributes = themeManager()->h2TextAttributes();
        break;
    case 3:
        attributes = themeManager()->h3TextAttributes();
        break;
    default:
        attributes = themeManager()->h4OrMoreTextAttributes();
    }
    const quib::AttributeValue plain = attributes.value(NSParagraphStyleAttributeName);
    if (const auto *style = plain.as<NSParagraphStyle>()) {
        NSMutableParagraphStyle hanging = style->mutableCopy();
        hanging.firstLineHeadIndent = firstLineIndendForForAttributeRange(attachmentRange, attributedString);
        attributes.insert(NSParagraphStyleAttributeName, hanging.copy());
    }
    m_paragraphAttributes.insert(level, attributes);
    return attributes;
}

double QBNoteHeaderTextStyler::firstLineIndendForForAttributeRange(NSRange range,
                                                                   const NSAttributedString &attributedString) const
{
    const double badge = quib::widthOfText(attributedString, range, *themeManager(), kBadgeBoxWidth);
    return std::max(themeManager()->paragraphHeadIndent() - badge, 0.0);
}
