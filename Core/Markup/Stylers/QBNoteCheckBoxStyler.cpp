#include "QBNoteCheckBoxStyler.h"

#include "AttributeLayers.h"
#include "MarkedParagraphs.h"
#include "QBNoteTextStylerAttributes.h"

#include <Graphics/GraphicsAttributes.h>
#include <Markup/Attachments/QBCheckBoxTextAttachment.h>
#include <Markup/Syntax/StylerSyntax.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;
using quib::AttributeSet;
using quib::AttributeValue;
using quib::syntax::Construct;

namespace {

/// Shorter paragraphs hold nothing to strike through. Units: UTF-16 units.
constexpr qint64 kShortestCheckedParagraph = 2;

bool isChecked(const quib::BlockMarker &box)
{
    return static_cast<const QBCheckBoxTextAttachment &>(*box.attachment).isChecked();
}

} // namespace

const NSRegularExpression &QBNoteCheckBoxStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::Checkbox, /*syntax=*/0);
}

const NSRegularExpression &QBNoteCheckBoxStyler::uncheckedRegularExpression()
{
    return quib::syntax::uncheckedRegularExpression(/*syntax=*/0);
}

const NSRegularExpression &QBNoteCheckBoxStyler::checkedRegularExpression()
{
    return quib::syntax::checkedRegularExpression(/*syntax=*/0);
}

QString QBNoteCheckBoxStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::Checkbox, /*syntax=*/0);
}

QString QBNoteCheckBoxStyler::stylerMarkerChecked(bool isChecked)
{
    return quib::syntax::stylerMarkerChecked(isChecked, /*syntax=*/0);
}

const NSAttributeName &QBNoteCheckBoxStyler::stylerAttributeName()
{
    return QBNoteCheckboxStylerAttributeName;
}

const NSAttributeName &QBNoteCheckBoxStyler::stylerMarkerAttributeName()
{
    return QBNoteCheckboxStylerMarkerAttributeName;
}

const NSAttributeName &QBNoteCheckBoxStyler::stylerCheckedAttributeName()
{
    return QBNoteCheckboxStylerCheckedAttributeName;
}

const NSRegularExpression *QBNoteCheckBoxStyler::regularExpression() const
{
    return &quib::syntax::stylerRegularExpression(Construct::Checkbox, syntax());
}

const NSRegularExpression *QBNoteCheckBoxStyler::attachmentRegularExpression() const
{
    return quib::syntax::attachmentRegularExpression(Construct::Checkbox, syntax());
}

std::shared_ptr<QBNotesTextAttachment> QBNoteCheckBoxStyler::makeTextAttachment(const QString &representedText) const
{
    return std::make_shared<QBCheckBoxTextAttachment>(representedText, themeManager());
}

bool QBNoteCheckBoxStyler::isOwnTextAttachment(const QBNotesTextAttachment &attachment) const
{
    return dynamic_cast<const QBCheckBoxTextAttachment *>(&attachment) != nullptr;
}

quib::AttributeNameMask QBNoteCheckBoxStyler::ownTextAttachmentClasses() const
{
    return quib::AttributeNameMask::ofClass(typeid(QBCheckBoxTextAttachment));
}

void QBNoteCheckBoxStyler::removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                               NSTextStorage * /*textStorage*/)
{
    static const std::array names{QBNoteCheckboxStylerAttributeName, QBNoteCheckboxStylerMarkerAttributeName,
                                  QBNoteCheckboxStylerCheckedAttributeName};
    attributedString.removeAttributes(names, range);
}

void QBNoteCheckBoxStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                        NSTextStorage * /*textStorage*/)
{
    std::vector<quib::BlockMarker> boxes;
    enumerateOwnAttachments(attributedString, range, [&](const auto &attachment, NSRange place) {
        boxes.push_back({place, attachment});
    });
    const AttributeSet marker{{QBNoteCheckboxStylerMarkerAttributeName, 1}};
    quib::AttributeAdditions additions(attributedString);
    quib::AttributeLayers layers(attributedString, additions);
    quib::forEachMarkedParagraph(attributedString, boxes, [&](NSRange paragraph, auto boxesOfLine) {
        AttributeSet line{{QBNoteCheckboxStylerAttributeName, 1}};
        // Where a line has several, the last one's layout holds.
        line.insert(NSParagraphStyleAttributeName,
                    attachmentParagraphStyleForAttributeRange(quib::withBlank(boxesOfLine.back().range),
                                                              attributedString, paragraph));
        const auto checked = std::ranges::find_if(boxesOfLine, isChecked);
        const bool isStruck = checked != boxesOfLine.end() && paragraph.length >= kShortestCheckedParagraph;
        if (isStruck) {
            line.insert(QBNoteCheckboxStylerCheckedAttributeName, 1);
        }
        layers.add(paragraph, std::move(line));
        for (const quib::BlockMarker &box : boxesOfLine) {
            layers.add(quib::withBlank(box.range), marker);
        }
        if (isStruck) {
            const qint64 start = quib::withBlank(checked->range).limit();
            strike(attributedString, {start, std::max<qint64>(paragraph.limit() - start, 0)}, layers);
        }
        layers.flush();
    });
    additions.flush();
}

void QBNoteCheckBoxStyler::strike(const NSAttributedString &text, NSRange range, quib::AttributeLayers &layers) const
{
    layers.add(range, {{NSStrikethroughStyleAttributeName, 1}});
    const std::optional<NSColor> base = themeManager() ? themeManager()->baseTextColor() : std::nullopt;
    if (!base) {
        return;
    }
    // Links, tags and whatever else has a colour of its own keep it.
    const AttributeSet light{
        {NSForegroundColorAttributeName, themeManager()->colorAttributeForKey(u"Light Text Color"_s)}};
    text.enumerateAttribute(NSForegroundColorAttributeName, range, NSAttributedStringEnumerationOptions::Forward,
                            [&](const AttributeValue &value, NSRange run, bool * /*stop*/) {
                                const NSColor *const color = quib::colorOfAttribute(value);
                                if (color != nullptr && *color == *base) {
                                    layers.add(run, light);
                                }
                            });
}

std::shared_ptr<NSParagraphStyle> QBNoteCheckBoxStyler::attachmentParagraphStyleForAttributeRange(
    NSRange range, const NSAttributedString &attributedString, NSRange paragraphRange)
{
    return themeManager() ? m_paragraphStyles.attachmentParagraphStyleForAttributeRange(range, attributedString,
                                                                                        paragraphRange, *themeManager())
                          : nullptr;
}

void QBNoteCheckBoxStyler::cleanStylerCache()
{
    QBNoteAttachmentTextStyler::cleanStylerCache();
    m_paragraphStyles.clear();
}
