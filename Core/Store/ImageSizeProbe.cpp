#include "ImageSizeProbe.h"

#include <QByteArrayView>
#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace quib {

namespace {

/// The most segments, boxes or directory entries looked at: real headers have dozens.
constexpr int kMaximumPieces = 4096;
/// Larger sides are not pictures but broken or hostile headers.
constexpr qint64 kMaximumSide = 1 << 24;

/// Bytes of an open file by offset; a piece beyond its end is empty.
class Source
{
public:
    explicit Source(QFile &file)
        : m_file(file)
        , m_size(file.size())
    {
    }
    [[nodiscard]] QByteArray at(qint64 offset, qint64 count)
    {
        if (offset < 0 || offset > m_size - count || !m_file.seek(offset)) {
            return {};
        }
        QByteArray bytes = m_file.read(count);
        return bytes.size() == count ? bytes : QByteArray();
    }
    [[nodiscard]] qint64 size() const { return m_size; }

private:
    QFile &m_file;
    qint64 m_size;
};

/// The number at an offset; 0 where the bytes end before.
template <typename T> T raw(const QByteArray &bytes, qsizetype offset)
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

} // namespace

std::optional<PixelSize> pixelSizeOfImageFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    Source source(file);
    const QByteArray head = source.at(0, std::min<qint64>(source.size(), 32));
    if (head.size() >= 24 && head.startsWith("\x89PNG\r\n\x1A\n")) {
        return checked(big<quint32>(head, 16), big<quint32>(head, 20));
    }
    if (head.size() >= 10 && (head.startsWith("GIF87a") || head.startsWith("GIF89a"))) {
        return checked(little<quint16>(head, 6), little<quint16>(head, 8));
    }
    if (head.startsWith("\xFF\xD8")) {
        return sizeOfJPEG(source);
    }
    if (head.startsWith(QByteArrayView("II*\0", 4)) || head.startsWith(QByteArrayView("MM\0*", 4))) {
        return sizeOfTIFF(source, head.at(0) == 'M');
    }
    if (head.size() >= 24 && head.startsWith("\xFF\x4F\xFF\x51")) { // a bare JPEG 2000 codestream
        const qint64 width = qint64{big<quint32>(head, 8)} - big<quint32>(head, 16);
        const qint64 height = qint64{big<quint32>(head, 12)} - big<quint32>(head, 20);
        return checked(width, height);
    }
    if (head.size() >= 12 && (head.sliced(4, 4) == "ftyp" || head.sliced(4, 4) == "jP  ")) {
        std::optional<PixelSize> found;
        int pieces = 0;
        findSizeInBoxes(source, 0, source.size(), 0, &pieces, &found);
        return found;
    }
    return std::nullopt;
}

} // namespace quib
