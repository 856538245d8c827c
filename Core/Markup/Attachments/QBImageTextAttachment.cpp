#include "QBImageTextAttachment.h"

#include "AttachmentDrawing.h"
#include "AttachmentMetrics.h"

#include <Text/NSStringHelpers.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>

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

void QBImageTextAttachment::drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const
{
    if (m_attachmentImageSize.isEmpty()) {
        QBGenericFileTextAttachment::drawAttachmentForAttachmentRect(context, rect);
        return;
    }
    const double corner =
        std::min({themeManager()->baseFontSize() * quib::kPictureCorner, rect.width() / 4, rect.height() / 4});
    if (m_attachmentImage.isEmpty()) {
        drawPlaceholder(context, rect, corner);
        return;
    }
    const QRectF picture = quib::fittedRect(rect, m_attachmentImage.size());
    context.saveState();
    context.clipToPath(NSBezierPath::bezierPathWithRoundedRect(picture, corner, corner));
    context.drawImage(m_attachmentImage, picture);
    context.restoreState();
}

void QBImageTextAttachment::drawPlaceholder(quib::GraphicsContext &context, const QRectF &rect, double corner) const
{
    // Two hills and a sun where the picture will be.
    constexpr double kLargestSymbol = 3; // in parts of the base size
    context.fillRoundedRect(rect, corner, quib::colorOrGray(themeManager()->codeBackgroundColor()));
    const double side =
        std::min({rect.width() / 2, rect.height() / 2, themeManager()->baseFontSize() * kLargestSymbol});
    const QRectF symbol = quib::centeredRect(rect, {side, side});
    const auto at = [&](double x, double y) { return symbol.topLeft() + QPointF(x, y) * side; };
    const NSColor color = quib::colorOrGray(themeManager()->separatorTextColor());
    NSBezierPath hills;
    hills.moveToPoint(at(0, 0.85));
    hills.lineToPoint(at(0.35, 0.35));
    hills.lineToPoint(at(0.56, 0.62));
    hills.lineToPoint(at(0.68, 0.48));
    hills.lineToPoint(at(1, 0.85));
    hills.closePath();
    context.fillPath(hills, color);
    context.fillOval({at(0.66, 0.14), at(0.86, 0.34)}, color);
}
