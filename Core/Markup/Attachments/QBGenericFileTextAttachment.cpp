#include "QBGenericFileTextAttachment.h"

#include "AttachmentMetrics.h"

#include <Themes/QBNotesTextThemeManager.h>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBGenericFileTextAttachment::copy() const
{
    return std::make_shared<QBGenericFileTextAttachment>(representedText(), themeManager());
}

QString QBGenericFileTextAttachment::className() const
{
    return u"QBGenericFileTextAttachment"_s;
}

QSizeF QBGenericFileTextAttachment::attachmentSize() const
{
    return {wholePointsOfBaseSize(quib::kFileCardWidth), wholePointsOfBaseSize(quib::kFileCardHeight)};
}

double QBGenericFileTextAttachment::attachmentBaselineOffset() const
{
    return themeManager() ? themeManager()->paragraphFontDescender() : 0;
}
