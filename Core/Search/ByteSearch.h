#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quib {

/// How often each byte was seen in the texts to be searched; what tells which bytes of a needle are worth looking for.
using ByteCounts = std::array<uint64_t, 256>;

/// Finds one byte string in others: its two rarest bytes are looked for at their distance, many places at a time; what
/// they agree on is tried by a third, and what is left is compared whole. A value.
class ByteSearch
{
public:
    /// Shape: needle is not empty and outlives the search.
    ByteSearch(std::string_view needle, const ByteCounts &counts);

    /// The first place at or behind start, or std::string_view::npos.
    [[nodiscard]] size_t find(std::string_view text, size_t start) const;

private:
    [[nodiscard]] bool isAt(const char *place) const;
    [[nodiscard]] size_t findPlain(std::string_view text, size_t start) const;
    [[nodiscard]] size_t findWide(std::string_view text, size_t start) const;

    std::string_view m_needle;
    size_t m_firstOffset = 0;
    size_t m_secondOffset = 0;
    size_t m_thirdOffset = 0;
};

} // namespace quib
