#include "QBNoteLinkedNoteStyler.h"

#include <Markup/Attachments/QBLinkedNoteTextAttachment.h>
#include <Markup/Syntax/StylerSyntax.h>

using quib::syntax::Construct;

const NSRegularExpression &QBNoteLinkedNoteStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::LinkedNote, /*syntax=*/0);
}

QStringList QBNoteLinkedNoteStyler::stylerMarkerComponents()
{
    return quib::syntax::stylerMarkerComponents(Construct::LinkedNote);
}

const NSRegularExpression *QBNoteLinkedNoteStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

const NSRegularExpression *QBNoteLinkedNoteStyler::attachmentRegularExpression() const
{
    return quib::syntax::attachmentRegularExpression(Construct::LinkedNote, /*syntax=*/0);
}

bool QBNoteLinkedNoteStyler::isOwnTextAttachment(const QBNotesTextAttachment &attachment) const
{
    return dynamic_cast<const QBLinkedNoteTextAttachment *>(&attachment) != nullptr;
}

quib::AttributeNameMask QBNoteLinkedNoteStyler::ownTextAttachmentClasses() const
{
    return quib::AttributeNameMask::ofClass(typeid(QBLinkedNoteTextAttachment));
}

std::shared_ptr<QBNotesTextAttachment> QBNoteLinkedNoteStyler::makeLinkAttachment(const QString &representedText) const
{
    return std::make_shared<QBLinkedNoteTextAttachment>(representedText, themeManager());
}

bool QBNoteLinkedNoteStyler::isStyledTextAttachment(const QBNotesTextAttachment &attachment) const
{
    return isOwnTextAttachment(attachment);
}
