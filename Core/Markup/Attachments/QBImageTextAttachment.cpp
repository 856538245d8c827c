#include "QBImageTextAttachment.h"

#include "AttachmentMetrics.h"

#include <Text/NSStringHelpers.h>
#include <Themes/QBNotesTextThemeManager.h>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBImageTextAttachment::copy() const
{
    return std::make_shared<QBImageTextAttachment>(representedText(), themeManager());
}

QString QBImageTextAttachment::className() const
{
    return u"QBImageTextAttachment"_s;
}

NSRange
QBImageTextAttachment::extraAttachmentRangeForAttachmentRange(NSRange range,
                                                              const NSAttributedString &inAttributedString) const
{
    const NSRange paragraph = inAttributedString.paragraphRangeForRange(range);
    if (paragraph.location != range.location || paragraph.length <= range.length) {
        return range;
    }
    const NSRange behind{range.limit(), paragraph.limit() - range.limit()};
    for (const QChar unit : inAttributedString.stringInRange(behind)) {
        if (!quib::isNewline(unit.unicode())) {
            return range;
        }
    }
    return paragraph;
}

QSizeF QBImageTextAttachment::attachmentSize() const
{
    return m_attachmentImageSize.isEmpty() ? QBGenericFileTextAttachment::attachmentSize() : m_attachmentImageSize;
}

double QBImageTextAttachment::attachmentBaselineOffset() const
{
    return m_attachmentImageSize.isEmpty() ? QBGenericFileTextAttachment::attachmentBaselineOffset() : 0;
}
