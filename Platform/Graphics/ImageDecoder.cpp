#include "ImageDecoder_p.h"

#include "ImageSizeProbe.h"
#include "NSImage.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>
#include <QLoggingCategory>

#include <mutex>

#include <tiffio.h>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

QLoggingCategory::CategoryFilter s_nextFilter = nullptr;

/// Faults of pictures are told by errors; the libraries' own words on the console would repeat them.
void filterPictureMessages(QLoggingCategory *category)
{
    s_nextFilter(category);
    const QLatin1StringView name(category->categoryName());
    if (name.startsWith("qt.gui.imageio"_L1) || name.startsWith("qt.svg"_L1) || name.startsWith("qt.gui.icc"_L1)) {
        for (const QtMsgType type : {QtDebugMsg, QtInfoMsg, QtWarningMsg}) {
            category->setEnabled(type, false);
        }
    }
}

/// What holds for the picture library in the whole process.
void prepareLibrary()
{
    static std::once_flag s_once;
    std::call_once(s_once, [] {
        // The limit on pixels stands here, with an error that tells it; the library's own is lower. In megabytes, for
        // eight bytes a pixel.
        QImageReader::setAllocationLimit(static_cast<int>(NSImage::kLargestPixelCount / (1024 * 1024) * 8));
        s_nextFilter = QLoggingCategory::installFilter(nullptr);
        QLoggingCategory::installFilter(filterPictureMessages);
        TIFFSetWarningHandler(nullptr);
        TIFFSetErrorHandler(nullptr);
    });
}

/// Bytes in which looking beyond the end fails without a word on the console.
class QuietBuffer : public QBuffer
{
public:
    explicit QuietBuffer(const QByteArray &data) { setData(data); }
    bool seek(qint64 offset) override { return offset >= 0 && offset <= size() && QBuffer::seek(offset); }
};

const char *libraryName(ImageFormat format)
{
    switch (format) {
    case ImageFormat::PNG:
        return "png";
    case ImageFormat::JPEG:
        return "jpeg";
    case ImageFormat::GIF:
        return "gif";
    case ImageFormat::WebP:
        return "webp";
    case ImageFormat::TIFF:
        return "tiff";
    case ImageFormat::HEIC:
    case ImageFormat::JPEG2000:
        break;
    }
    return nullptr;
}

/// The forms that Qt reads.
QImage decodeByLibrary(const ImageSource &source, ImageFormat format, NSError *error)
{
    const bool isWhole = format == ImageFormat::JPEG  ? isWholeJPEG(source.data)
                         : format == ImageFormat::GIF ? isWholeGIF(source.data)
                         : format == ImageFormat::PNG ? isWholePNG(source.data)
                                                      : true;
    if (!isWhole) {
        return brokenImage(source, u"it is cut off or damaged", error);
    }
    QuietBuffer buffer(source.data);
    if (!buffer.open(QIODevice::ReadOnly)) {
        return brokenImage(source, u"it cannot be read", error);
    }
    QImageReader reader(&buffer, libraryName(format));
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    const QSize stored = reader.size();
    if (stored.isValid() && isTooLarge(stored.width(), stored.height())) {
        return tooLargeImage(source, stored.width(), stored.height(), error);
    }
    if (source.box && stored.isValid() && format == ImageFormat::JPEG) {
        // JPEG is decoded to an eighth, a quarter or half of its size at a fraction of the cost.
        const bool isTurned = reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
        reader.setScaledSize(sizeFittingBox(stored, isTurned ? source.box->transposed() : *source.box));
    }
    QImage image = reader.read();
    return image.isNull() ? brokenImage(source, reader.errorString(), error) : image;
}

/// Shrinks a picture into the box and gives it sRGB colours and 8 bits a component.
QImage finished(QImage image, const ImageSource &source)
{
    image = std::move(image).convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                                     : QImage::Format_RGB32);
    if (source.box) {
        const QSize size = sizeFittingBox(image.size(), *source.box);
        if (size != image.size()) {
            image = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        }
    }
    const QColorSpace sRGB(QColorSpace::SRgb);
    if (image.colorSpace().isValid() && image.colorSpace() != sRGB) {
        image.convertToColorSpace(sRGB);
    }
    image.setColorSpace({});
    return image;
}

} // namespace

bool isTooLarge(qint64 width, qint64 height)
{
    return width > 0 && height > NSImage::kLargestPixelCount / width;
}

QImage brokenImage(const ImageSource &source, QStringView reason, NSError *error)
{
    NSError::fill(error, kNSCocoaErrorDomain, qint64(NSCocoaErrorCode::FileReadCorruptFile),
                  u"cannot read the picture "_s % source.name % u": "_s % reason);
    return {};
}

QImage tooLargeImage(const ImageSource &source, qint64 width, qint64 height, NSError *error)
{
    NSError::fill(error, kNSCocoaErrorDomain, qint64(NSCocoaErrorCode::FileReadTooLarge),
                  u"the picture "_s % source.name % u" is too large to be read: "_s % QString::number(width) %
                      u" x "_s % QString::number(height) % u" pixels"_s);
    return {};
}

QImage decodeImage(const ImageSource &source, NSError *error)
{
    prepareLibrary();
    if (source.box && (source.box->width() < 1 || source.box->height() < 1)) {
        return brokenImage(source, u"it was asked for without a size", error);
    }
    const std::optional<ImageFormat> format = imageFormatOfBytes(source.data);
    if (!format) {
        return isSVG(source.data) ? decodeSVG(source, error)
                                  : brokenImage(source, u"it is in none of the known forms", error);
    }
    QBuffer buffer;
    buffer.setData(source.data);
    const auto size = buffer.open(QIODevice::ReadOnly) ? pixelSizeOfImage(buffer) : std::nullopt;
    if (!size) {
        return brokenImage(source, u"it tells no size", error);
    }
    if (isTooLarge(size->width, size->height)) {
        return tooLargeImage(source, size->width, size->height, error);
    }
    QImage image = *format == ImageFormat::HEIC       ? decodeHEIC(source, error)
                   : *format == ImageFormat::JPEG2000 ? decodeJPEG2000(source, error)
                                                      : decodeByLibrary(source, *format, error);
    return image.isNull() ? image : finished(std::move(image), source);
}

} // namespace quib
