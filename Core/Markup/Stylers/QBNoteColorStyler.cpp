#include "QBNoteColorStyler.h"

#include "AttributeLayers.h"
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
    quib::AttributeAdditions additions(attributedString);
    quib::AttributeLayers layers(attributedString, additions);
    enumerateOwnAttachments(attributedString, range, [&](const auto &attachment, NSRange place) {
        const auto &swatch = static_cast<const QBColorTextAttachment &>(*attachment);
        const NSRange code{place.limit(), swatch.fullRepresentedText().size()};
        if (code.limit() > attributedString.length()) {
            return;
        }
        layers.add({place.location, place.length + code.length},
                   {{QBNoteColorStylerAttributeName, quib::attributeValue(swatch.representedColor())},
                    {QBNoteSkipLineBreakByWordAttributeName, 1}});
        if (const auto &theme = themeManager()) {
            layers.add(code, {{NSFontAttributeName, theme->monospaceFontAttribute()}});
            layers.add({code.location, 1},
                       {{NSForegroundColorAttributeName, quib::colorValue(theme->styleMarkerTextColor())}});
        }
        layers.flush();
    });
    additions.flush();
}
