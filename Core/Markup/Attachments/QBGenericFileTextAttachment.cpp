#include "QBGenericFileTextAttachment.h"

#include "AttachmentDrawing.h"
#include "AttachmentMetrics.h"

#include <Text/NSDateFormatter.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBGenericFileTextAttachment::copy() const
{
    return std::make_shared<QBGenericFileTextAttachment>(representedText(), themeManager());
}

QString QBGenericFileTextAttachment::className() const
{
    return u"QBGenericFileTextAttachment"_s;
}

QSizeF QBGenericFileTextAttachment::attachmentSize() const
{
    return {wholePointsOfBaseSize(quib::kFileCardWidth), wholePointsOfBaseSize(quib::kFileCardHeight)};
}

double QBGenericFileTextAttachment::attachmentBaselineOffset() const
{
    return themeManager() ? themeManager()->paragraphFontDescender() : 0;
}

void QBGenericFileTextAttachment::drawAttachmentForAttachmentRect(quib::GraphicsContext &context,
                                                                  const QRectF &rect) const
{
    constexpr double kMargin = 0.17;
    constexpr double kSheetRatio = 0.78;
    constexpr double kCorner = 0.1;
    constexpr double kDetailSize = 0.8;
    const QRectF card = rect.adjusted(0.5, 0.5, -0.5, -0.5);
    const double height = card.height();
    context.fillRoundedRect(card, height * kCorner, quib::colorOrGray(themeManager()->codeBackgroundColor()));
    context.strokeRoundedRect(card, height * kCorner, quib::colorOrGray(themeManager()->codeStrokeColor()));

    const double margin = height * kMargin;
    const double sheetHeight = height - 2 * margin;
    const QRectF sheet(card.left() + margin, card.top() + margin, sheetHeight * kSheetRatio, sheetHeight);
    drawSheet(context, sheet);

    const double left = sheet.right() + margin;
    const double width = card.right() - margin - left;
    const NSFont font = themeManager()->paragraphFont();
    const NSFont detailFont = font.fontWithSize(font.pointSize() * kDetailSize);
    const QString detail = m_modificationDate
                               ? NSDateFormatter(NSDateFormatter::Style::Medium, NSDateFormatter::Style::Short)
                                     .stringFromDate(*m_modificationDate)
                               : QString();
    const double middle = card.center().y();
    const double baseline = detail.isEmpty() ? middle + font.capHeight() / 2 : middle - margin / 3;
    context.drawText(quib::elidedFilename(m_filename, font, width), {left, baseline}, font,
                     quib::colorOrGray(themeManager()->baseTextColor()));
    if (!detail.isEmpty() && detailFont.advanceOfText(detail) <= width) {
        context.drawText(detail, {left, middle + margin / 3 + detailFont.ascender()}, detailFont,
                         quib::colorOrGray(themeManager()->lightTextColor()));
    }
}

void QBGenericFileTextAttachment::drawSheet(quib::GraphicsContext &context, const QRectF &rect) const
{
    // A sheet whose corner is turned down, with the kind of the file on it.
    constexpr double kTurnedCorner = 0.32;
    constexpr double kLine = 0.045;
    constexpr double kLettersSize = 0.26;
    constexpr double kLettersPlace = 0.68;
    constexpr qsizetype kLongestKind = 4;
    const double turned = rect.width() * kTurnedCorner;
    const NSColor color = quib::colorOrGray(themeManager()->accentTextColor());
    const double line = std::max(1.0, rect.width() * kLine);
    NSBezierPath outline;
    outline.moveToPoint(rect.topLeft());
    outline.lineToPoint(rect.topRight() - QPointF(turned, 0));
    outline.lineToPoint(rect.topRight() + QPointF(0, turned));
    outline.lineToPoint(rect.bottomRight());
    outline.lineToPoint(rect.bottomLeft());
    outline.closePath();
    context.strokePath(outline, color, line, quib::LineCap::Round);
    NSBezierPath corner;
    corner.moveToPoint(rect.topRight() - QPointF(turned, 0));
    corner.lineToPoint(rect.topRight() + QPointF(-turned, turned));
    corner.lineToPoint(rect.topRight() + QPointF(0, turned));
    context.strokePath(corner, color, line, quib::LineCap::Round);

    const QString kind = QFileInfo(m_filename).suffix().toUpper();
    if (!kind.isEmpty() && kind.size() <= kLongestKind) {
        const NSFont font = themeManager()->paragraphBoldFont().fontWithSize(rect.height() * kLettersSize);
        const double place = rect.top() + rect.height() * kLettersPlace;
        const double width = font.advanceOfText(kind);
        const NSFont fitting = font.fontWithSize(font.pointSize() * std::min(1.0, rect.width() * 0.86 / width));
        quib::drawCenteredText(context, kind, {rect.left(), place, rect.width(), 0}, fitting, color);
    }
}
