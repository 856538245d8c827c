#include "AttachmentDrawing.h"

#include <Text/NSStringHelpers.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

NSColor colorOrGray(const std::optional<NSColor> &color)
{
    constexpr double kMiddle = 0.5;
    return color.value_or(NSColor::colorWithWhite(kMiddle));
}

QRectF centeredRect(const QRectF &inRect, QSizeF size)
{
    const QPointF centre = inRect.center();
    return {centre.x() - size.width() / 2, centre.y() - size.height() / 2, size.width(), size.height()};
}

QRectF fittedRect(const QRectF &inRect, QSizeF size)
{
    return size.isEmpty() ? inRect : centeredRect(inRect, size.scaled(inRect.size(), Qt::KeepAspectRatio));
}

void drawCenteredText(GraphicsContext &context, QStringView text, const QRectF &inRect, const NSFont &font,
                      const NSColor &color)
{
    const QPointF start(inRect.center().x() - font.advanceOfText(text) / 2, inRect.center().y() + font.capHeight() / 2);
    context.drawText(text, start, font, color);
}

QString elidedFilename(const QString &filename, const NSFont &font, double width)
{
    // Longer names are wider than any card, whatever their letters.
    constexpr qsizetype kMostUnits = 512;
    constexpr qsizetype kLongestExtension = 8;
    if (filename.size() <= kMostUnits && font.advanceOfText(filename) <= width) {
        return filename;
    }
    const qsizetype point = filename.lastIndexOf(u'.');
    const bool hasExtension = point > 0 && filename.size() - point - 1 <= kLongestExtension;
    const QStringView wholeBase = QStringView(filename).first(hasExtension ? point : filename.size());
    const QString ending = QString(u"…" % QStringView(filename).sliced(wholeBase.size()));
    const QStringView base = wholeBase.first(std::min(wholeBase.size(), kMostUnits));
    const auto shortened = [&](qsizetype units) {
        // A cut never leaves half a character behind.
        const NSRange cut = rangeOfComposedCharacterSequencesForRange(base, {units, 0});
        return QString(base.first(std::min<qsizetype>(cut.location, units)) % ending);
    };
    qsizetype fits = 0;
    qsizetype tooLong = base.size();
    while (tooLong - fits > 1) {
        const qsizetype middle = (fits + tooLong) / 2;
        (font.advanceOfText(shortened(middle)) <= width ? fits : tooLong) = middle;
    }
    return shortened(fits);
}

} // namespace quib
