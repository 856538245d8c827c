#include "QBLinkedNoteTextAttachment.h"

#include "AttachmentMetrics.h"

#include <Themes/QBNotesTextThemeManager.h>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBLinkedNoteTextAttachment::copy() const
{
    return std::make_shared<QBLinkedNoteTextAttachment>(representedText(), themeManager());
}

QString QBLinkedNoteTextAttachment::className() const
{
    return u"QBLinkedNoteTextAttachment"_s;
}

double QBLinkedNoteTextAttachment::symbolSize() const
{
    return wholePointsOfBaseSize(quib::kLinkedNoteSymbolSide);
}
