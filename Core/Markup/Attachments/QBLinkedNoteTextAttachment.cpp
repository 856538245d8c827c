#include "QBLinkedNoteTextAttachment.h"

#include "AttachmentDrawing.h"
#include "AttachmentMetrics.h"

#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>

#include <utility>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBLinkedNoteTextAttachment::copy() const
{
    return std::make_shared<QBLinkedNoteTextAttachment>(representedText(), themeManager());
}

QString QBLinkedNoteTextAttachment::className() const
{
    return u"QBLinkedNoteTextAttachment"_s;
}

double QBLinkedNoteTextAttachment::symbolSize() const
{
    return wholePointsOfBaseSize(quib::kLinkedNoteSymbolSide);
}

void QBLinkedNoteTextAttachment::drawSymbol(quib::GraphicsContext &context, const QRectF &rect) const
{
    // A sheet with three lines, the last of them a short one.
    constexpr double kLine = 0.08;
    constexpr double kCorner = 0.12;
    const double side = rect.height();
    const double line = std::max(1.0, side * kLine);
    const NSColor color = quib::colorOrGray(themeManager()->linkTextColor());
    const auto at = [&](double x, double y) { return rect.topLeft() + QPointF(x, y) * side; };
    const QRectF sheet = rect.adjusted(0.12 * side + line / 2, line / 2, -0.12 * side - line / 2, -line / 2);
    context.strokeRoundedRect(sheet, side * kCorner, color, line);
    for (const auto &[height, end] : {std::pair(0.32, 0.66), std::pair(0.5, 0.66), std::pair(0.68, 0.5)}) {
        context.strokeLine(at(0.34, height), at(end, height), color, line, quib::LineCap::Round);
    }
}
