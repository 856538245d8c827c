#pragma once

#include <QtGlobal>

#include <bit>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// Copies of ASCII runs between encodings: each takes units up to the first that is not ASCII, at most count, and gives
/// their number. Sixteen at a time where the processor can.
namespace quib::ascii {

constexpr char16_t kLimit = 0x80;

[[nodiscard]] constexpr char16_t lowered(char16_t unit)
{
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 0x20) : unit;
}

#if defined(__SSE2__)
[[nodiscard]] inline __m128i load(const void *from)
{
    return _mm_loadu_si128(static_cast<const __m128i *>(from));
}
inline void store(void *to, __m128i value)
{
    _mm_storeu_si128(static_cast<__m128i *>(to), value);
}
[[nodiscard]] inline bool areAllAscii(__m128i units)
{
    const __m128i high = _mm_and_si128(units, _mm_set1_epi16(static_cast<short>(0xFF80)));
    return _mm_movemask_epi8(_mm_cmpeq_epi16(high, _mm_setzero_si128())) == 0xFFFF;
}
#endif

template <bool Lower> [[nodiscard]] qsizetype copyToBytes(const char16_t *from, qsizetype count, char *to)
{
    qsizetype done = 0;
#if defined(__SSE2__)
    for (; done + 16 <= count; done += 16) {
        const __m128i first = load(from + done);
        const __m128i second = load(from + done + 8);
        if (!areAllAscii(_mm_or_si128(first, second))) {
            break;
        }
        __m128i bytes = _mm_packus_epi16(first, second);
        if constexpr (Lower) {
            const __m128i isUpper = _mm_and_si128(_mm_cmpgt_epi8(bytes, _mm_set1_epi8('A' - 1)),
                                                  _mm_cmplt_epi8(bytes, _mm_set1_epi8('Z' + 1)));
            bytes = _mm_add_epi8(bytes, _mm_and_si128(isUpper, _mm_set1_epi8(0x20)));
        }
        store(to + done, bytes);
    }
#endif
    for (; done < count && from[done] < kLimit; ++done) {
        to[done] = static_cast<char>(Lower ? lowered(from[done]) : from[done]);
    }
    return done;
}

/// Lowers the case on the way.
[[nodiscard]] inline qsizetype copyLowered(const char16_t *from, qsizetype count, char16_t *to)
{
    qsizetype done = 0;
#if defined(__SSE2__)
    for (; done + 8 <= count; done += 8) {
        const __m128i units = load(from + done);
        if (!areAllAscii(units)) {
            break;
        }
        const __m128i isUpper = _mm_and_si128(_mm_cmpgt_epi16(units, _mm_set1_epi16('A' - 1)),
                                              _mm_cmplt_epi16(units, _mm_set1_epi16('Z' + 1)));
        store(to + done, _mm_add_epi16(units, _mm_and_si128(isUpper, _mm_set1_epi16(0x20))));
    }
#endif
    for (; done < count && from[done] < kLimit; ++done) {
        to[done] = lowered(from[done]);
    }
    return done;
}

[[nodiscard]] inline qsizetype copyToUnits(const char *from, qsizetype count, char16_t *to)
{
    qsizetype done = 0;
#if defined(__SSE2__)
    for (; done + 16 <= count; done += 16) {
        const __m128i bytes = load(from + done);
        if (_mm_movemask_epi8(bytes) != 0) {
            break;
        }
        store(to + done, _mm_unpacklo_epi8(bytes, _mm_setzero_si128()));
        store(to + done + 8, _mm_unpackhi_epi8(bytes, _mm_setzero_si128()));
    }
#endif
    for (; done < count && static_cast<unsigned char>(from[done]) < kLimit; ++done) {
        to[done] = static_cast<unsigned char>(from[done]);
    }
    return done;
}

/// As copyToUnits, for runs that are short and end before count: where there is room for whole blocks, the units after
/// the run may be written too, with what means nothing. Room: that of to, in units, at least the run.
[[nodiscard]] inline qsizetype copyToRoom(const char *from, qsizetype count, char16_t *to, qsizetype room)
{
    qsizetype done = 0;
#if defined(__SSE2__)
    for (const qsizetype most = count < room ? count : room; done + 16 <= most; done += 16) {
        const __m128i bytes = load(from + done);
        const auto others = static_cast<unsigned>(_mm_movemask_epi8(bytes));
        store(to + done, _mm_unpacklo_epi8(bytes, _mm_setzero_si128()));
        store(to + done + 8, _mm_unpackhi_epi8(bytes, _mm_setzero_si128()));
        if (others != 0) {
            return done + std::countr_zero(others);
        }
    }
#endif
    return done + copyToUnits(from + done, count - done, to + done);
}

} // namespace quib::ascii
