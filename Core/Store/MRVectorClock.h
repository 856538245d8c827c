#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include <mutex>
#include <optional>

/// A counter for each device that wrote a text; an identifier that is not present counts as 0. A value; copies are
/// independent. Any thread: one lock guards the counters.
class MRVectorClock
{
public:
    /// What compare() gives, from the side of the receiver.
    enum Comparison
    {
        Older = -1, ///< some counter of the other is higher, none of the receiver's
        Equal = 0,
        Newer = 1,
        Concurrent = 2, ///< each has a counter higher than the other's
    };

    MRVectorClock() = default;
    MRVectorClock(const MRVectorClock &other);
    MRVectorClock &operator=(const MRVectorClock &other);

    /// The clock that data() stored. Null data gives an empty clock.
    /// Errors: nothing for data that is no dictionary of numbers in a property list.
    [[nodiscard]] static std::optional<MRVectorClock> initWithData(const QByteArray &data);
    /// The stored form: a binary property list, a dictionary of identifiers to integers. Equal clocks give equal bytes.
    [[nodiscard]] QByteArray data() const;

    /// Compares counter by counter. Differences are signed 64-bit numbers, so that a counter that went round is ahead.
    [[nodiscard]] Comparison compare(const MRVectorClock &other) const;

    /// Adds 1 to a counter; a missing one starts at 1.
    void updateClockValueForID(const QString &identifier);
    void updateClockValueForID(const QString &identifier, quint64 value);
    [[nodiscard]] quint64 clockValueForID(const QString &identifier) const;
    /// A new clock with the higher of both counters for each identifier.
    [[nodiscard]] MRVectorClock mergeClock(const MRVectorClock &otherClock) const;

    /// The identifiers, ascending.
    [[nodiscard]] QStringList orderedIDs() const;
    /// "(A:1, B:2)", for logs only.
    [[nodiscard]] QString stringRepresentation() const;
    [[nodiscard]] QString description() const;

private:
    [[nodiscard]] QMap<QString, quint64> values() const;

    mutable std::mutex m_mutex; ///< guards m_clockValues
    QMap<QString, quint64> m_clockValues;
};
