#include "ImageSizeProbe.h"

#include "ImageSizeProbe_p.h"

#include <QFile>

#include <algorithm>
#include <limits>
#include <utility>

namespace quib {

namespace {

/// An orientation as EXIF data and TIFF tell it: the upper four swap width and height.
bool isTurned(quint64 orientation)
{
    return orientation >= 5 && orientation <= 8;
}

std::optional<PixelSize> turned(std::optional<PixelSize> size, bool isTurned)
{
    return size && isTurned ? std::optional(PixelSize{size->height, size->width}) : size;
}

/// What a TIFF, or the one in EXIF data, begins with.
struct TIFFHead
{
    bool isBigEndian = false;
    bool hasWideOffsets = false;

    template <typename T> [[nodiscard]] T number(const QByteArray &bytes, qsizetype offset) const
    {
        return isBigEndian ? big<T>(bytes, offset) : little<T>(bytes, offset);
    }
    /// An offset into the file; one that no file reaches is beyond every end.
    [[nodiscard]] qint64 place(const QByteArray &bytes, qsizetype offset) const
    {
        constexpr quint64 kMost = std::numeric_limits<qint64>::max() / 2;
        const quint64 value = hasWideOffsets ? number<quint64>(bytes, offset) : number<quint32>(bytes, offset);
        return static_cast<qint64>(std::min(value, kMost));
    }
};

constexpr quint16 kOrientationTag = 274;
constexpr quint16 kShort = 3;

/// The orientation in the EXIF data of a segment, as the reader takes it: one short, 1 to 8, the first in any
/// directory.
quint64 orientationOfEXIF(const QByteArray &segment)
{
    constexpr QByteArrayView kMagic("Exif\0\0", 6);
    if (!segment.startsWith(kMagic)) {
        return 0;
    }
    const QByteArray data = segment.sliced(kMagic.size());
    const bool isBigEndian = data.startsWith("MM");
    const TIFFHead head{.isBigEndian = isBigEndian};
    if (!(isBigEndian || data.startsWith("II")) || head.number<quint16>(data, 2) != 42) {
        return 0;
    }
    constexpr qint64 kEntrySize = 12;
    qint64 read = 8;
    // Directories lie one behind the other, so that they make no circle.
    for (qint64 directory = head.place(data, 4); directory >= read && directory <= data.size() - 2;) {
        const qint64 end = directory + 2 + kEntrySize * head.number<quint16>(data, directory);
        for (qint64 entry = directory + 2; entry < end && entry <= data.size() - kEntrySize; entry += kEntrySize) {
            if (head.number<quint16>(data, entry) == kOrientationTag) {
                const bool isOneShort =
                    head.number<quint16>(data, entry + 2) == kShort && head.number<quint32>(data, entry + 4) == 1;
                return isOneShort ? head.number<quint16>(data, entry + 8) : 0;
            }
        }
        read = end + 4;
        directory = read <= data.size() ? head.place(data, end) : 0;
    }
    return 0;
}

std::optional<PixelSize> sizeOfJPEG(Source &source)
{
    std::optional<PixelSize> size;
    bool hasEXIF = false;
    quint64 orientation = 0;
    qint64 offset = 2;
    for (int piece = 0; piece < kMaximumPieces; ++piece) {
        const QByteArray head = source.at(offset, 4);
        if (head.isEmpty() || static_cast<quint8>(head.at(0)) != 0xFF) {
            break;
        }
        const auto marker = static_cast<quint8>(head.at(1));
        if (marker == 0xFF) { // a filling byte
            offset += 1;
            continue;
        }
        if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7)) { // no content
            offset += 2;
            continue;
        }
        if (marker == 0xD9 || marker == 0xDA) {
            break;
        }
        const qint64 length = std::max<qint64>(big<quint16>(head, 2), 2);
        // Start of frame, of any coding, but not the tables whose markers lie among them.
        if (marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC && !size) {
            const QByteArray frame = source.at(offset + 4, 5);
            size = checked(big<quint16>(frame, 3), big<quint16>(frame, 1));
            if (!size) {
                break;
            }
        }
        constexpr quint8 kEXIFMarker = 0xE1;
        if (marker == kEXIFMarker && !hasEXIF) {
            hasEXIF = true;
            orientation = orientationOfEXIF(source.at(offset + 4, length - 2));
        }
        offset += 2 + length;
    }
    return turned(size, isTurned(orientation));
}

