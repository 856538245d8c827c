#include "QBAddressTextAttachment.h"

#include "AttachmentMetrics.h"

#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBAddressTextAttachment::copy() const
{
    return std::make_shared<QBAddressTextAttachment>(representedText(), themeManager());
}

QString QBAddressTextAttachment::className() const
{
    return u"QBAddressTextAttachment"_s;
}

NSRange
QBAddressTextAttachment::extraAttachmentRangeForAttachmentRange(NSRange range,
                                                                const NSAttributedString &inAttributedString) const
{
    const qint64 limit = std::min(range.limit() + m_fullRepresentedText.size(), inAttributedString.length());
    return {range.location, std::max(limit - range.location, range.length)};
}

QSizeF QBAddressTextAttachment::attachmentSize() const
{
    const double side = wholePointsOfBaseSize(quib::kAddressPinSide);
    return {side + attachmentRightSpacing(), side};
}

double QBAddressTextAttachment::attachmentBaselineOffset() const
{
    return attachmentBaselineOffsetForCenteredAttachmentHeight(attachmentSize().height());
}

double QBAddressTextAttachment::attachmentRightSpacing() const
{
    return themeManager() ? themeManager()->baseFontSize() * quib::kInlineSymbolSpacing : 0;
}
