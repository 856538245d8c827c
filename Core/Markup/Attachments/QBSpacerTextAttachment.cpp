#include "QBSpacerTextAttachment.h"

#include "AttachmentMetrics.h"

#include <Themes/QBNotesTextThemeManager.h>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBSpacerTextAttachment::copy() const
{
    return std::make_shared<QBSpacerTextAttachment>(representedText(), themeManager());
}

QString QBSpacerTextAttachment::className() const
{
    return u"QBSpacerTextAttachment"_s;
}

QSizeF QBSpacerTextAttachment::attachmentSize() const
{
    if (!themeManager()) {
        return {0, 0};
    }
    const double height = themeManager()->paragraphFontXHeight();
    return {height * quib::kSpacerWidth, height};
}