std::optional<PixelSize> sizeOfTIFF(Source &source, TIFFHead head)
{
    const int offsetSize = head.hasWideOffsets ? 8 : 4;
    const int countSize = head.hasWideOffsets ? 8 : 2;
    const QByteArray start = source.at(offsetSize, offsetSize);
    const qint64 directory = start.isEmpty() ? 0 : head.place(start, 0);
    const QByteArray count = source.at(directory, countSize);
    if (start.isEmpty() || count.isEmpty()) {
        return std::nullopt;
    }
    const qint64 entries =
        std::min<qint64>(head.hasWideOffsets ? head.place(count, 0) : head.number<quint16>(count, 0), kMaximumPieces);
    const qint64 entrySize = 4 + 2 * offsetSize;
    qint64 width = 0;
    qint64 height = 0;
    qint64 orientation = 0;
    for (qint64 i = 0; i < entries; ++i) {
        const QByteArray entry = source.at(directory + countSize + entrySize * i, entrySize);
        if (entry.isEmpty()) {
            return std::nullopt;
        }
        constexpr quint16 kWidthTag = 256;
        constexpr quint16 kHeightTag = 257;
        constexpr quint16 kWide = 16;
        const quint16 tag = head.number<quint16>(entry, 0);
        const quint16 type = head.number<quint16>(entry, 2);
        const int place = 4 + offsetSize;
        const qint64 value = type == kShort  ? head.number<quint16>(entry, place)
                             : type == kWide ? head.place(entry, place)
                                             : head.number<quint32>(entry, place);
        // The first of a tag counts.
        if (tag == kWidthTag && width == 0) {
            width = value;
        } else if (tag == kHeightTag && height == 0) {
            height = value;
        } else if (tag == kOrientationTag && orientation == 0) {
            orientation = value;
        }
    }
    return turned(checked(width, height), isTurned(static_cast<quint64>(orientation)));
}

/// The size in the header box of a JPEG 2000 file.
std::optional<PixelSize> sizeInJPEG2000Boxes(Source &source)
{
    int pieces = 0;
    qint64 offset = 0;
    while (const auto box = takeBox(source, &offset, source.size(), &pieces)) {
        qint64 inside = box->body;
        while (box->type == "jp2h") {
            const auto header = takeBox(source, &inside, box->limit, &pieces);
            if (!header) {
                break;
            }
            if (header->type == "ihdr") {
                const QByteArray sides = source.at(header->body, 8); // the height comes first
                return checked(big<quint32>(sides, 4), big<quint32>(sides, 0));
            }
        }
    }
    return std::nullopt;
}

/// A still picture of either coding, or the canvas of an extended file.
std::optional<PixelSize> sizeOfWebP(Source &source)
{
    // The first chunk's four letters, its length, and then its content.
    const QByteArray head = source.at(0, 30);
    const QByteArrayView kind = QByteArrayView(head).sliced(std::min<qsizetype>(12, head.size()));
    if (kind.startsWith("VP8X")) {
        // 24 bits each, less one.
        const quint32 width = little<quint16>(head, 24) | static_cast<quint32>(little<quint8>(head, 26)) << 16;
        const quint32 height = little<quint16>(head, 27) | static_cast<quint32>(little<quint8>(head, 29)) << 16;
        return checked(qint64{width} + 1, qint64{height} + 1);
    }
    if (kind.startsWith("VP8L")) {
        const quint32 bits = little<quint32>(head, 21); // 14 bits each, less one, behind a byte of signature
        return checked(qint64{bits & 0x3FFF} + 1, qint64{(bits >> 14) & 0x3FFF} + 1);
    }
    if (kind.startsWith("VP8 ")) {
        return checked(little<quint16>(head, 26) & 0x3FFF, little<quint16>(head, 28) & 0x3FFF);
    }
    return std::nullopt;
}

/// How a TIFF begins; the later two, for files above 4 GB, have wide offsets.
bool isTIFF(QByteArrayView bytes)
{
    constexpr QByteArrayView kHeads[] = {{"II*\0", 4}, {"MM\0*", 4}, {"II+\0", 4}, {"MM\0+", 4}};
    return std::any_of(std::begin(kHeads), std::end(kHeads),
                       [bytes](QByteArrayView head) { return bytes.startsWith(head); });
}

