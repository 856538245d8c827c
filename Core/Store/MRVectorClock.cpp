#include "MRVectorClock.h"

#include <Files/PropertyList.h>

using namespace Qt::StringLiterals;
using quib::PropertyValue;

MRVectorClock::MRVectorClock(const MRVectorClock &other)
    : m_clockValues(other.values())
{
}

MRVectorClock &MRVectorClock::operator=(const MRVectorClock &other)
{
    auto values = other.values();
    const std::lock_guard lock(m_mutex);
    m_clockValues = std::move(values);
    return *this;
}

QMap<QString, quint64> MRVectorClock::values() const
{
    const std::lock_guard lock(m_mutex);
    return m_clockValues;
}

std::optional<MRVectorClock> MRVectorClock::initWithData(const QByteArray &data)
{
    if (data.isNull()) {
        return MRVectorClock();
    }
    const auto read = quib::readPropertyList(data, nullptr);
    const auto *items = read ? read->asDictionary() : nullptr;
    if (items == nullptr) {
        return std::nullopt;
    }
    MRVectorClock clock;
    for (auto item = items->cbegin(); item != items->cend(); ++item) {
        if (!item->isNumber()) {
            return std::nullopt;
        }
        // A negative number stands for the same bits without a sign.
        clock.m_clockValues.insert(item.key(), item->asUnsigned().value_or(static_cast<quint64>(item->toInteger())));
    }
    return clock;
}

QByteArray MRVectorClock::data() const
{
    PropertyValue::Dictionary items;
    const auto counters = values();
    for (auto counter = counters.cbegin(); counter != counters.cend(); ++counter) {
        items.insert(counter.key(), PropertyValue(*counter));
    }
    // Numbers by strings can always be written.
    return quib::writePropertyList(PropertyValue(items), quib::PropertyListFormat::Binary, nullptr)
        .value_or(QByteArray());
}

MRVectorClock::Comparison MRVectorClock::compare(const MRVectorClock &other) const
{
    const auto mine = values();
    const auto theirs = other.values();
    bool isAhead = false;
    bool isBehind = false;
    const auto look = [&](const QString &identifier) {
        const auto difference = static_cast<qint64>(mine.value(identifier) - theirs.value(identifier));
        isAhead = isAhead || difference > 0;
        isBehind = isBehind || difference < 0;
    };
    for (auto counter = mine.keyBegin(); counter != mine.keyEnd(); ++counter) {
        look(*counter);
    }
    for (auto counter = theirs.keyBegin(); counter != theirs.keyEnd(); ++counter) {
        look(*counter);
    }
    if (isAhead && isBehind) {
        return Concurrent;
    }
    if (isBehind) {
        return Older;
    }
    return isAhead ? Newer : Equal;
}

void MRVectorClock::updateClockValueForID(const QString &identifier)
{
    const std::lock_guard lock(m_mutex);
    ++m_clockValues[identifier];
}

void MRVectorClock::updateClockValueForID(const QString &identifier, quint64 value)
{
    const std::lock_guard lock(m_mutex);
    m_clockValues.insert(identifier, value);
}

quint64 MRVectorClock::clockValueForID(const QString &identifier) const
{
    const std::lock_guard lock(m_mutex);
    return m_clockValues.value(identifier);
}

MRVectorClock MRVectorClock::mergeClock(const MRVectorClock &otherClock) const
{
    MRVectorClock merged(*this);
    const auto theirs = otherClock.values();
    for (auto counter = theirs.cbegin(); counter != theirs.cend(); ++counter) {
        quint64 &mine = merged.m_clockValues[counter.key()];
        mine = std::max(mine, *counter);
    }
    return merged;
}

QStringList MRVectorClock::orderedIDs() const
{
    return values().keys();
}

QString MRVectorClock::stringRepresentation() const
{
    QStringList pairs;
    const auto counters = values();
    for (auto counter = counters.cbegin(); counter != counters.cend(); ++counter) {
        pairs.append(counter.key() % u':' % QString::number(*counter));
    }
    return u'(' % pairs.join(u", "_s) % u')';
}

QString MRVectorClock::description() const
{
    return u"<MRVectorClock: 0x%1> "_s.arg(reinterpret_cast<quintptr>(this), 0, 16) % stringRepresentation();
}
