#pragma once

#include <Foundation/NSError.h>

#include <QByteArray>
#include <QByteArrayView>
#include <QImage>
#include <QSize>
#include <QString>

#include <optional>

namespace quib {

/// A picture that is to be decoded.
struct ImageSource
{
    QByteArray data;
    /// For messages.
    QString name;
    /// The pixels that it must fit into.
    std::optional<QSize> box;
};

/// Decodes a picture of any form: upright, in sRGB, fitting the box. A null image when it fails.
[[nodiscard]] QImage decodeImage(const ImageSource &source, NSError *error);

// ImageDecoder+HEIC.cpp, ImageDecoder+JPEG2000.cpp, ImageDecoder+SVG.cpp: decode a form that the bytes were recognised
// as. Size limits are checked; the box may be used to decode less, but the result need not fit it yet.

[[nodiscard]] QImage decodeHEIC(const ImageSource &source, NSError *error);
[[nodiscard]] QImage decodeJPEG2000(const ImageSource &source, NSError *error);
[[nodiscard]] QImage decodeSVG(const ImageSource &source, NSError *error);
/// True when the first element is that of an SVG picture.
[[nodiscard]] bool isSVG(const QByteArray &data);

// ImageStructure.cpp: whether the bytes reach the end that the form itself marks. The decoders would fill up what is
// missing and say nothing.

[[nodiscard]] bool isWholeJPEG(QByteArrayView data);
/// Whether every part up to the end is there, and those that the picture needs are as they were written. The library
/// would print a line of its own for each fault.
[[nodiscard]] bool isWholePNG(QByteArrayView data);
/// Whether the first frame is there.
[[nodiscard]] bool isWholeGIF(QByteArrayView data);

/// Fill an out error and give a null image.
[[nodiscard]] QImage brokenImage(const ImageSource &source, QStringView reason, NSError *error);
[[nodiscard]] QImage tooLargeImage(const ImageSource &source, qint64 width, qint64 height, NSError *error);

/// Whether a size is above what is decoded.
[[nodiscard]] bool isTooLarge(qint64 width, qint64 height);

} // namespace quib
