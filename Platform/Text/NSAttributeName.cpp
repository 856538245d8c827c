#include "NSAttributeName.h"

#include <Foundation/Assert.h>

#include <QHash>

#include <deque>
#include <limits>
#include <mutex>

namespace {

/// Every name in the order of first use. Names stay where they are, so that their text can be pointed to.
struct NameTable
{
    std::mutex mutex;
    std::deque<QString> names;
    QHash<QString, quint16> numbers;

    quint16 numberOf(QStringView name)
    {
        const QString key = name.toString();
        const std::lock_guard lock(mutex);
        const auto known = numbers.constFind(key);
        if (known != numbers.constEnd()) {
            return *known;
        }
        QUIB_REQUIRE(names.size() < std::numeric_limits<quint16>::max() - 1);
        names.push_back(key);
        const auto number = static_cast<quint16>(names.size());
        numbers.insert(key, number);
        return number;
    }
    QStringView textOf(quint16 number)
    {
        const std::lock_guard lock(mutex);
        QUIB_REQUIRE(number > 0 && number <= names.size());
        return names[number - size_t(1)];
    }
};

/// Never destroyed: names are asked for until the last moment of the process.
NameTable &nameTable()
{
    static NameTable &s_table = *new NameTable;
    return s_table;
}

} // namespace

NSAttributeName::NSAttributeName(const QString &name)
    : NSAttributeName(nameOfIndex(static_cast<quint16>(nameTable().numberOf(name) - 1)))
{
}

NSAttributeName NSAttributeName::nameOfIndex(quint16 index)
{
    const auto number = static_cast<quint16>(index + 1);
    return NSAttributeName(nameTable().textOf(number), number);
}

quint16 NSAttributeName::registeredNumber() const
{
    const quint16 number = nameTable().numberOf(QStringView(m_text, m_size));
    m_number.store(number, std::memory_order_relaxed);
    return number;
}
