#include "QBTitledURLTextAttachment.h"

#include "AttachmentDrawing.h"
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

void QBTitledURLTextAttachment::drawAttachmentForAttachmentRect(quib::GraphicsContext &context,
                                                                const QRectF &rect) const
{
    const double side = symbolSize();
    drawSymbol(context, quib::centeredRect(drawRectForAttachmentRect(rect), {side, side}));
}

void QBTitledURLTextAttachment::drawSymbol(quib::GraphicsContext &context, const QRectF &rect) const
{
    // Two links of a chain that lies aslant; each reaches into the other.
    constexpr double kLength = 0.5;
    constexpr double kWidth = 0.32;
    constexpr double kOffset = 0.2;
    constexpr double kLine = 0.09;
    constexpr double kAslant = -45;
    const double side = rect.height();
    const NSColor color = quib::colorOrGray(themeManager()->linkTextColor());
    context.saveState();
    context.translateBy(rect.center().x(), rect.center().y());
    context.rotateBy(kAslant);
    for (const double offset : {-kOffset, kOffset}) {
        const QRectF link((offset - kLength / 2) * side, -kWidth / 2 * side, kLength * side, kWidth * side);
        context.strokeRoundedRect(link, link.height() / 2, color, side * kLine);
    }
    context.restoreState();
}
