#include "QBLineSeparatorTextAttachment.h"

#include "AttachmentDrawing.h"
#include "AttachmentMetrics.h"

#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>

#include <cmath>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBLineSeparatorTextAttachment::copy() const
{
    return std::make_shared<QBLineSeparatorTextAttachment>(representedText(), themeManager());
}

QString QBLineSeparatorTextAttachment::className() const
{
    return u"QBLineSeparatorTextAttachment"_s;
}

QSizeF QBLineSeparatorTextAttachment::attachmentSize() const
{
    if (!themeManager()) {
        return {0, 0};
    }
    return {themeManager()->textColumnMaxSize(),
            themeManager()->paragraphLineHeight() + themeManager()->paragraphLineSpacing()};
}

double QBLineSeparatorTextAttachment::attachmentBaselineOffset() const
{
    return attachmentBaselineOffsetForCenteredAttachmentHeight(attachmentSize().height());
}

void QBLineSeparatorTextAttachment::drawAttachmentForAttachmentRect(quib::GraphicsContext &context,
                                                                    const QRectF &rect) const
{
    constexpr double kBaseSizesOfAPoint = 16;
    const double line = std::max(1.0, std::floor(themeManager()->baseFontSize() / kBaseSizesOfAPoint));
    const double top = std::round(rect.center().y() - line / 2);
    context.fillRect({rect.x(), top, rect.width(), line}, quib::colorOrGray(themeManager()->separatorTextColor()));
}
