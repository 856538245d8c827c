#include "Folding.h"

#include "AsciiRuns.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>

namespace quib {

namespace {

#include "FoldingTable.inc"

constexpr char32_t kFirstHangul = 0xAC00;
constexpr char32_t kLastHangul = 0xD7A3;
/// Room that one code point may take, in bytes or units, with much to spare.
constexpr qsizetype kRoomForACodePoint = 64;
constexpr qsizetype kBufferSize = 4096;
/// ICU counts in 32 bits, and a fold may triple a text.
constexpr qsizetype kPieceForIcu = qsizetype{1} << 24;

/// The code point at a position, or the lone surrogate there; moves the position behind it.
[[nodiscard]] char32_t takeCodePoint(const char16_t *units, qsizetype size, qsizetype *position)
{
    const char16_t unit = units[(*position)++];
    if (QChar::isHighSurrogate(unit) && *position < size && QChar::isLowSurrogate(units[*position])) {
        return QChar::surrogateToUcs4(unit, units[(*position)++]);
    }
    return unit;
}

[[nodiscard]] std::uint32_t foldedEntry(char32_t codePoint)
{
    const std::uint32_t block = kFoldedIndex[codePoint >> kFoldedBlockBits];
    return kFoldedEntries[(block << kFoldedBlockBits) | (codePoint & ((1U << kFoldedBlockBits) - 1))];
}

/// Takes folded code points and gathers them as UTF-8, a lone surrogate as three bytes.
class Utf8Sink
{
public:
    explicit Utf8Sink(QByteArray &out)
        : m_out(out)
    {
    }
    void makeRoom()
    {
        if (m_used + kRoomForACodePoint > kBufferSize) {
            flush();
        }
    }
    void flush()
    {
        m_out.append(m_buffer.data(), m_used);
        m_used = 0;
    }
    [[nodiscard]] qsizetype putAsciiRun(const char16_t *from, qsizetype count)
    {
        const qsizetype done =
            ascii::copyToBytes<true>(from, std::min(count, kBufferSize - m_used), m_buffer.data() + m_used);
        m_used += done;
        return done;
    }
    void put(char32_t codePoint)
    {
        if (codePoint < 0x80) {
            putByte(codePoint);
        } else if (codePoint < 0x800) {
            putByte(0xC0 | (codePoint >> 6));
            putByte(0x80 | (codePoint & 0x3F));
        } else if (codePoint < 0x10000) {
            putByte(0xE0 | (codePoint >> 12));
            putByte(0x80 | ((codePoint >> 6) & 0x3F));
            putByte(0x80 | (codePoint & 0x3F));
        } else {
            putByte(0xF0 | (codePoint >> 18));
            putByte(0x80 | ((codePoint >> 12) & 0x3F));
            putByte(0x80 | ((codePoint >> 6) & 0x3F));
            putByte(0x80 | (codePoint & 0x3F));
        }
    }

private:
    void putByte(char32_t byte) { m_buffer[static_cast<size_t>(m_used++)] = static_cast<char>(byte); }

    QByteArray &m_out;
    qsizetype m_used = 0;
    std::array<char, kBufferSize> m_buffer;
};

/// The same for UTF-16.
class Utf16Sink
{
public:
    explicit Utf16Sink(QString &out)
        : m_out(out)
    {
    }
    void makeRoom()
    {
        if (m_used + kRoomForACodePoint > kBufferSize) {
            flush();
        }
    }
    void flush()
    {
        m_out.append(QStringView(m_buffer.data(), m_used));
        m_used = 0;
    }
    [[nodiscard]] qsizetype putAsciiRun(const char16_t *from, qsizetype count)
    {
        const qsizetype done =
            ascii::copyLowered(from, std::min(count, kBufferSize - m_used), m_buffer.data() + m_used);
        m_used += done;
        return done;
    }
    void put(char32_t codePoint)
    {
        if (codePoint >= 0x10000) {
            putUnit(QChar::highSurrogate(codePoint));
            putUnit(QChar::lowSurrogate(codePoint));
        } else {
            putUnit(static_cast<char16_t>(codePoint));
        }
    }

private:
    void putUnit(char16_t unit) { m_buffer[static_cast<size_t>(m_used++)] = unit; }

