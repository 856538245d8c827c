#include "QBNoteLineSeparatorStyler.h"

#include "QBNoteTextStylerAttributes.h"

#include <Markup/Attachments/QBLineSeparatorTextAttachment.h>
#include <Markup/Syntax/StylerSyntax.h>

using quib::syntax::Construct;

const NSRegularExpression &QBNoteLineSeparatorStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::LineSeparator, /*syntax=*/0);
}

QString QBNoteLineSeparatorStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::LineSeparator, /*syntax=*/0);
}

QStringList QBNoteLineSeparatorStyler::stylerEnclosingStrings()
{
    return quib::syntax::stylerEnclosingStrings(Construct::LineSeparator);
}

const NSAttributeName &QBNoteLineSeparatorStyler::stylerAttributeName()
{
    return QBNoteLineSeparatorStylerAttributeName;
}

const NSAttributeName &QBNoteLineSeparatorStyler::stylerMarkerAttributeName()
{
    return QBNoteLineSeparatorStylerMarkerAttributeName;
}

const NSRegularExpression *QBNoteLineSeparatorStyler::regularExpression() const
{
    return &quib::syntax::stylerRegularExpression(Construct::LineSeparator, syntax());
}

const NSRegularExpression *QBNoteLineSeparatorStyler::attachmentRegularExpression() const
{
    return quib::syntax::attachmentRegularExpression(Construct::LineSeparator, syntax());
}

std::shared_ptr<QBNotesTextAttachment>
QBNoteLineSeparatorStyler::makeTextAttachment(const QString &representedText) const
{
    return std::make_shared<QBLineSeparatorTextAttachment>(representedText, themeManager());
}

bool QBNoteLineSeparatorStyler::isOwnTextAttachment(const QBNotesTextAttachment &attachment) const
{
    return dynamic_cast<const QBLineSeparatorTextAttachment *>(&attachment) != nullptr;
}

quib::AttributeNameMask QBNoteLineSeparatorStyler::ownTextAttachmentClasses() const
{
    return quib::AttributeNameMask::ofClass(typeid(QBLineSeparatorTextAttachment));
}
