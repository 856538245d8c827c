#include "QBTitledURLTextAttachment.h"

#include "AttachmentMetrics.h"

#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBTitledURLTextAttachment::copy() const
{
    return std::make_shared<QBTitledURLTextAttachment>(representedText(), themeManager());
}

QString QBTitledURLTextAttachment::className() const
{
    return u"QBTitledURLTextAttachment"_s;
}

NSRange
QBTitledURLTextAttachment::extraAttachmentRangeForAttachmentRange(NSRange range,
                                                                  const NSAttributedString &inAttributedString) const
{
    const NSRange paragraph = inAttributedString.paragraphRangeForRange(range);
    const qint64 before = range.location - paragraph.location;
    const qsizetype bracket =
        before > 0 ? inAttributedString.stringInRange({paragraph.location, before}).lastIndexOf(u'[') : -1;
    if (bracket < 0) {
        return range;
    }
    const qint64 start = paragraph.location + bracket;
    return {start, std::min(range.limit() + 1, inAttributedString.length()) - start};
}

QSizeF QBTitledURLTextAttachment::attachmentSize() const
{
    const double side = symbolSize();
    return {attachmentLeftSpacing() + side + attachmentRightSpacing(), side};
}

double QBTitledURLTextAttachment::attachmentBaselineOffset() const
{
    return attachmentBaselineOffsetForCenteredAttachmentHeight(attachmentSize().height());
}

double QBTitledURLTextAttachment::attachmentLeftSpacing() const
{
    return themeManager() ? themeManager()->baseFontSize() * quib::kLinkSymbolSpacing : 0;
}

double QBTitledURLTextAttachment::attachmentRightSpacing() const
{
    return attachmentLeftSpacing();
}

double QBTitledURLTextAttachment::symbolSize() const
{
    return wholePointsOfBaseSize(quib::kTitledURLSymbolSide);
}
