#include "QBArrowTextAttachment.h"

#include "AttachmentMetrics.h"

#include <Themes/QBNotesTextThemeManager.h>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBArrowTextAttachment::copy() const
{
    return std::make_shared<QBArrowTextAttachment>(representedText(), themeManager());
}

QString QBArrowTextAttachment::className() const
{
    return u"QBArrowTextAttachment"_s;
}

bool QBArrowTextAttachment::isFlipped() const
{
    return representedText() == u"<-"_s;
}

QSizeF QBArrowTextAttachment::attachmentSize() const
{
    return {wholePointsOfBaseSize(quib::kArrowWidth), wholePointsOfBaseSize(quib::kArrowHeight)};
}

double QBArrowTextAttachment::attachmentBaselineOffset() const
{
    return attachmentBaselineOffsetForCenteredAttachmentHeight(attachmentSize().height());
}
