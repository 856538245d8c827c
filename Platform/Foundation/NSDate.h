#pragma once

#include <QHashFunctions>
#include <QString>

#include <compare>
#include <optional>

/// An instant, as seconds since 1970-01-01 00:00:00 UTC. Microseconds are kept. A value; "no date" is std::nullopt.
class NSDate
{
public:
    constexpr NSDate() = default;
    /// Units: seconds since 1970, fractions allowed, negative before.
    [[nodiscard]] static constexpr NSDate dateWithTimeIntervalSince1970(double seconds) { return NSDate(seconds); }
    /// The present instant of the installed clock, cut to whole microseconds.
    [[nodiscard]] static NSDate now();

    [[nodiscard]] constexpr double timeIntervalSince1970() const { return m_seconds; }
    [[nodiscard]] constexpr NSDate dateByAddingTimeInterval(double seconds) const
    {
        return NSDate(m_seconds + seconds);
    }
    /// Units: seconds, positive when this instant is the later one.
    [[nodiscard]] constexpr double timeIntervalSinceDate(NSDate other) const { return m_seconds - other.m_seconds; }

    /// "2017-03-02T10:11:12Z": whole seconds, in UTC.
    [[nodiscard]] QString iso8601String() const;
    /// Reads "2017-03-02T10:11:12Z", with fractions or an offset where given.
    [[nodiscard]] static std::optional<NSDate> dateFromISO8601String(QStringView text);

    friend constexpr bool operator==(NSDate a, NSDate b) = default;
    friend constexpr auto operator<=>(NSDate a, NSDate b) = default;

private:
    explicit constexpr NSDate(double seconds)
        : m_seconds(seconds)
    {
    }
    double m_seconds = 0;
};

[[nodiscard]] inline size_t qHash(NSDate date, size_t seed = 0)
{
    return qHash(date.timeIntervalSince1970(), seed);
}
