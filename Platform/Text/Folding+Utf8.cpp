#include "Folding.h"

#include "AsciiRuns.h"

namespace quib {

namespace {

constexpr char16_t kReplacement = 0xFFFD;

/// The bytes that the text takes, exactly.
[[nodiscard]] qsizetype utf8Size(const char16_t *units, qsizetype count)
{
    qsizetype size = count;
    qsizetype surrogates = 0;
    for (qsizetype i = 0; i < count; ++i) {
        size += (units[i] >= 0x80 ? 1 : 0) + (units[i] >= 0x800 ? 1 : 0);
        surrogates += (units[i] & 0xF800) == 0xD800 ? 1 : 0;
    }
    for (qsizetype i = 0; surrogates > 1 && i + 1 < count; ++i) {
        if (QChar::isHighSurrogate(units[i]) && QChar::isLowSurrogate(units[i + 1])) {
            size -= 2;
            ++i;
        }
    }
    return size;
}

[[nodiscard]] bool isContinuation(unsigned char byte)
{
    return (byte & 0xC0) == 0x80;
}

/// One sequence of more than one byte at the start of [bytes, limit): its length, or 0 where the bytes are none.
[[nodiscard]] qsizetype decodeSequence(const unsigned char *bytes, const unsigned char *limit, char32_t *codePoint)
{
    const unsigned char lead = *bytes;
    const qsizetype length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || limit - bytes < length) {
        return 0;
    }
    char32_t value = lead & (0x7FU >> length);
    for (qsizetype i = 1; i < length; ++i) {
        if (!isContinuation(bytes[i])) {
            return 0;
        }
        value = (value << 6) | (bytes[i] & 0x3FU);
    }
    const char32_t smallest = length == 4 ? 0x10000 : length == 3 ? 0x800 : 0x80;
    if (value < smallest || value > 0x10FFFF) {
        return 0;
    }
    *codePoint = value;
    return length;
}

/// Decodes into [out, end), room for as many units as there are bytes, or, where lenient is false, for as many as
/// well-formed bytes need. Gives the number of units, or -1 at the first bad byte where lenient is false.
template <bool Lenient>
[[nodiscard]] qsizetype decode(const char *bytes, qsizetype size, char16_t *out, const char16_t *end)
{
    const char16_t *const start = out;
    const auto *at = reinterpret_cast<const unsigned char *>(bytes);
    const unsigned char *const limit = at + size;
    while (at < limit) {
        const unsigned char lead = *at;
        if (lead < ascii::kLimit) {
            const qsizetype plain = ascii::copyToRoom(reinterpret_cast<const char *>(at), limit - at, out, end - out);
            at += plain;
            out += plain;
            continue;
        }
        // OPTIMIZATION: the lengths of most scripts stand here, whole words of them without a call.
        if (lead >= 0xC2 && lead < 0xE0 && limit - at >= 2 && isContinuation(at[1])) {
            *out++ = static_cast<char16_t>((lead & 0x1F) << 6 | (at[1] & 0x3F));
            at += 2;
            continue;
        }
        if ((lead & 0xF0) == 0xE0 && limit - at >= 3 && isContinuation(at[1]) && isContinuation(at[2])) {
            const int value = (lead & 0x0F) << 12 | (at[1] & 0x3F) << 6 | (at[2] & 0x3F);
            if (value >= 0x800) {
                *out++ = static_cast<char16_t>(value);
                at += 3;
                continue;
            }
        }
        char32_t codePoint = kReplacement;
        const qsizetype length = decodeSequence(at, limit, &codePoint);
        if (!Lenient && length == 0) {
            return -1;
        }
        if (codePoint >= 0x10000) {
            *out++ = QChar::highSurrogate(codePoint);
            *out++ = QChar::lowSurrogate(codePoint);
        } else {
            *out++ = static_cast<char16_t>(codePoint);
        }
        at += length == 0 ? 1 : length;
    }
    return out - start;
}

} // namespace

QByteArray toUtf8Lossless(QStringView text)
{
    const char16_t *units = text.utf16();
    const qsizetype count = text.size();
    QByteArray out(count, Qt::Uninitialized);
    qsizetype position = ascii::copyToBytes<false>(units, count, out.data());
    if (position == count) {
        return out;
    }
    out.resize(position + utf8Size(units + position, count - position));
    char *to = out.data() + position;
    while (position < count) {
        const qsizetype plain = ascii::copyToBytes<false>(units + position, count - position, to);
        position += plain;
        to += plain;
        while (position < count && units[position] >= ascii::kLimit) {
            const char16_t unit = units[position++];
            if (unit < 0x800) {
                *to++ = static_cast<char>(0xC0 | (unit >> 6));
            } else if (QChar::isHighSurrogate(unit) && position < count && QChar::isLowSurrogate(units[position])) {
                const char32_t codePoint = QChar::surrogateToUcs4(unit, units[position++]);
                *to++ = static_cast<char>(0xF0 | (codePoint >> 18));
                *to++ = static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F));
                *to++ = static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
                *to++ = static_cast<char>(0x80 | (codePoint & 0x3F));
                continue;
            } else {
                *to++ = static_cast<char>(0xE0 | (unit >> 12));
                *to++ = static_cast<char>(0x80 | ((unit >> 6) & 0x3F));
            }
            *to++ = static_cast<char>(0x80 | (unit & 0x3F));
        }
    }
    return out;
}

QString fromUtf8Lossless(const char *bytes, qsizetype size)
{
    constexpr qsizetype kShort = 1024;
    if (size > 0 && size <= kShort) {
        // OPTIMIZATION: titles and the like are decoded beside, and then allocated once in their own size.
        char16_t units[kShort];
        qsizetype written = decode<false>(bytes, size, units, units + kShort);
        if (written < 0) {
            written = decode<true>(bytes, size, units, units + kShort);
        }
        return QString(reinterpret_cast<const QChar *>(units), written);
    }
    QString out(size, Qt::Uninitialized);
    const qsizetype plain = ascii::copyToUnits(bytes, size, reinterpret_cast<char16_t *>(out.data()));
    if (plain == size) {
        return out;
    }
    qsizetype units = plain;
    for (qsizetype i = plain; i < size; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        units += (isContinuation(byte) ? 0 : 1) + (byte >= 0xF0 ? 1 : 0);
    }
    out.resize(units);
    out.squeeze();
    auto *to = reinterpret_cast<char16_t *>(out.data());
    qsizetype written = decode<false>(bytes + plain, size - plain, to + plain, to + out.size());
    if (written < 0) {
        out.resize(size);
        to = reinterpret_cast<char16_t *>(out.data());
        written = decode<true>(bytes + plain, size - plain, to + plain, to + out.size());
    }
    out.truncate(plain + written);
    return out;
}

} // namespace quib
