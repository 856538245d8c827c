#pragma once

#include "ImageSizeProbe.h"

#include <QByteArray>
#include <QIODevice>
#include <QtEndian>

#include <cstring>
#include <optional>

namespace quib {

/// The most segments, boxes or directory entries looked at: real headers have dozens.
inline constexpr int kMaximumPieces = 4096;
/// Larger sides are not pictures but broken or hostile headers.
inline constexpr qint64 kMaximumSide = 1 << 24;

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
template <typename T> [[nodiscard]] Q_NEVER_INLINE T raw(const QByteArray &bytes, qsizetype offset)
{
    T value = 0;
    if (offset >= 0 && offset + qsizetype{sizeof(T)} <= bytes.size()) {
        std::memcpy(&value, bytes.constData() + offset, sizeof(T));
    }
    return value;
}

template <typename T> [[nodiscard]] T big(const QByteArray &bytes, qsizetype offset)
{
    return qFromBigEndian(raw<T>(bytes, offset));
}

template <typename T> [[nodiscard]] T little(const QByteArray &bytes, qsizetype offset)
{
    return qFromLittleEndian(raw<T>(bytes, offset));
}

[[nodiscard]] inline std::optional<PixelSize> checked(qint64 width, qint64 height)
{
    if (width <= 0 || height <= 0 || width > kMaximumSide || height > kMaximumSide) {
        return std::nullopt;
    }
    return PixelSize{width, height};
}

/// One box of a file that is made of boxes: where its content lies.
struct Box
{
    QByteArray type;
    qint64 body = 0;
    qint64 limit = 0;
};

/// The box at an offset, moved behind it; nothing at the limit, for a box that is broken, and once too many were read.
[[nodiscard]] std::optional<Box> takeBox(Source &source, qint64 *offset, qint64 limit, int *pieces);

/// ImageSizeProbe+HEIC.cpp: the size of the picture that the file is there for, cut and turned as its properties say.
[[nodiscard]] std::optional<PixelSize> sizeOfHEIC(Source &source);

} // namespace quib
