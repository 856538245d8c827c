#include "QBFoldTextAttachment.h"

#include "AttachmentMetrics.h"

#include <Themes/QBNotesTextThemeManager.h>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBFoldTextAttachment::copy() const
{
    return std::make_shared<QBFoldTextAttachment>(representedText(), themeManager());
}

QString QBFoldTextAttachment::className() const
{
    return u"QBFoldTextAttachment"_s;
}

QSizeF QBFoldTextAttachment::attachmentSize() const
{
    return {wholePointsOfBaseSize(quib::kFoldWidth), wholePointsOfBaseSize(quib::kFoldHeight)};
}

double QBFoldTextAttachment::attachmentBaselineOffset() const
{
    return attachmentBaselineOffsetForCenteredAttachmentHeight(attachmentSize().height());
}
