#pragma once

#include <QHashFunctions>
#include <QtGlobal>

#include <algorithm>
#include <limits>

/// The location of a range that was not found.
inline constexpr qint64 NSNotFound = std::numeric_limits<qint64>::max();

/// A stretch of a text, [location, limit), in UTF-16 code units from 0. A value.
struct NSRange
{
    qint64 location = 0;
    qint64 length = 0;

    [[nodiscard]] constexpr qint64 limit() const { return location + length; }
    [[nodiscard]] constexpr bool isFound() const { return location != NSNotFound; }
    [[nodiscard]] constexpr bool contains(qint64 position) const
    {
        return position >= location && position - location < length;
    }
    friend constexpr bool operator==(NSRange a, NSRange b) = default;
};

inline constexpr NSRange kNotFoundRange{NSNotFound, 0};

[[nodiscard]] constexpr qint64 NSMaxRange(NSRange range)
{
    return range.limit();
}

/// The common part of two ranges, or {0, 0} when they share no unit.
[[nodiscard]] constexpr NSRange NSIntersectionRange(NSRange a, NSRange b)
{
    const qint64 start = std::max(a.location, b.location);
    const qint64 limit = std::min(a.limit(), b.limit());
    return start < limit ? NSRange{start, limit - start} : NSRange{};
}

/// The smallest range that holds both.
[[nodiscard]] constexpr NSRange NSUnionRange(NSRange a, NSRange b)
{
    const qint64 start = std::min(a.location, b.location);
    return {start, std::max(a.limit(), b.limit()) - start};
}

[[nodiscard]] inline size_t qHash(NSRange range, size_t seed = 0)
{
    return qHashMulti(seed, range.location, range.length);
}
