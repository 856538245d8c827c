#pragma once

#include "AttributeSet.h"

#include <QSet>

#include <memory>
#include <mutex>
#include <optional>
#include <unordered_map>

namespace quib {

/// The sets of attributes that texts share, each content once. What is in it stays for the life of the process, so it
/// takes a limited number of sets, and of values under one name; beyond that it refuses, and the value stays with its
/// place. Any thread.
class AttributeTable
{
public:
    static constexpr qsizetype kMaximumSets = 32768;
    static constexpr int kMaximumValuesOfName = 1024;

    [[nodiscard]] static AttributeTable &shared();

    /// What a value is remembered by: the bits of a number, the address of the object that the table keeps. Nothing for
    /// a value that is never shared, and for an object of which the table keeps none yet.
    [[nodiscard]] static std::optional<quint64> bitsOfValue(const AttributeValue &value);
    [[nodiscard]] static bool isShareable(const AttributeValue &value);

    /// The set with one value more, or instead of its own. Errors: nothing when the table is full.
    [[nodiscard]] std::optional<const AttributeEntries *> inserting(const AttributeEntries *set, quint16 name,
                                                                    const AttributeValue &value);
    [[nodiscard]] std::optional<const AttributeEntries *> inserting(const AttributeEntries *set,
                                                                    const AttributeEntries *other);
    [[nodiscard]] std::optional<const AttributeEntries *> removing(const AttributeEntries *set, quint16 name);

private:
    struct NamedValue
    {
        quint16 name = 0;
        quint64 bits = 0;
        bool isFraction = false;
        friend bool operator==(const NamedValue &a, const NamedValue &b) = default;
        friend size_t qHash(const NamedValue &value, size_t seed = 0)
        {
            return qHashMulti(seed, value.name, value.bits, value.isFraction);
        }
    };

    AttributeTable() = default;
    [[nodiscard]] bool admits(quint16 name, const AttributeValue &value);
    /// The value with the kept object in the place of an equal one.
    [[nodiscard]] AttributeValue kept(const AttributeValue &value);
    [[nodiscard]] std::optional<const AttributeEntries *> setOf(std::vector<AttributeEntry> entries);

    std::mutex m_mutex;
    std::unordered_multimap<size_t, std::unique_ptr<const AttributeEntries>> m_sets;
    std::unordered_multimap<size_t, std::shared_ptr<AttributeObject>> m_objects;
    QSet<NamedValue> m_values;
    std::unordered_map<quint16, int> m_valueCounts;
};

} // namespace quib
