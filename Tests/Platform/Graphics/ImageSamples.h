#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

#include <vector>

namespace quib::tests {

/// A picture with a colour of its own in each quarter, by which one sees how it was turned: red and green above, blue
/// and white below.
[[nodiscard]] QImage quarters(int width, int height);

/// A picture as bytes of a form: "png", "jpeg", "webp", "tiff", "gif", "heic", "jp2" or "j2k". A failure fails
/// the test.
[[nodiscard]] QByteArray encoded(const QImage &image, const QByteArray &form);

/// The forms that encoded knows, of which a picture comes back nearly as it was.
[[nodiscard]] std::vector<QByteArray> sampleForms();

/// A JPEG with an orientation, 1 to 8, in its EXIF data.
[[nodiscard]] QByteArray jpegWithOrientation(const QImage &image, int orientation);

/// The same as a HEIC, which is turned by boxes of its own.
[[nodiscard]] QByteArray heicWithOrientation(const QImage &image, int orientation);

/// An uncompressed TIFF with an orientation, in either order of bytes and with offsets of either size.
struct TIFFKind
{
    bool isBigEndian = false;
    bool hasWideOffsets = false;
};
[[nodiscard]] QByteArray tiffWithOrientation(const QImage &image, int orientation, TIFFKind kind);

/// The first bytes of a PNG of that size, without pixels.
[[nodiscard]] QByteArray pngHeader(quint32 width, quint32 height);

/// Four letters that name the quarters' colours, from the top left to the bottom right, in reading order: "RGBW" for
/// quarters(). "?" for any other colour.
[[nodiscard]] std::string quartersOf(const QImage &image);

} // namespace quib::tests
