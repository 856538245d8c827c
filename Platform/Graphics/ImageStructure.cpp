#include "ImageDecoder_p.h"

#include <QtEndian>

#include <algorithm>

#include <zlib.h>

namespace quib {

namespace {

quint8 byteAt(QByteArrayView data, qsizetype offset)
{
    return static_cast<quint8>(data[offset]);
}

bool isLetter(char byte)
{
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

} // namespace

bool isWholeJPEG(QByteArrayView data)
{
    constexpr quint8 kMark = 0xFF;
    constexpr quint8 kStartOfScan = 0xDA;
    constexpr quint8 kEndOfImage = 0xD9;
    qsizetype offset = 2;
    bool isInScan = false;
    while (offset + 1 < data.size()) {
        const quint8 marker = byteAt(data, offset + 1);
        const bool isMarker = byteAt(data, offset) == kMark && marker != 0x00 && marker != kMark;
        if (!isMarker) {
            // Coded pixels, or filling bytes before a marker.
            ++offset;
        } else if (marker == kEndOfImage) {
            return isInScan;
        } else if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8)) {
            offset += 2; // markers without content, restarts within a scan among them
        } else {
            if (offset + 3 >= data.size()) {
                return false;
            }
            isInScan = isInScan || marker == kStartOfScan;
            offset += 2 + qMax(2, byteAt(data, offset + 2) << 8 | byteAt(data, offset + 3));
        }
    }
    return false;
}

bool isWholePNG(QByteArrayView data)
{
    constexpr qsizetype kSignature = 8;
    constexpr qsizetype kLength = 4;
    constexpr qsizetype kKind = 4;
    constexpr qsizetype kChecksum = 4;
    qsizetype offset = kSignature;
    while (data.size() - offset >= kLength + kKind + kChecksum) {
        const auto length = qFromBigEndian<quint32>(data.data() + offset);
        const qsizetype rest = data.size() - offset - kLength - kKind - kChecksum;
        if (length > static_cast<quint64>(rest)) {
            return false;
        }
        // The kind and the content.
        const QByteArrayView summed = data.sliced(offset + kLength, kKind + static_cast<qsizetype>(length));
        offset += kLength + summed.size() + kChecksum;
        const QByteArrayView kind = summed.first(kKind);
        if (!std::all_of(kind.begin(), kind.end(), isLetter)) {
            return false;
        }
        const bool isKnown = kind == "IHDR" || kind == "PLTE" || kind == "IDAT" || kind == "IEND";
        if (!isKnown) {
            // A capital says that the picture cannot do without the part; a known name in another case is damage. Other
            // parts may be damaged: the library leaves them out.
            constexpr char kSmall = 0x20;
            const bool isNeeded = (kind[0] & kSmall) == 0;
            const QByteArray capital = kind.toByteArray().toUpper();
            if (isNeeded || capital == "IHDR" || capital == "PLTE" || capital == "IDAT" || capital == "IEND") {
                return false;
            }
            continue;
        }
        const auto sum = crc32_z(0, reinterpret_cast<const Bytef *>(summed.data()), // NOLINT: bytes are bytes
                                 static_cast<z_size_t>(summed.size()));
        if (qFromBigEndian<quint32>(data.data() + offset - kChecksum) != sum) {
            return false;
        }
        if (kind == "IEND") {
            return true;
        }
    }
    return false;
}

bool isWholeGIF(QByteArrayView data)
{
    constexpr qsizetype kHeader = 13;
    constexpr quint8 kExtension = 0x21;
    constexpr quint8 kFrame = 0x2C;
    // The palette that the flags of the screen, or of a frame, announce.
    const auto paletteSize = [](quint8 flags) {
        return (flags & 0x80) != 0 ? qsizetype{3} << ((flags & 0x07) + 1) : 0;
    };
    if (data.size() < kHeader) {
        return false;
    }
    qsizetype offset = kHeader + paletteSize(byteAt(data, 10));
    // Blocks of at most 255 bytes, up to an empty one.
    const auto skipBlocks = [&data, &offset] {
        while (offset < data.size() && byteAt(data, offset) != 0) {
            offset += 1 + byteAt(data, offset);
        }
        ++offset;
        return offset <= data.size();
    };
    while (offset < data.size()) {
        const quint8 kind = byteAt(data, offset);
        if (kind == kExtension) {
            offset += 2;
            if (!skipBlocks()) {
                return false;
            }
        } else if (kind == kFrame && offset + 10 < data.size()) {
            offset += 10 + paletteSize(byteAt(data, offset + 9)) + 1; // and the size of the codes
            return skipBlocks();
        } else {
            return false;
        }
    }
    return false;
}

} // namespace quib
