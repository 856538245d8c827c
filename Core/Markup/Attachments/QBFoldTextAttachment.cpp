#include "QBFoldTextAttachment.h"

#include "AttachmentDrawing.h"
#include "AttachmentMetrics.h"

#include <Themes/QBNotesTextThemeManager.h>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBFoldTextAttachment::copy() const
{
    return std::make_shared<QBFoldTextAttachment>(representedText(), themeManager());
}

QString QBFoldTextAttachment::className() const
{
    return u"QBFoldTextAttachment"_s;
}

QSizeF QBFoldTextAttachment::attachmentSize() const
{
    return {wholePointsOfBaseSize(quib::kFoldWidth), wholePointsOfBaseSize(quib::kFoldHeight)};
}

double QBFoldTextAttachment::attachmentBaselineOffset() const
{
    return attachmentBaselineOffsetForCenteredAttachmentHeight(attachmentSize().height());
}

void QBFoldTextAttachment::drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const
{
    constexpr double kBackground = 0.2;
    constexpr double kDot = 0.16;
    constexpr int kDots = 3;
    const NSColor color = quib::colorOrGray(themeManager()->lightTextColor());
    context.fillRoundedRect(rect, rect.height() / 2, color.colorWithAlphaComponent(kBackground));
    const double diameter = rect.height() * kDot;
    for (int dot = 0; dot < kDots; ++dot) {
        const double x = rect.center().x() + (dot - 1) * 2 * diameter;
        context.fillOval({x - diameter / 2, rect.center().y() - diameter / 2, diameter, diameter}, color);
    }
}
