#pragma once

#include <QString>

#include <optional>

namespace quib {

/// The width and height of a picture. Units: pixels as stored, orientation left aside.
struct PixelSize
{
    qint64 width = 0;
    qint64 height = 0;
    friend bool operator==(const PixelSize &a, const PixelSize &b) = default;
};

/// Reads the size from the header of a PNG, GIF, JPEG, TIFF, JPEG 2000 or HEIC file, without decoding the picture. The
/// form is told by the bytes, not by the name.
/// Errors: nullopt for a file that cannot be read or whose header is none of these or broken. Reads a bounded number of
/// pieces, whatever the file says of itself.
[[nodiscard]] std::optional<PixelSize> pixelSizeOfImageFile(const QString &path);

} // namespace quib
