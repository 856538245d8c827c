#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quib {

/// How often each byte was seen in the texts to be searched; what tells which bytes of a needle are worth looking for.
using ByteCounts = std::array<uint64_t, 256>;

/// Finds one byte string in others: its three rarest bytes are looked for at their distances, many places at a time,
/// and what they agree on is compared whole. A value.
class ByteSearch
{
public:
    /// Shape: needle is not empty and outlives the search.
    ByteSearch(std::string_view needle, const ByteCounts &counts);

    /// The first place at or behind least, or std::string_view::npos. From start to least the text is asked for from
    /// memory: where the last search ended shortly before, going on is faster than going elsewhere.
    [[nodiscard]] size_t find(std::string_view text, size_t start, size_t least) const;

private:
    [[nodiscard]] size_t findPlain(std::string_view text, size_t start) const;
    [[nodiscard]] size_t findWide(std::string_view text, size_t start, size_t least) const;

    std::string_view m_needle;
    size_t m_firstOffset = 0;
    size_t m_secondOffset = 0;
    size_t m_thirdOffset = 0;
    std::array<char, 32> m_head{}; // the needle's first bytes
    uint32_t m_headMask = 0;       // bit i: byte i of the head is the needle's
};

} // namespace quib
