#include "QBCheckBoxTextAttachment.h"

#include "AttachmentDrawing.h"
#include "AttachmentMetrics.h"

#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBCheckBoxTextAttachment::copy() const
{
    return std::make_shared<QBCheckBoxTextAttachment>(representedText(), themeManager());
}

QString QBCheckBoxTextAttachment::className() const
{
    return u"QBCheckBoxTextAttachment"_s;
}

NSRange
QBCheckBoxTextAttachment::extraAttachmentRangeForAttachmentRange(NSRange range,
                                                                 const NSAttributedString &inAttributedString) const
{
    return inAttributedString.paragraphRangeForRange(range);
}

bool QBCheckBoxTextAttachment::isChecked() const
{
    const QString text = representedText();
    return text == u"+"_s || text == u"- [x]"_s;
}

bool QBCheckBoxTextAttachment::isMarkdown() const
{
    const QString text = representedText();
    return text == u"- [x]"_s || text == u"- [ ]"_s;
}

void QBCheckBoxTextAttachment::check()
{
    setRepresentedText(isMarkdown() ? u"- [x]"_s : u"+"_s);
    updateTextAttachment();
}

void QBCheckBoxTextAttachment::uncheck()
{
    setRepresentedText(isMarkdown() ? u"- [ ]"_s : u"-"_s);
    updateTextAttachment();
}

void QBCheckBoxTextAttachment::toggleCheck()
{
    if (isChecked()) {
        uncheck();
    } else {
        check();
    }
}

QSizeF QBCheckBoxTextAttachment::attachmentSize() const
{
    const double side = wholePointsOfBaseSize(quib::kCheckBoxSide);
    return {side + attachmentRightSpacing(), side};
}

double QBCheckBoxTextAttachment::attachmentBaselineOffset() const
{
    return attachmentBaselineOffsetForCenteredAttachmentHeight(attachmentSize().height());
}

double QBCheckBoxTextAttachment::attachmentRightSpacing() const
{
    return themeManager() ? themeManager()->fullLineAttachmentDefaultRightSpacing() : 0;
}

void QBCheckBoxTextAttachment::drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const
{
    constexpr double kLine = 0.08;
    constexpr double kCorner = 0.24;
    constexpr double kCheckLine = 0.12;
    constexpr QPointF kCheck[] = {{0.25, 0.53}, {0.43, 0.71}, {0.76, 0.31}};
    const QRectF cell = drawRectForAttachmentRect(rect);
    const double side = cell.height();
    const double line = std::max(1.0, side * kLine);
    const QRectF box = cell.adjusted(line / 2, line / 2, -line / 2, -line / 2);
    context.fillRoundedRect(box, side * kCorner, quib::colorOrGray(themeManager()->checkboxFillColor()));
    context.strokeRoundedRect(box, side * kCorner, quib::colorOrGray(themeManager()->checkboxStrokeColor()), line);
    if (isChecked()) {
        NSBezierPath check;
        check.moveToPoint(cell.topLeft() + kCheck[0] * side);
        check.lineToPoint(cell.topLeft() + kCheck[1] * side);
        check.lineToPoint(cell.topLeft() + kCheck[2] * side);
        context.strokePath(check, quib::colorOrGray(themeManager()->checkboxCheckColor()), side * kCheckLine,
                           quib::LineCap::Round);
    }
}