    QString &m_out;
    qsizetype m_used = 0;
    std::array<char16_t, kBufferSize> m_buffer;
};

template <typename Sink> void fold(QStringView text, Sink &sink)
{
    const char16_t *units = text.utf16();
    const qsizetype size = text.size();
    qsizetype position = 0;
    // Whether a mark that comes next has a base that gives it up. A mark with no base at all is kept.
    bool dropsMarks = false;
    while (position < size) {
        sink.makeRoom();
        if (units[position] < ascii::kLimit) {
            position += sink.putAsciiRun(units + position, size - position);
            dropsMarks = true;
            continue;
        }
        const char32_t codePoint = takeCodePoint(units, size, &position);
        if (codePoint >= kFirstHangul && codePoint <= kLastHangul) {
            const char32_t syllable = codePoint - kFirstHangul;
            sink.put(0x1100 + syllable / 588);
            sink.put(0x1161 + syllable % 588 / 28);
            if (syllable % 28 != 0) {
                sink.put(0x11A7 + syllable % 28);
            }
            dropsMarks = false;
            continue;
        }
        const std::uint32_t entry = foldedEntry(codePoint);
        if ((entry & kFoldedMark) != 0 && dropsMarks) {
            continue;
        }
        const std::uint32_t value = entry & ~kFoldedMark;
        const bool isSequence = (value & kFoldedSequence) != 0;
        const char32_t single = value == 0 ? codePoint : value;
        const char32_t *first = isSequence ? &kFoldedSequences[(value & ~kFoldedSequence) + 1] : &single;
        const char32_t *limit = first + (isSequence ? first[-1] : 1);
        for (const char32_t *part = first; part != limit; ++part) {
            sink.put(*part);
        }
        if ((entry & kFoldedMark) == 0) {
            // Marks inside of a sequence stand behind its base; they are kept only where the base keeps them.
            dropsMarks = limit[-1] < kFirstBaseThatKeepsItsMarks;
        }
    }
    sink.flush();
}

[[nodiscard]] QString caseFolded(QStringView text)
{
    QString out(text.size(), Qt::Uninitialized);
    auto *outUnits = reinterpret_cast<char16_t *>(out.data());
    const qsizetype plain = ascii::copyLowered(text.utf16(), text.size(), outUnits);
    if (plain == text.size()) {
        return out;
    }
    out.truncate(plain);
    for (qsizetype start = plain; start < text.size();) {
        qsizetype limit = std::min(text.size(), start + kPieceForIcu);
        if (limit < text.size() && text[limit - 1].isHighSurrogate()) {
            --limit;
        }
        const auto length = static_cast<int32_t>(limit - start);
        const qsizetype done = out.size();
        out.resize(done + qsizetype{3} * length);
        UErrorCode status = U_ZERO_ERROR;
        const int32_t foldedLength =
            u_strFoldCase(reinterpret_cast<UChar *>(out.data()) + done, 3 * length,
                          reinterpret_cast<const UChar *>(text.utf16()) + start, length, U_FOLD_CASE_DEFAULT, &status);
        out.truncate(done + foldedLength);
        start = limit;
    }
    return out;
}

[[nodiscard]] QString withoutDiacritics(QStringView text)
{
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2 *normalizer = unorm2_getNFDInstance(&status);
    QString out;
    out.reserve(text.size());
    const char16_t *units = text.utf16();
    bool dropsMarks = false;
    for (qsizetype position = 0; position < text.size();) {
        std::array<char16_t, 32> decomposition;
        const qsizetype start = position;
        const char32_t codePoint = takeCodePoint(units, text.size(), &position);
        if (codePoint < ascii::kLimit) {
            out.append(units[start]);
            dropsMarks = true;
            continue;
        }
        const int32_t length = U_SUCCESS(status) ? unorm2_getDecomposition(normalizer, static_cast<UChar32>(codePoint),
                                                                           decomposition.data(), 32, &status)
                                                 : -1;
        // A code point that does not decompose stands for itself.
        const char16_t *parts = length < 0 ? units + start : decomposition.data();
        const qsizetype partsSize = length < 0 ? position - start : length;
        for (qsizetype i = 0; i < partsSize;) {
            const qsizetype partStart = i;
            const char32_t part = takeCodePoint(parts, partsSize, &i);
            const bool isMark = (U_GET_GC_MASK(static_cast<UChar32>(part)) & U_GC_M_MASK) != 0;
            if (isMark && dropsMarks) {
                continue;
            }
            out.append(QStringView(parts + partStart, i - partStart));
            if (!isMark) {
                dropsMarks = part < kFirstBaseThatKeepsItsMarks;
            }
        }
    }
    return out;
}

} // namespace

QString foldedString(QStringView text, FoldOption option)
{
    switch (option) {
    case FoldOption::Exact:
        break;
    case FoldOption::Case:
        return caseFolded(text);
    case FoldOption::Diacritic:
        return withoutDiacritics(text);
    case FoldOption::CaseAndDiacritic: {
        QString out;
        out.reserve(text.size());
        Utf16Sink sink(out);
        fold(text, sink);
        return out;
    }
    }
    return text.toString();
}

void appendFoldedUtf8(QByteArray &out, QStringView text)
{
    Utf8Sink sink(out);
    fold(text, sink);
}

QByteArray foldedUtf8(QStringView text)
{
    QByteArray out;
    out.reserve(text.size());
    appendFoldedUtf8(out, text);
    return out;
}

} // namespace quib
