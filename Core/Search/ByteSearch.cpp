#include "ByteSearch.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <vector>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace quib {

ByteSearch::ByteSearch(std::string_view needle, const ByteCounts &counts)
    : m_needle(needle)
{
    // The rarest bytes by place, the rarest first; a short needle repeats what it has.
    std::vector<size_t> offsets(needle.size());
    std::iota(offsets.begin(), offsets.end(), size_t{0});
    const auto count = [&](size_t offset) { return counts[static_cast<unsigned char>(needle[offset])]; };
    const size_t wanted = std::min<size_t>(3, offsets.size());
    std::partial_sort(offsets.begin(), offsets.begin() + static_cast<std::ptrdiff_t>(wanted), offsets.end(),
                      [&count](size_t a, size_t b) { return count(a) != count(b) ? count(a) < count(b) : a < b; });
    m_firstOffset = offsets[0];
    m_secondOffset = offsets[std::min<size_t>(1, wanted - 1)];
    m_thirdOffset = offsets[wanted - 1];
    const size_t length = std::min(needle.size(), m_head.size());
    std::copy_n(needle.begin(), length, m_head.begin());
    m_headMask = static_cast<uint32_t>((uint64_t{1} << length) - 1);
}

size_t ByteSearch::findPlain(std::string_view text, size_t start) const
{
    if (start + m_needle.size() > text.size()) {
        return std::string_view::npos;
    }
    const void *found = memmem(text.data() + start, text.size() - start, m_needle.data(), m_needle.size());
    return found == nullptr ? std::string_view::npos
                            : static_cast<size_t>(static_cast<const char *>(found) - text.data());
}

#if defined(__x86_64__)

namespace {

__attribute__((target("avx2"))) inline __m256i load(const char *at)
{
    return _mm256_loadu_si256(reinterpret_cast<const __m256i *>(at));
}

} // namespace

__attribute__((target("avx2"))) size_t ByteSearch::findWide(std::string_view text, size_t start, size_t least) const
{
    constexpr size_t kWidth = 32;
    constexpr size_t kCacheLine = 64;
    const __m256i first = _mm256_set1_epi8(m_needle[m_firstOffset]);
    const __m256i second = _mm256_set1_epi8(m_needle[m_secondOffset]);
    const __m256i third = _mm256_set1_epi8(m_needle[m_thirdOffset]);
    const __m256i head = load(m_head.data());
    const size_t size = m_needle.size();
    // How far behind a place its turn reads: the needle's bytes, or the width that a candidate is compared in.
    const size_t reach = std::max(size, kWidth) + 2 * kWidth;
    if (text.size() < reach) {
        return findPlain(text, std::max(start, least));
    }
    const char *const wanted = text.data() + least;
    const char *const limit = text.data() + (text.size() - reach);
    const char *place = text.data() + start;
    // OPTIMIZATION: what lies before is not looked at, but asked for in its order, so that memory goes on coming.
    for (; place < wanted; place += kCacheLine) {
        __builtin_prefetch(place);
    }
    place = std::max(text.data() + start, wanted);
    // OPTIMIZATION: 64 places a turn; a place counts when three bytes stand where the needle has them, and is then
    // compared whole, so that the result is that of the plain search. All three are always looked at: the reading of
    // the text is waited for anyway, and a turn that goes the other way costs more than a comparison.
    for (; place <= limit; place += 2 * kWidth) {
        const char *const atFirst = place + m_firstOffset;
        const char *const atSecond = place + m_secondOffset;
        const char *const atThird = place + m_thirdOffset;
        const __m256i low = _mm256_and_si256(
            _mm256_and_si256(_mm256_cmpeq_epi8(load(atFirst), first), _mm256_cmpeq_epi8(load(atSecond), second)),
            _mm256_cmpeq_epi8(load(atThird), third));
        const __m256i high = _mm256_and_si256(_mm256_and_si256(_mm256_cmpeq_epi8(load(atFirst + kWidth), first),
                                                               _mm256_cmpeq_epi8(load(atSecond + kWidth), second)),
                                              _mm256_cmpeq_epi8(load(atThird + kWidth), third));
        if (_mm256_testz_si256(_mm256_or_si256(low, high), _mm256_or_si256(low, high)) != 0) {
            continue;
        }
        auto mask = static_cast<uint64_t>(static_cast<uint32_t>(_mm256_movemask_epi8(low))) |
                    static_cast<uint64_t>(static_cast<uint32_t>(_mm256_movemask_epi8(high))) << kWidth;
        for (; mask != 0; mask &= mask - 1) {
            const char *const candidate = place + __builtin_ctzll(mask);
            const auto equal = static_cast<uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(load(candidate), head)));
            if ((equal & m_headMask) == m_headMask &&
                (size <= kWidth || std::memcmp(candidate + kWidth, m_needle.data() + kWidth, size - kWidth) == 0)) {
                return static_cast<size_t>(candidate - text.data());
            }
        }
    }
    return findPlain(text, std::max(static_cast<size_t>(place - text.data()), least));
}

size_t ByteSearch::find(std::string_view text, size_t start, size_t least) const
{
    static const bool isWide = __builtin_cpu_supports("avx2") != 0;
    return isWide ? findWide(text, start, least) : findPlain(text, std::max(start, least));
}

#else

size_t ByteSearch::find(std::string_view text, size_t start, size_t least) const
{
    return findPlain(text, std::max(start, least));
}

#endif

} // namespace quib
