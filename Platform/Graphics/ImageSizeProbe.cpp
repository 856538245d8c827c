#include "ImageSizeProbe.h"

#include <QByteArray>
#include <QFile>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace quib {

namespace {

/// The most segments, boxes or directory entries looked at: real headers have dozens.
constexpr int kMaximumPieces = 4096;
/// Larger sides are not pictures but broken or hostile headers.
constexpr qint64 kMaximumSide = 1 << 24;

/// Bytes of an open device by offset; a piece beyond its end is empty.
class Source
{
public:
    explicit Source(QIODevice &device)
        : m_device(device)
        , m_size(device.size())
    {
    }
    [[nodiscard]] QByteArray at(qint64 offset, qint64 count)
    {
        if (offset < 0 || offset > m_size - count || !m_device.seek(offset)) {
            return {};
        }
        QByteArray bytes = m_device.read(count);
        return bytes.size() == count ? bytes : QByteArray();
    }
    [[nodiscard]] qint64 size() const { return m_size; }

private:
    QIODevice &m_device;
    qint64 m_size;
};

/// The number at an offset; 0 where the bytes end before.
// Never inline: where bytes may be empty GCC 12 would warn of a read that the check below keeps from happening.
template <typename T> Q_NEVER_INLINE T raw(const QByteArray &bytes, qsizetype offset)
{
    T value = 0;
    if (offset >= 0 && offset + qsizetype{sizeof(T)} <= bytes.size()) {
        std::memcpy(&value, bytes.constData() + offset, sizeof(T));
    }
    return value;
}

template <typename T> T big(const QByteArray &bytes, qsizetype offset)
{
    return qFromBigEndian(raw<T>(bytes, offset));
}

template <typename T> T little(const QByteArray &bytes, qsizetype offset)
{
    return qFromLittleEndian(raw<T>(bytes, offset));
}

std::optional<PixelSize> checked(qint64 width, qint64 height)
{
    if (width <= 0 || height <= 0 || width > kMaximumSide || height > kMaximumSide) {
        return std::nullopt;
    }
    return PixelSize{width, height};
}

std::optional<PixelSize> sizeOfJPEG(Source &source)
{
    qint64 offset = 2;
    for (int piece = 0; piece < kMaximumPieces; ++piece) {
        const QByteArray head = source.at(offset, 2);
        if (head.isEmpty() || static_cast<quint8>(head.at(0)) != 0xFF) {
            return std::nullopt;
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
        const QByteArray frame = source.at(offset + 2, 7);
        if (frame.isEmpty() || marker == 0xD9 || marker == 0xDA) {
            return std::nullopt;
        }
        // Start of frame, of any coding, but not the tables whose markers lie among them.
        if (marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC) {
            return checked(big<quint16>(frame, 5), big<quint16>(frame, 3));
        }
        offset += 2 + std::max<qint64>(big<quint16>(frame, 0), 2);
    }
    return std::nullopt;
}

std::optional<PixelSize> sizeOfTIFF(Source &source, bool isBig)
{
    const auto number16 = [isBig](const QByteArray &bytes, qsizetype offset) {
        return isBig ? big<quint16>(bytes, offset) : little<quint16>(bytes, offset);
    };
    const auto number32 = [isBig](const QByteArray &bytes, qsizetype offset) {
        return isBig ? big<quint32>(bytes, offset) : little<quint32>(bytes, offset);
    };
    const QByteArray head = source.at(4, 4);
    if (head.isEmpty()) {
        return std::nullopt;
    }
    const qint64 directory = number32(head, 0);
    const QByteArray count = source.at(directory, 2);
    if (count.isEmpty()) {
        return std::nullopt;
    }
    qint64 width = 0;
    qint64 height = 0;
    const int entries = std::min<int>(number16(count, 0), kMaximumPieces);
    for (int i = 0; i < entries; ++i) {
        const QByteArray entry = source.at(directory + 2 + qint64{12} * i, 12);
        if (entry.isEmpty()) {
            break;
        }
        constexpr quint16 kWidthTag = 256;
        constexpr quint16 kHeightTag = 257;
        constexpr quint16 kShort = 3;
        const quint16 tag = number16(entry, 0);
        const qint64 value = number16(entry, 2) == kShort ? number16(entry, 8) : number32(entry, 8);
        if (tag == kWidthTag) {
            width = value;
        } else if (tag == kHeightTag) {
            height = value;
        }
    }
    return checked(width, height);
}

/// Walks the boxes of [start, limit) and goes into the containers that lead to a size. The largest "ispe" is the
/// picture's: tiles and thumbnails have theirs too.
void findSizeInBoxes(Source &source, qint64 start, qint64 limit, int depth, int *pieces,
                     std::optional<PixelSize> *found)
{
    constexpr int kMaximumDepth = 8;
    qint64 offset = start;
    while (offset <= limit - 8 && depth < kMaximumDepth && (*pieces)++ < kMaximumPieces) {
        const QByteArray head = source.at(offset, 8);
        if (head.isEmpty()) {
            return;
        }
        qint64 length = big<quint32>(head, 0);
        qint64 headLength = 8;
        if (length == 1) {
            const QByteArray wide = source.at(offset + 8, 8);
            const quint64 value = wide.isEmpty() ? 0 : big<quint64>(wide, 0);
            length = value > static_cast<quint64>(limit) ? 0 : static_cast<qint64>(value);
            headLength = 16;
        } else if (length == 0) {
            length = limit - offset; // up to the end
        }
        if (length < headLength || length > limit - offset) {
            return;
        }
        const QByteArray type = head.sliced(4, 4);
        const qint64 body = offset + headLength;
        if (type == "meta") {
            findSizeInBoxes(source, body + 4, offset + length, depth + 1, pieces, found);
        } else if (type == "iprp" || type == "ipco" || type == "jp2h") {
            findSizeInBoxes(source, body, offset + length, depth + 1, pieces, found);
        } else if (type == "ispe" || type == "ihdr") {
            const bool isJPEG2000 = type == "ihdr"; // height comes first there, without a version in front
            const QByteArray sides = source.at(isJPEG2000 ? body : body + 4, 8);
            if (!sides.isEmpty()) {
                const qint64 first = big<quint32>(sides, 0);
                const qint64 second = big<quint32>(sides, 4);
                const auto size = isJPEG2000 ? checked(second, first) : checked(first, second);
                if (size && (!*found || size->width * size->height > (*found)->width * (*found)->height)) {
                    *found = size;
                }
            }
        }
        offset += length;
    }
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

std::optional<PixelSize> sizeInBoxes(Source &source)
{
    std::optional<PixelSize> found;
    int pieces = 0;
    findSizeInBoxes(source, 0, source.size(), 0, &pieces, &found);
    return found;
}

constexpr QByteArrayView kJPEG2000Stream("\xFF\x4F\xFF\x51");

std::optional<PixelSize> sizeOfJPEG2000(Source &source)
{
    const QByteArray head = source.at(0, 24);
    if (!head.startsWith(kJPEG2000Stream)) {
        return sizeInBoxes(source);
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
    if (bytes.startsWith(QByteArrayView("II*\0", 4)) || bytes.startsWith(QByteArrayView("MM\0*", 4))) {
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
        return sizeOfTIFF(source, head.at(0) == 'M');
    case ImageFormat::WebP:
        return sizeOfWebP(source);
    case ImageFormat::HEIC:
        return sizeInBoxes(source);
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
