#include "QBLineSeparatorTextAttachment.h"

#include "AttachmentMetrics.h"

#include <Themes/QBNotesTextThemeManager.h>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBLineSeparatorTextAttachment::copy() const
{
    return std::make_shared<QBLineSeparatorTextAttachment>(representedText(), themeManager());
}

QString QBLineSeparatorTextAttachment::className() const
{
    return u"QBLineSeparatorTextAttachment"_s;
}

QSizeF QBLineSeparatorTextAttachment::attachmentSize() const
{
    if (!themeManager()) {
        return {0, 0};
    }
    return {themeManager()->textColumnMaxSize(),
            themeManager()->paragraphLineHeight() + themeManager()->paragraphLineSpacing()};
}

double QBLineSeparatorTextAttachment::attachmentBaselineOffset() const
{
    return attachmentBaselineOffsetForCenteredAttachmentHeight(attachmentSize().height());
}
