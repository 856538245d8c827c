#include "AttributeTable.h"

#include <algorithm>
#include <bit>

namespace quib {

namespace {

auto entryOf(std::vector<AttributeEntry> &entries, quint16 name)
{
    return std::ranges::lower_bound(entries, name, {}, &AttributeEntry::name);
}

void insertEntry(std::vector<AttributeEntry> &entries, quint16 name, const AttributeValue &value)
{
    const auto entry = entryOf(entries, name);
    if (entry != entries.end() && entry->name == name) {
        entry->value = value;
    } else {
        entries.insert(entry, AttributeEntry{name, value});
    }
}

std::vector<AttributeEntry> copyOf(const AttributeEntries *set)
{
    return set != nullptr ? set->entries : std::vector<AttributeEntry>();
}

} // namespace

AttributeTable &AttributeTable::shared()
{
    // Never destroyed: sets are pointed to until the last moment of the process.
    static AttributeTable &s_table = *new AttributeTable;
    return s_table;
}

bool AttributeTable::isShareable(const AttributeValue &value)
{
    if (const auto *object = std::get_if<std::shared_ptr<AttributeObject>>(&value.m_value)) {
        return (*object)->isShareable();
    }
    return value.isNumber();
}

std::optional<quint64> AttributeTable::bitsOfValue(const AttributeValue &value)
{
    if (const auto *integer = std::get_if<qint64>(&value.m_value)) {
        return static_cast<quint64>(*integer);
    }
    if (const auto *object = std::get_if<std::shared_ptr<AttributeObject>>(&value.m_value)) {
        if (const AttributeObject *twin = (*object)->m_twin.load(std::memory_order_acquire)) {
            return static_cast<quint64>(reinterpret_cast<quintptr>(twin));
        }
        return std::nullopt;
    }
    if (const auto *number = std::get_if<double>(&value.m_value)) {
        return std::bit_cast<quint64>(*number);
    }
    return std::nullopt;
}

std::optional<const AttributeEntries *> AttributeTable::inserting(const AttributeEntries *set, quint16 name,
                                                                  const AttributeValue &value)
{
    const std::lock_guard lock(m_mutex);
    const AttributeValue keptValue = kept(value);
    if (!admits(name, keptValue)) {
        return std::nullopt;
    }
    std::vector<AttributeEntry> entries = copyOf(set);
    insertEntry(entries, name, keptValue);
    return setOf(std::move(entries));
}

std::optional<const AttributeEntries *> AttributeTable::inserting(const AttributeEntries *set,
                                                                  const AttributeEntries *other)
{
    const std::lock_guard lock(m_mutex);
    std::vector<AttributeEntry> entries = copyOf(set);
    for (const AttributeEntry &entry : other->entries) {
        insertEntry(entries, entry.name, entry.value);
    }
    return setOf(std::move(entries));
}

std::optional<const AttributeEntries *> AttributeTable::removing(const AttributeEntries *set, quint16 name)
{
    const std::lock_guard lock(m_mutex);
    std::vector<AttributeEntry> entries = copyOf(set);
    std::erase_if(entries, [name](const AttributeEntry &entry) { return entry.name == name; });
    return setOf(std::move(entries));
}

AttributeValue AttributeTable::kept(const AttributeValue &value)
{
    const auto *held = std::get_if<std::shared_ptr<AttributeObject>>(&value.m_value);
    if (held == nullptr) {
        return value;
    }
    const std::shared_ptr<AttributeObject> &object = *held;
    const size_t hash = object->hash();
    const auto [first, last] = m_objects.equal_range(hash);
    const auto known = std::find_if(first, last, [&object](const auto &pair) {
        return pair.second->kind() == object->kind() && pair.second->isEqual(*object);
    });
    if (known != last) {
        object->m_twin.store(known->second.get(), std::memory_order_release);
        return AttributeValue(known->second);
    }
    return value;
}

bool AttributeTable::admits(quint16 name, const AttributeValue &value)
{
    const auto *object = std::get_if<std::shared_ptr<AttributeObject>>(&value.m_value);
    if (object != nullptr && (*object)->m_twin.load(std::memory_order_relaxed) == nullptr) {
        if (m_valueCounts[name] >= kMaximumValuesOfName) {
            return false;
        }
        m_objects.emplace((*object)->hash(), *object);
        (*object)->m_twin.store(object->get(), std::memory_order_release);
    }
    const NamedValue named{name, *bitsOfValue(value), std::holds_alternative<double>(value.m_value)};
    if (m_values.contains(named)) {
        return true;
    }
    if (m_valueCounts[name] >= kMaximumValuesOfName) {
        return false;
    }
    m_values.insert(named);
    ++m_valueCounts[name];
    return true;
}

std::optional<const AttributeEntries *> AttributeTable::setOf(std::vector<AttributeEntry> entries)
{
    if (entries.empty()) {
        return nullptr;
    }
    size_t hash = 0;
    for (const AttributeEntry &entry : entries) {
        hash = qHashMulti(hash, entry.name, *bitsOfValue(entry.value));
    }
    const auto isSame = [](const AttributeEntry &a, const AttributeEntry &b) {
        return a.name == b.name && a.value == b.value;
    };
    const auto [first, last] = m_sets.equal_range(hash);
    for (auto set = first; set != last; ++set) {
        if (std::ranges::equal(set->second->entries, entries, isSame)) {
            return set->second.get();
        }
    }
    if (static_cast<qsizetype>(m_sets.size()) >= kMaximumSets) {
        return std::nullopt;
    }
    auto set = std::make_unique<AttributeEntries>();
    for (const AttributeEntry &entry : entries) {
        set->names |= AttributeNameMask::ofIndex(entry.name);
    }
    entries.shrink_to_fit();
    set->entries = std::move(entries);
    return m_sets.emplace(hash, std::move(set))->second.get();
}

} // namespace quib
