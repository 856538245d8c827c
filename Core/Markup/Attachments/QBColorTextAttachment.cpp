#include "QBColorTextAttachment.h"

#include "AttachmentDrawing.h"
#include "AttachmentMetrics.h"

#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBColorTextAttachment::copy() const
{
    return std::make_shared<QBColorTextAttachment>(representedText(), themeManager());
}

QString QBColorTextAttachment::className() const
{
    return u"QBColorTextAttachment"_s;
}

NSRange
QBColorTextAttachment::extraAttachmentRangeForAttachmentRange(NSRange range,
                                                              const NSAttributedString &inAttributedString) const
{
    const qint64 limit = std::min(range.limit() + m_fullRepresentedText.size(), inAttributedString.length());
    return {range.location, std::max(limit - range.location, range.length)};
}

NSColor QBColorTextAttachment::colorFromHEX(const QString &string)
{
    return NSColor::colorFromHexString(string);
}

QSizeF QBColorTextAttachment::attachmentSize() const
{
    const double side = wholePointsOfBaseSize(quib::kColorSwatchSide);
    return {side + attachmentRightSpacing(), side};
}

double QBColorTextAttachment::attachmentBaselineOffset() const
{
    return attachmentBaselineOffsetForCenteredAttachmentHeight(attachmentSize().height());
}

double QBColorTextAttachment::attachmentRightSpacing() const
{
    return themeManager() ? themeManager()->baseFontSize() * quib::kInlineSymbolSpacing : 0;
}

void QBColorTextAttachment::drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const
{
    constexpr double kCorner = 0.25;
    constexpr double kEdge = 0.3; // keeps a swatch of the background's colour in sight
    const QRectF swatch = drawRectForAttachmentRect(rect).adjusted(0.5, 0.5, -0.5, -0.5);
    const double corner = swatch.height() * kCorner;
    context.fillRoundedRect(swatch, corner, representedColor());
    context.strokeRoundedRect(swatch, corner,
                              quib::colorOrGray(themeManager()->baseTextColor()).colorWithAlphaComponent(kEdge));
}
