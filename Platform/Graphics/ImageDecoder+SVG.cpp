// SVG by Qt's renderer, after everything that reaches outside of the picture has been taken away.

#include "ImageDecoder_p.h"

#include "GraphicsEnvironment.h"
#include "SafeSVG_p.h"

#include <QPainter>
#include <QSvgRenderer>
#include <QXmlStreamReader>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// Real drawings are far smaller. Units: bytes.
constexpr qsizetype kLargestSVG = 32 * 1024 * 1024;
/// A drawing that says that it is larger is drawn smaller: it has no pixels that could be lost. Units: pixels.
constexpr double kMostDrawnPixels = 32.0 * 1024 * 1024;

} // namespace

bool isSVG(const QByteArray &data)
{
    const QByteArray head = data.first(std::min<qsizetype>(data.size(), 64)).trimmed();
    const bool isMarkup = head.startsWith('<') || head.startsWith("\xEF\xBB\xBF") || head.startsWith("\xFF\xFE") ||
                          head.startsWith("\xFE\xFF");
    if (!isMarkup) {
        return false;
    }
    QXmlStreamReader reader(data);
    return reader.readNextStartElement() && reader.name() == "svg"_L1;
}

QImage decodeSVG(const ImageSource &source, NSError *error)
{
    if (source.data.size() > kLargestSVG) {
        return brokenImage(source, u"it is too long for a drawing", error);
    }
    if (!GraphicsEnvironment::ensure()) {
        return brokenImage(source, u"there are no fonts to draw it with", error);
    }
    QString reason;
    const auto safe = safeSVG(source.data, &reason);
    if (!safe) {
        return brokenImage(source, reason, error);
    }
    QSvgRenderer renderer;
    if (!renderer.load(*safe)) {
        return brokenImage(source, u"it cannot be drawn", error);
    }
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    const QSize natural = renderer.defaultSize();
    if (natural.width() < 1 || natural.height() < 1) {
        return brokenImage(source, u"it tells no size", error);
    }
    if (isTooLarge(natural.width(), natural.height())) {
        return tooLargeImage(source, natural.width(), natural.height(), error);
    }
    QSize size = source.box ? natural.scaled(*source.box, Qt::KeepAspectRatio) : natural;
    const double pixels = double(size.width()) * size.height();
    if (pixels > kMostDrawnPixels) {
        size *= std::sqrt(kMostDrawnPixels / pixels);
    }
    size = size.expandedTo(QSize(1, 1));
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) {
        return tooLargeImage(source, size.width(), size.height(), error);
    }
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    renderer.render(&painter);
    return image;
}

} // namespace quib