constexpr QByteArrayView kJPEG2000Stream("\xFF\x4F\xFF\x51");

std::optional<PixelSize> sizeOfJPEG2000(Source &source)
{
    const QByteArray head = source.at(0, 24);
    if (!head.startsWith(kJPEG2000Stream)) {
        return sizeInJPEG2000Boxes(source);
    }
    const qint64 width = qint64{big<quint32>(head, 8)} - big<quint32>(head, 16);
    const qint64 height = qint64{big<quint32>(head, 12)} - big<quint32>(head, 20);
    return checked(width, height);
}

/// The brands of files that hold HEVC stills.
bool isPictureBrand(QByteArrayView brand)
{
    constexpr QByteArrayView kBrands[] = {"heic", "heix", "heim", "heis", "mif1", "msf1", "hevc", "hevx"};
    return std::find(std::begin(kBrands), std::end(kBrands), brand) != std::end(kBrands);
}

} // namespace

std::optional<Box> takeBox(Source &source, qint64 *offset, qint64 limit, int *pieces)
{
    const QByteArray head = *offset <= limit - 8 && (*pieces)++ < kMaximumPieces ? source.at(*offset, 8) : QByteArray();
    if (head.isEmpty()) {
        return std::nullopt;
    }
    qint64 length = big<quint32>(head, 0);
    qint64 headLength = 8;
    if (length == 1) {
        const auto wide = big<quint64>(source.at(*offset + 8, 8), 0);
        length = wide > static_cast<quint64>(limit) ? 0 : static_cast<qint64>(wide);
        headLength = 16;
    } else if (length == 0) {
        length = limit - *offset; // up to the end
    }
    if (length < headLength || length > limit - *offset) {
        return std::nullopt;
    }
    const qint64 start = std::exchange(*offset, *offset + length);
    return Box{head.sliced(4, 4), start + headLength, start + length};
}

std::optional<ImageFormat> imageFormatOfBytes(QByteArrayView bytes)
{
    if (bytes.startsWith("\x89PNG\r\n\x1A\n")) {
        return ImageFormat::PNG;
    }
    if (bytes.startsWith("GIF87a") || bytes.startsWith("GIF89a")) {
        return ImageFormat::GIF;
    }
    if (bytes.startsWith("\xFF\xD8")) {
        return ImageFormat::JPEG;
    }
    if (isTIFF(bytes)) {
        return ImageFormat::TIFF;
    }
    if (bytes.startsWith(kJPEG2000Stream)) {
        return ImageFormat::JPEG2000;
    }
    if (bytes.size() < 12) {
        return std::nullopt;
    }
    const QByteArrayView second = bytes.sliced(4, 4);
    const QByteArrayView third = bytes.sliced(8, 4);
    if (bytes.startsWith("RIFF") && third == QByteArrayView("WEBP")) {
        return ImageFormat::WebP;
    }
    if (second == QByteArrayView("jP  ")) {
        return ImageFormat::JPEG2000;
    }
    if (second == QByteArrayView("ftyp") && isPictureBrand(third)) {
        return ImageFormat::HEIC;
    }
    return std::nullopt;
}

std::optional<PixelSize> pixelSizeOfImage(QIODevice &device)
{
    Source source(device);
    const QByteArray head = source.at(0, std::min<qint64>(source.size(), 32));
    const std::optional<ImageFormat> format = imageFormatOfBytes(head);
    if (!format) {
        return std::nullopt;
    }
    switch (*format) {
    case ImageFormat::PNG:
        return checked(big<quint32>(head, 16), big<quint32>(head, 20));
    case ImageFormat::GIF:
        return checked(little<quint16>(head, 6), little<quint16>(head, 8));
    case ImageFormat::JPEG:
        return sizeOfJPEG(source);
    case ImageFormat::TIFF:
        return sizeOfTIFF(source, {.isBigEndian = head.at(0) == 'M', .hasWideOffsets = head.contains('+')});
    case ImageFormat::WebP:
        return sizeOfWebP(source);
    case ImageFormat::HEIC:
        return sizeOfHEIC(source);
    case ImageFormat::JPEG2000:
        return sizeOfJPEG2000(source);
    }
    return std::nullopt;
}

std::optional<PixelSize> pixelSizeOfImageFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? pixelSizeOfImage(file) : std::nullopt;
}

} // namespace quib
