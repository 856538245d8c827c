#include "QBNoteColorStyler.h"

#include "QBNoteTextStylerAttributes.h"
#include "ThemeValues.h"

#include <Markup/Attachments/QBColorTextAttachment.h>
#include <Markup/Syntax/StylerSyntax.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <optional>

using quib::AttributeSet;
using quib::syntax::Construct;

const NSRegularExpression &QBNoteColorStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::Color, /*syntax=*/0);
}

const NSAttributeName &QBNoteColorStyler::stylerAttributeName()
{
    return QBNoteColorStylerAttributeName;
}

const NSRegularExpression *QBNoteColorStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

const NSRegularExpression *QBNoteColorStyler::attachmentRegularExpression() const
{
    return quib::syntax::attachmentRegularExpression(Construct::Color, /*syntax=*/0);
}

std::shared_ptr<QBNotesTextAttachment> QBNoteColorStyler::makeTextAttachment(const QString &representedText) const
{
    auto attachment = std::make_shared<QBColorTextAttachment>(QString(), themeManager());
    attachment->setFullRepresentedText(representedText);
    return attachment;
}

bool QBNoteColorStyler::isOwnTextAttachment(const QBNotesTextAttachment &attachment) const
{
    return dynamic_cast<const QBColorTextAttachment *>(&attachment) != nullptr;
}

quib::AttributeNameMask QBNoteColorStyler::ownTextAttachmentClasses() const
{
    return quib::AttributeNameMask::ofClass(typeid(QBColorTextAttachment));
}

NSRange QBNoteColorStyler::offsetMatchedRange(NSRange range, const QString & /*forMatchedString*/) const
{
    return {range.location, 0};
}

bool QBNoteColorStyler::shouldRemoveAttachment(const QBNotesTextAttachment &attachment,
                                               const NSAttributedString &inAttributedString, NSRange attachmentRange,
                                               NSRange editedRange) const
{
    const QString &code = static_cast<const QBColorTextAttachment &>(attachment).fullRepresentedText();
    const NSRange behind{attachmentRange.limit(), code.size()};
    return behind.limit() > inAttributedString.length() ||
           QBNoteAttachmentTextStyler::shouldRemoveAttachment(attachment, inAttributedString, attachmentRange,
                                                              editedRange) ||
           inAttributedString.stringInRange(behind) != code;
}

void QBNoteColorStyler::removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                            NSTextStorage * /*textStorage*/)
{
    attributedString.removeAttribute(QBNoteColorStylerAttributeName, range);
}

void QBNoteColorStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                     NSTextStorage * /*textStorage*/)
{
    enumerateOwnAttachments(attributedString, range, [&](const auto &attachment, NSRange place) {
        const auto &swatch = static_cast<const QBColorTextAttachment &>(*attachment);
        const NSRange code{place.limit(), swatch.fullRepresentedText().size()};
        if (code.limit() > attributedString.length()) {
            return;
        }
        const AttributeSet attributes{{QBNoteColorStylerAttributeName, quib::attributeValue(swatch.representedColor())},
                                      {QBNoteSkipLineBreakByWordAttributeName, 1}};
        attributedString.addAttributes(attributes, {place.location, place.length + code.length});
        if (const auto &theme = themeManager()) {
            attributedString.addAttribute(NSFontAttributeName, theme->monospaceFontAttribute(), code);
            attributedString.addAttribute(NSForegroundColorAttributeName,
                                          quib::colorValue(theme->styleMarkerTextColor()), {code.location, 1});
        }
    });
}
