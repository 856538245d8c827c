#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

QT_BEGIN_NAMESPACE
class QIODevice;
QT_END_NAMESPACE

namespace quib {

/// The width and height of a picture. Units: pixels as it is shown, upright and cut as its file says.
struct PixelSize
{
    qint64 width = 0;
    qint64 height = 0;
    friend bool operator==(const PixelSize &a, const PixelSize &b) = default;
};

/// The forms of pictures made of pixels.
enum class ImageFormat
{
    PNG,
    JPEG,
    GIF,
    WebP,
    TIFF,
    HEIC,
    JPEG2000,
};

/// The form that the first bytes of a file tell. The name of the file has no say: a picture with a wrong extension is
/// read as what it is. Needs 16 bytes to know them all.
[[nodiscard]] std::optional<ImageFormat> imageFormatOfBytes(QByteArrayView bytes);

/// Reads the size from the header of a picture, without decoding it: the one that NSImage::pixelSize() tells.
/// Errors: nullopt for a file that cannot be read or whose header is of none of the forms or broken. Reads a bounded
/// number of pieces, whatever the file says of itself.
[[nodiscard]] std::optional<PixelSize> pixelSizeOfImageFile(const QString &path);
/// The same of an open device that can seek, such as a buffer.
[[nodiscard]] std::optional<PixelSize> pixelSizeOfImage(QIODevice &device);

} // namespace quib
