#include "QBAddressTextAttachment.h"

#include "AttachmentDrawing.h"
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

void QBAddressTextAttachment::drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const
{
    const QRectF cell = drawRectForAttachmentRect(rect);
    const double side = cell.height();
    const auto at = [&](double x, double y) { return cell.topLeft() + QPointF(x, y) * side; };
    // A drop that stands on its point, with a round hole.
    NSBezierPath pin;
    pin.moveToPoint(at(0.5, 1));
    pin.curveToPoint(at(0.15, 0.36), at(0.42, 0.8), at(0.15, 0.58));
    pin.curveToPoint(at(0.5, 0.02), at(0.15, 0.17), at(0.31, 0.02));
    pin.curveToPoint(at(0.85, 0.36), at(0.69, 0.02), at(0.85, 0.17));
    pin.curveToPoint(at(0.5, 1), at(0.85, 0.58), at(0.58, 0.8));
    pin.closePath();
    constexpr double kHole = 0.28;
    const QPointF hole = at(0.5, 0.37) - QPointF(kHole, kHole) * side / 2;
    pin.appendBezierPath(NSBezierPath::bezierPathWithOvalInRect({hole, QSizeF(kHole, kHole) * side}));
    context.fillPath(pin, quib::colorOrGray(themeManager()->mapTextColor()));
}
