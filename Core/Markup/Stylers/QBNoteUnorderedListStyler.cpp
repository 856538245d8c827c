#include "QBNoteUnorderedListStyler.h"

#include "AttributeLayers.h"
#include "MarkedParagraphs.h"
#include "QBNoteTextStylerAttributes.h"

#include <Markup/Attachments/QBUnorderedListTextAttachment.h>
#include <Markup/Syntax/StylerSyntax.h>

#include <array>

using quib::AttributeSet;
using quib::syntax::Construct;

const NSRegularExpression &QBNoteUnorderedListStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::UnorderedList, /*syntax=*/0);
}

QString QBNoteUnorderedListStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::UnorderedList, /*syntax=*/0);
}

const NSAttributeName &QBNoteUnorderedListStyler::stylerAttributeName()
{
    return QBNoteUnorderedListStylerAttributeName;
}

const NSAttributeName &QBNoteUnorderedListStyler::stylerMarkerAttributeName()
{
    return QBNoteUnorderedListStylerMarkerAttributeName;
}

const NSRegularExpression *QBNoteUnorderedListStyler::regularExpression() const
{
    return &quib::syntax::stylerRegularExpression(Construct::UnorderedList, syntax());
}

const NSRegularExpression *QBNoteUnorderedListStyler::attachmentRegularExpression() const
{
    return quib::syntax::attachmentRegularExpression(Construct::UnorderedList, syntax());
}

std::shared_ptr<QBNotesTextAttachment>
QBNoteUnorderedListStyler::makeTextAttachment(const QString &representedText) const
{
    return std::make_shared<QBUnorderedListTextAttachment>(representedText, themeManager());
}

bool QBNoteUnorderedListStyler::isOwnTextAttachment(const QBNotesTextAttachment &attachment) const
{
    return dynamic_cast<const QBUnorderedListTextAttachment *>(&attachment) != nullptr;
}

quib::AttributeNameMask QBNoteUnorderedListStyler::ownTextAttachmentClasses() const
{
    return quib::AttributeNameMask::ofClass(typeid(QBUnorderedListTextAttachment));
}

void QBNoteUnorderedListStyler::removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                                    NSTextStorage * /*textStorage*/)
{
    static const std::array names{QBNoteUnorderedListStylerAttributeName, QBNoteUnorderedListStylerMarkerAttributeName};
    attributedString.removeAttributes(names, range);
}

void QBNoteUnorderedListStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                             NSTextStorage * /*textStorage*/)
{
    std::vector<quib::BlockMarker> bullets;
    enumerateOwnAttachments(attributedString, range, [&](const auto &attachment, NSRange place) {
        bullets.push_back({place, attachment});
    });
    const AttributeSet marker{{QBNoteUnorderedListStylerMarkerAttributeName, 1}};
    quib::AttributeAdditions additions(attributedString);
    quib::AttributeLayers layers(attributedString, additions);
    quib::forEachMarkedParagraph(attributedString, bullets, [&](NSRange paragraph, auto bulletsOfLine) {
        AttributeSet line{{QBNoteUnorderedListStylerAttributeName, 1}};
        // Where a line has several, the last one's layout holds.
        line.insert(NSParagraphStyleAttributeName,
                    attachmentParagraphStyleForAttributeRange(quib::withBlank(bulletsOfLine.back().range),
                                                              attributedString, paragraph));
        layers.add(paragraph, std::move(line));
        for (const quib::BlockMarker &bullet : bulletsOfLine) {
            layers.add(quib::withBlank(bullet.range), marker);
        }
        layers.flush();
    });
    additions.flush();
}

std::shared_ptr<NSParagraphStyle> QBNoteUnorderedListStyler::attachmentParagraphStyleForAttributeRange(
    NSRange range, const NSAttributedString &attributedString, NSRange paragraphRange)
{
    return themeManager() ? m_paragraphStyles.attachmentParagraphStyleForAttributeRange(range, attributedString,
                                                                                        paragraphRange, *themeManager())
                          : nullptr;
}

void QBNoteUnorderedListStyler::cleanStylerCache()
{
    QBNoteAttachmentTextStyler::cleanStylerCache();
    m_paragraphStyles.clear();
}
