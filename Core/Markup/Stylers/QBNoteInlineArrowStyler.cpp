#include "QBNoteInlineArrowStyler.h"

#include <Markup/Attachments/QBArrowTextAttachment.h>
#include <Markup/Syntax/StylerSyntax.h>

using quib::syntax::Construct;

const NSRegularExpression &QBNoteInlineArrowStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::InlineArrow, /*syntax=*/0);
}

const NSRegularExpression *QBNoteInlineArrowStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

const NSRegularExpression *QBNoteInlineArrowStyler::attachmentRegularExpression() const
{
    return quib::syntax::attachmentRegularExpression(Construct::InlineArrow, /*syntax=*/0);
}

std::shared_ptr<QBNotesTextAttachment> QBNoteInlineArrowStyler::makeTextAttachment(const QString &representedText) const
{
    return std::make_shared<QBArrowTextAttachment>(representedText, themeManager());
}

bool QBNoteInlineArrowStyler::isOwnTextAttachment(const QBNotesTextAttachment &attachment) const
{
    return dynamic_cast<const QBArrowTextAttachment *>(&attachment) != nullptr;
}

quib::AttributeNameMask QBNoteInlineArrowStyler::ownTextAttachmentClasses() const
{
    return quib::AttributeNameMask::ofClass(typeid(QBArrowTextAttachment));
}
