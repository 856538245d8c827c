#include "QBArrowTextAttachment.h"

#include "AttachmentDrawing.h"
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

void QBArrowTextAttachment::drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const
{
    constexpr double kMargin = 0.08;
    constexpr double kHead = 0.36;
    constexpr double kLine = 0.13;
    const double margin = rect.width() * kMargin;
    const double head = rect.height() * kHead;
    const double line = rect.height() * kLine;
    const double middle = rect.center().y();
    const double direction = isFlipped() ? -1 : 1;
    const QPointF tip(isFlipped() ? rect.left() + margin : rect.right() - margin, middle);
    const QPointF tail(isFlipped() ? rect.right() - margin : rect.left() + margin, middle);
    const NSColor color = quib::colorOrGray(themeManager()->accentTextColor());
    context.strokeLine(tail, tip, color, line, quib::LineCap::Round);
    NSBezierPath point;
    point.moveToPoint(tip + QPointF(-head * direction, -head));
    point.lineToPoint(tip);
    point.lineToPoint(tip + QPointF(-head * direction, head));
    context.strokePath(point, color, line, quib::LineCap::Round);
}
