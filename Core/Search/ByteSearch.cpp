#include "ByteSearch.h"

#include <array>
#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace quib {

namespace {

/// How common a byte is in folded text, roughly: letters by their share in western languages, lead bytes of two-byte
/// letters above their trail bytes. Only the order counts.
constexpr std::array<unsigned char, 256> makeCommonness()
{
    std::array<unsigned char, 256> commonness{};
    for (size_t i = 0; i < 256; ++i) {
        commonness[i] = static_cast<unsigned char>(i < 0x20 ? 20 : i < 0x80 ? 40 : i < 0xC0 ? 90 : 60);
    }
    constexpr std::string_view kMostFirst = " etaonirshldcumfpgwybv,.kx-jqz#'\n\"():/0123456789*[]";
    for (size_t i = 0; i < kMostFirst.size(); ++i) {
        commonness[static_cast<unsigned char>(kMostFirst[i])] = static_cast<unsigned char>(255 - 4 * i);
    }
    for (const size_t lead : {0xD0U, 0xD1U, 0xCEU, 0xCFU, 0xE3U, 0xE4U, 0xE5U, 0xD8U, 0xD9U}) {
        commonness[lead] = 150;
    }
    return commonness;
}

} // namespace

ByteSearch::ByteSearch(std::string_view needle)
    : m_needle(needle)
{
    static constexpr auto kCommonness = makeCommonness();
    const auto commonness = [this](size_t offset) { return kCommonness[static_cast<unsigned char>(m_needle[offset])]; };
    for (size_t i = 1; i < needle.size(); ++i) {
        if (commonness(i) < commonness(m_firstOffset)) {
            m_firstOffset = i;
        }
    }
    // The second one elsewhere; a needle of one byte has only itself.
    m_secondOffset = m_firstOffset == 0 ? needle.size() - 1 : 0;
    for (size_t i = 0; i < needle.size(); ++i) {
        if (i != m_firstOffset && commonness(i) < commonness(m_secondOffset)) {
            m_secondOffset = i;
        }
    }
}

bool ByteSearch::isAt(const char *place) const
{
    return std::memcmp(place, m_needle.data(), m_needle.size()) == 0;
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

__attribute__((target("avx2"))) size_t ByteSearch::findWide(std::string_view text, size_t start) const
{
    constexpr size_t kWidth = 32;
    const __m256i first = _mm256_set1_epi8(m_needle[m_firstOffset]);
    const __m256i second = _mm256_set1_epi8(m_needle[m_secondOffset]);
    const char *bytes = text.data();
    size_t place = start;
    // OPTIMIZATION: 32 places at once; a place counts when both bytes stand where the needle has them, and is then
    // compared whole, so that the result is that of the plain search.
    while (place + m_needle.size() + kWidth <= text.size()) {
        const __m256i atFirst = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(bytes + place + m_firstOffset));
        const __m256i atSecond = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(bytes + place + m_secondOffset));
        auto mask = static_cast<unsigned>(_mm256_movemask_epi8(
            _mm256_and_si256(_mm256_cmpeq_epi8(atFirst, first), _mm256_cmpeq_epi8(atSecond, second))));
        while (mask != 0) {
            const size_t candidate = place + static_cast<size_t>(__builtin_ctz(mask));
            if (isAt(bytes + candidate)) {
                return candidate;
            }
            mask &= mask - 1;
        }
        place += kWidth;
    }
    return findPlain(text, place);
}

size_t ByteSearch::find(std::string_view text, size_t start) const
{
    static const bool isWide = __builtin_cpu_supports("avx2") != 0;
    return isWide ? findWide(text, start) : findPlain(text, start);
}

#else

size_t ByteSearch::find(std::string_view text, size_t start) const
{
    return findPlain(text, start);
}

#endif

} // namespace quib
