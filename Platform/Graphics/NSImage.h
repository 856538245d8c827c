#pragma once

#include "NSColor.h"

#include <Foundation/NSError.h>

#include <QByteArray>
#include <QRect>
#include <QSize>
#include <QString>

#include <memory>
#include <optional>

QT_BEGIN_NAMESPACE
class QImage;
QT_END_NAMESPACE

/// A picture made of pixels, in sRGB. An immutable value, cheap to copy; any queue. Reading needs no application
/// object, but for SVG, which may hold text.
class NSImage
{
public:
    /// No picture: no pixels, no size.
    NSImage() = default;
    /// Takes over pixels that were drawn elsewhere.
    explicit NSImage(QImage image, double scale = 1);

    /// Pictures above this are refused before their pixels are decoded.
    static constexpr qint64 kLargestPixelCount = qint64{512} * 1024 * 1024;

    // Reading

    /// Reads a picture: PNG, JPEG, GIF (its first frame), WebP, TIFF, HEIC, JPEG 2000 or SVG, told by the bytes
    /// and not by the name. It stands upright, whatever way it was stored. Shape:   with a box, the picture is scaled
    /// down to fit inside it, keeping its ratio; it is never scaled up, but
    ///          for SVG, which is drawn to fill the box, with at most 32 million pixels.
    /// Units:   the box is in pixels.
    /// Errors:  FileNoSuchFile and others of reading; FileReadTooLarge above kLargestPixelCount, and for a file above
    ///          256 MB; FileReadCorruptFile for what is no picture, is cut off or broken. Messages name the file.
    [[nodiscard]] static std::optional<NSImage> imageWithContentsOfFile(const QString &path, NSError *error,
                                                                        std::optional<QSize> fittingBox = std::nullopt);
    /// The same of bytes at hand; the name is for messages.
    [[nodiscard]] static std::optional<NSImage> imageWithData(const QByteArray &data, const QString &name,
                                                              NSError *error,
                                                              std::optional<QSize> fittingBox = std::nullopt);

    // What it is

    [[nodiscard]] bool isEmpty() const { return m_image == nullptr; }
    [[nodiscard]] QSize pixelSize() const;
    /// Pixels to a point.
    [[nodiscard]] double scale() const { return m_scale; }
    /// The size in points.
    [[nodiscard]] QSizeF size() const;
    /// True when a pixel may let something through.
    [[nodiscard]] bool hasAlpha() const;
    /// Requires: a pixel of the picture; (0, 0) is at the top left.
    [[nodiscard]] NSColor colorAt(int x, int y) const;
    /// The smallest box that holds every pixel which is not wholly transparent; empty when all are.
    [[nodiscard]] QRect opaqueBounds() const;
    /// The pixels, for painters and views; a null image for no picture.
    [[nodiscard]] QImage image() const;

    // Made from this one

    /// The same pixels at another number of them to a point.
    [[nodiscard]] NSImage imageWithScale(double scale) const;
    /// Scaled to that many pixels, by averaging areas when it shrinks; without antialias by taking single pixels. Sides
    /// below 1 count as 1.
    [[nodiscard]] NSImage imageScaledToPixelSize(QSize pixelSize, bool antialias = true) const;
    /// The part inside a box of pixels; what lies outside of the picture is left out.
    [[nodiscard]] NSImage imageCroppedToPixelRect(QRect rect) const;

    // Writing

    [[nodiscard]] QByteArray pngData() const;
    /// Quality: 0...100. What is transparent is laid over white.
    [[nodiscard]] QByteArray jpegData(int quality = 85) const;
    /// Write the file in one step, as quib::writeFileAtomically does.
    [[nodiscard]] bool writePNGToFile(const QString &path, NSError *error) const;
    [[nodiscard]] bool writeJPEGToFile(const QString &path, NSError *error, int quality = 85) const;

    /// The same pixels at the same scale.
    friend bool operator==(const NSImage &a, const NSImage &b);

private:
    std::shared_ptr<const QImage> m_image;
    double m_scale = 1;
};

namespace quib {

/// The size of a picture of a size when it must fit into a box: the ratio is kept, nothing grows, no side is below 1.
[[nodiscard]] QSize sizeFittingBox(QSize size, QSize box);

} // namespace quib
