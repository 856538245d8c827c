#include "NSImage.h"

#include "ImageDecoder_p.h"

#include <Files/AtomicFile.h>
#include <Foundation/Assert.h>

#include <QBuffer>
#include <QColor>
#include <QImage>
#include <QImageWriter>
#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

QByteArray written(const QImage &image, const char *format, int quality)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!image.isNull() && buffer.open(QIODevice::WriteOnly)) {
        QImageWriter writer(&buffer, format);
        writer.setQuality(quality);
        if (!writer.write(image)) {
            return {};
        }
    }
    return bytes;
}

bool writeBytes(const QByteArray &bytes, const QString &path, NSError *error)
{
    if (bytes.isEmpty()) {
        return NSError::fill(error, kNSCocoaErrorDomain, qint64(NSCocoaErrorCode::FileWriteUnknown),
                             u"no picture to write to "_s % path);
    }
    return quib::writeFileAtomically(path, bytes, error);
}

/// The first and the last row, or column, for which a test holds.
template <typename Test> std::pair<int, int> firstAndLast(int count, Test test)
{
    int first = 0;
    while (first < count && !test(first)) {
        ++first;
    }
    int last = count - 1;
    while (last > first && !test(last)) {
        --last;
    }
    return {first, last};
}

} // namespace

NSImage::NSImage(QImage image, double scale)
    : m_scale(scale > 0 ? scale : 1)
{
    if (!image.isNull()) {
        const auto format = image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
        m_image = std::make_shared<const QImage>(std::move(image).convertToFormat(format));
    }
}

std::optional<NSImage> NSImage::imageWithContentsOfFile(const QString &path, NSError *error,
                                                        std::optional<QSize> fittingBox)
{
    const auto data = quib::readWholeFile(path, error);
    return data ? imageWithData(*data, path, error, fittingBox) : std::nullopt;
}

std::optional<NSImage> NSImage::imageWithData(const QByteArray &data, const QString &name, NSError *error,
                                              std::optional<QSize> fittingBox)
{
    QImage image = quib::decodeImage({.data = data, .name = name, .box = fittingBox}, error);
    return image.isNull() ? std::nullopt : std::optional(NSImage(std::move(image)));
}

QSize NSImage::pixelSize() const
{
    return isEmpty() ? QSize(0, 0) : m_image->size();
}

QSizeF NSImage::size() const
{
    return QSizeF(pixelSize()) / m_scale;
}

bool NSImage::hasAlpha() const
{
    return !isEmpty() && m_image->hasAlphaChannel();
}

NSColor NSImage::colorAt(int x, int y) const
{
    QUIB_REQUIRE(!isEmpty() && m_image->valid(x, y));
    const QColor color = m_image->pixelColor(x, y);
    return NSColor::colorWithRed(color.redF(), color.greenF(), color.blueF(), color.alphaF());
}

QRect NSImage::opaqueBounds() const
{
    const QSize size = pixelSize();
    if (!hasAlpha()) {
        return QRect(QPoint(0, 0), size);
    }
    const auto isSeen = [this](int x, int y) {
        return qAlpha(reinterpret_cast<const QRgb *>(m_image->constScanLine(y))[x]) != 0;
    };
    const auto [top, bottom] = firstAndLast(size.height(), [&](int y) {
        int x = 0;
        while (x < size.width() && !isSeen(x, y)) {
            ++x;
        }
        return x < size.width();
    });
    if (top == size.height()) {
        return {};
    }
    // Row by row, as the pixels lie in memory.
    int left = size.width();
    int right = -1;
    for (int y = top; y <= bottom; ++y) {
        for (int x = 0; x < left; ++x) {
            if (isSeen(x, y)) {
                left = x;
            }
        }
        for (int x = size.width() - 1; x > right; --x) {
            if (isSeen(x, y)) {
                right = x;
            }
        }
    }
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

QImage NSImage::image() const
{
    return isEmpty() ? QImage() : *m_image;
}

NSImage NSImage::imageWithScale(double scale) const
{
    NSImage image = *this;
    image.m_scale = scale > 0 ? scale : 1;
    return image;
}

NSImage NSImage::imageScaledToPixelSize(QSize pixelSize, bool antialias) const
{
    if (isEmpty() || pixelSize == this->pixelSize()) {
        return *this;
    }
    return NSImage(m_image->scaled(pixelSize.expandedTo(QSize(1, 1)), Qt::IgnoreAspectRatio,
                                   antialias ? Qt::SmoothTransformation : Qt::FastTransformation),
                   m_scale);
}

NSImage NSImage::imageCroppedToPixelRect(QRect rect) const
{
    const QRect inside = rect & QRect(QPoint(0, 0), pixelSize());
    return inside.isEmpty() ? NSImage() : NSImage(m_image->copy(inside), m_scale);
}

QByteArray NSImage::pngData() const
{
    constexpr int kDefaultCompression = -1;
    return written(image(), "png", kDefaultCompression);
}

QByteArray NSImage::jpegData(int quality) const
{
    QImage flat = image();
    if (hasAlpha()) {
        flat = QImage(pixelSize(), QImage::Format_RGB32);
        flat.fill(Qt::white);
        QPainter(&flat).drawImage(0, 0, *m_image);
    }
    return written(flat, "jpeg", std::clamp(quality, 0, 100));
}

bool NSImage::writePNGToFile(const QString &path, NSError *error) const
{
    return writeBytes(pngData(), path, error);
}

bool NSImage::writeJPEGToFile(const QString &path, NSError *error, int quality) const
{
    return writeBytes(jpegData(quality), path, error);
}

bool operator==(const NSImage &a, const NSImage &b)
{
    return a.m_scale == b.m_scale && (a.m_image == b.m_image || a.image() == b.image());
}

namespace quib {

QSize sizeFittingBox(QSize size, QSize box)
{
    const double ratio = std::min({1.0, double(box.width()) / size.width(), double(box.height()) / size.height()});
    const auto side = [ratio](int length) { return std::max(1, static_cast<int>(std::lround(length * ratio))); };
    return {side(size.width()), side(size.height())};
}

} // namespace quib
