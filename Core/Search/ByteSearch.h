#pragma once

#include <cstddef>
#include <string_view>

namespace quib {

/// Finds one byte string in others: two of its rarest bytes are looked for at their distance, many places at a time,
/// and what they agree on is compared whole. A value.
class ByteSearch
{
public:
    /// Shape: needle is not empty and outlives the search.
    explicit ByteSearch(std::string_view needle);

    /// The first place at or behind start, or std::string_view::npos.
    [[nodiscard]] size_t find(std::string_view text, size_t start) const;

private:
    [[nodiscard]] bool isAt(const char *place) const;
    [[nodiscard]] size_t findPlain(std::string_view text, size_t start) const;
    [[nodiscard]] size_t findWide(std::string_view text, size_t start) const;

    std::string_view m_needle;
    size_t m_firstOffset = 0;
    size_t m_secondOffset = 0;
};

} // namespace quib
