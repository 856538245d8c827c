#include "QBUnorderedListTextAttachment.h"

#include "AttachmentDrawing.h"
#include "AttachmentMetrics.h"

#include <Themes/QBNotesTextThemeManager.h>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBUnorderedListTextAttachment::copy() const
{
    return std::make_shared<QBUnorderedListTextAttachment>(representedText(), themeManager());
}

QString QBUnorderedListTextAttachment::className() const
{
    return u"QBUnorderedListTextAttachment"_s;
}

NSRange QBUnorderedListTextAttachment::extraAttachmentRangeForAttachmentRange(
    NSRange range, const NSAttributedString &inAttributedString) const
{
    return inAttributedString.paragraphRangeForRange(range);
}

QSizeF QBUnorderedListTextAttachment::attachmentSize() const
{
    const double side = wholePointsOfBaseSize(quib::kBulletCell);
    return {side + attachmentRightSpacing(), side};
}

double QBUnorderedListTextAttachment::attachmentBaselineOffset() const
{
    return attachmentBaselineOffsetForCenteredAttachmentHeight(attachmentSize().height());
}

double QBUnorderedListTextAttachment::attachmentRightSpacing() const
{
    return themeManager() ? themeManager()->fullLineAttachmentDefaultRightSpacing() : 0;
}

void QBUnorderedListTextAttachment::drawAttachmentForAttachmentRect(quib::GraphicsContext &context,
                                                                    const QRectF &rect) const
{
    constexpr double kDiameter = 0.72;
    const QRectF cell = drawRectForAttachmentRect(rect);
    const double diameter = cell.height() * kDiameter;
    context.fillOval(quib::centeredRect(cell, {diameter, diameter}),
                     quib::colorOrGray(themeManager()->accentTextColor()));
}
