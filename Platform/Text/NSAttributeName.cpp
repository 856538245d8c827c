#include "NSAttributeName.h"

#include <Foundation/Assert.h>

#include <QHash>

#include <array>
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

quib::AttributeNameMask quib::AttributeNameMask::ofClass(const std::type_info &type)
{
    // OPTIMIZATION: a class is told by its name, which is long; mostly it is one of the last.
    struct Known
    {
        const std::type_info *type;
        quint64 classes;
    };
    thread_local constinit std::array<Known, 16> s_known{};
    Known &known = s_known[(reinterpret_cast<quintptr>(&type) >> 4) % s_known.size()];
    if (known.type != &type) {
        known = {&type, bitOfClass(type)};
    }
    return {0, 0, known.classes};
}

quint64 quib::AttributeNameMask::bitOfClass(const std::type_info &type)
{
    // One bit after the other, so that classes share theirs only when all are taken. Once written a bit's class stays.
    static constinit std::array<std::atomic<const std::type_info *>, 64> s_classes{};
    for (size_t bit = 0; bit < s_classes.size(); ++bit) {
        const std::type_info *known = s_classes[bit].load(std::memory_order_acquire);
        if (known == nullptr && s_classes[bit].compare_exchange_strong(known, &type, std::memory_order_acq_rel)) {
            known = &type;
        }
        if (*known == type) {
            return quint64(1) << bit;
        }
    }
    return quint64(1) << (type.hash_code() % s_classes.size());
}

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
