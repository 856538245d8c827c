#include "AttributeSet.h"

#include "AttributeTable.h"

#include <Foundation/Assert.h>

#include <algorithm>
#include <array>

namespace quib {

namespace {

enum class Step : quint32
{
    InsertInteger = 1,
    InsertFraction,
    InsertObject,
    InsertSet,
    Remove,
};

/// The last ways from one shared set to another that this thread went. Shared sets never die, so an entry is true for
/// ever; a colliding one takes its place.
struct Transition
{
    const AttributeEntries *from;
    quint64 operand;
    quint32 step;
    bool isRefused;
    const AttributeEntries *to;
};
constexpr size_t kTransitionCount = 1024;
thread_local constinit std::array<Transition, kTransitionCount> s_transitions{};

[[nodiscard]] quint32 stepOf(Step step, quint16 name)
{
    return (static_cast<quint32>(step) << 16) | name;
}

[[nodiscard]] Transition &transitionOf(const AttributeEntries *from, quint32 step, quint64 operand)
{
    quint64 hash = static_cast<quint64>(reinterpret_cast<quintptr>(from)) * 0x9E3779B97F4A7C15U;
    hash ^= (operand + step) * 0xC2B2AE3D27D4EB4FU;
    return s_transitions[(hash >> 40) % kTransitionCount];
}

/// The set behind a step, from memory or made by the table; null in the result's second when the table refused.
template <typename Make>
[[nodiscard]] std::optional<const AttributeEntries *> remembered(const AttributeEntries *from, quint32 step,
                                                                 quint64 operand, const Make &make)
{
    Transition &transition = transitionOf(from, step, operand);
    if (transition.step != step || transition.from != from || transition.operand != operand) {
        const std::optional<const AttributeEntries *> to = make();
        transition = Transition{from, operand, step, !to.has_value(), to.value_or(nullptr)};
    }
    return transition.isRefused ? std::nullopt : std::optional(transition.to);
}

} // namespace

AttributeNameMask AttributeEntry::mask() const
{
    AttributeNameMask mask = AttributeNameMask::ofIndex(name);
    if (const auto *object = value.as<AttributeObject>(); object != nullptr && !object->isShareable()) {
        mask |= AttributeNameMask::ofClass(typeid(*object));
    }
    return mask;
}

AttributeSet::AttributeSet(std::initializer_list<Pair> pairs)
{
    for (const Pair &pair : pairs) {
        insert(pair.name, pair.value);
    }
}

qint64 AttributeSet::count() const
{
    const size_t shared = m_shared != nullptr ? m_shared->entries.size() : 0;
    const size_t place = m_place != nullptr ? m_place->content.entries.size() : 0;
    return static_cast<qint64>(shared + place);
}

AttributeValue AttributeSet::value(const NSAttributeName &name) const
{
    const AttributeValue *value = find(name);
    return value != nullptr ? *value : AttributeValue();
}

std::vector<NSAttributeName> AttributeSet::allNames() const
{
    std::vector<quint16> indexes;
    for (const AttributeEntries *side : sides()) {
        if (side != nullptr) {
            std::ranges::transform(side->entries, std::back_inserter(indexes), &AttributeEntry::name);
        }
    }
    std::ranges::sort(indexes);
    std::vector<NSAttributeName> names;
    names.reserve(indexes.size());
    for (const quint16 index : indexes) {
        names.push_back(NSAttributeName::nameOfIndex(index));
    }
    return names;
}

void AttributeSet::insert(const NSAttributeName &name, const AttributeValue &value)
{
    const quint16 index = name.index();
    if (value.isNothing()) {
        remove(name);
        return;
    }
    if (AttributeTable::isShareable(value)) {
        const auto make = [&] { return AttributeTable::shared().inserting(m_shared, index, value); };
        std::optional<const AttributeEntries *> to;
        if (const auto bits = AttributeTable::bitsOfValue(value)) {
            const Step step = value.isInteger()  ? Step::InsertInteger
                              : value.isNumber() ? Step::InsertFraction
                                                 : Step::InsertObject;
            to = remembered(m_shared, stepOf(step, index), *bits, make);
        } else {
            to = make();
        }
        if (to.has_value()) {
            m_shared = *to;
            removeFromPlace(index);
            return;
        }
    }
    removeFromShared(index);
    insertIntoPlace(index, value);
}

void AttributeSet::insert(const AttributeSet &other)
{
    if (other.m_shared != nullptr) {
        insertShared(other.m_shared);
    }
    if (other.m_place == nullptr || other.m_place == m_place) {
        return;
    }
    // Held, since the other set may be this one's.
    const AttributeSet held(other);
    for (const AttributeEntry &entry : held.m_place->content.entries) {
        removeFromShared(entry.name);
    }
    if (m_place == nullptr) {
        m_place = held.m_place;
        m_place->references.fetch_add(1, std::memory_order_relaxed);
        return;
    }
    const std::vector<AttributeEntry> &added = held.m_place->content.entries;
    std::vector<AttributeEntry> &entries = ownPlace().entries;
    entries.reserve(entries.size() + added.size());
    for (const AttributeEntry &entry : added) {
        insertIntoPlace(entry.name, entry.value);
    }
}

void AttributeSet::remove(const NSAttributeName &name)
{
    const quint16 index = name.index();
    removeFromShared(index);
    removeFromPlace(index);
}

void AttributeSet::insertShared(const AttributeEntries *other)
{
    const auto to =
        m_shared == nullptr
            ? std::optional(other)
            : remembered(m_shared, stepOf(Step::InsertSet, 0), static_cast<quint64>(reinterpret_cast<quintptr>(other)),
                         [&] { return AttributeTable::shared().inserting(m_shared, other); });
    if (to.has_value()) {
        m_shared = *to;
        if (m_place != nullptr && m_place->content.names.intersects(other->names)) {
            for (const AttributeEntry &entry : other->entries) {
                removeFromPlace(entry.name);
            }
        }
        return;
    }
    for (const AttributeEntry &entry : other->entries) {
        removeFromShared(entry.name);
        insertIntoPlace(entry.name, entry.value);
    }
}

void AttributeSet::removeFromShared(quint16 name)
{
    if (m_shared == nullptr || m_shared->find(name) == nullptr) {
        return;
    }
    const auto to = remembered(m_shared, stepOf(Step::Remove, name), 0,
                               [&] { return AttributeTable::shared().removing(m_shared, name); });
    if (to.has_value()) {
        m_shared = *to;
        return;
    }
    // The smaller set has no room in the table: all of it moves to the place.
    const AttributeEntries *before = std::exchange(m_shared, nullptr);
    for (const AttributeEntry &entry : before->entries) {
        if (entry.name != name) {
            insertIntoPlace(entry.name, entry.value);
        }
    }
}

AttributeEntries &AttributeSet::ownPlace()
{
    if (m_place == nullptr) {
        m_place = new Place;
    } else if (m_place->references.load(std::memory_order_acquire) != 1) {
        auto *copy = new Place;
        copy->content = m_place->content;
        release(std::exchange(m_place, copy));
    }
    return m_place->content;
}

void AttributeSet::insertIntoPlace(quint16 name, const AttributeValue &value)
{
    AttributeEntries &place = ownPlace();
    const auto entry = std::ranges::lower_bound(place.entries, name, {}, &AttributeEntry::name);
    if (entry != place.entries.end() && entry->name == name) {
        // Another object's class may stay in the mask, which only has to hold what there is.
        entry->value = value;
        place.names |= entry->mask();
    } else {
        place.names |= place.entries.insert(entry, AttributeEntry{name, value})->mask();
    }
}

void AttributeSet::removeFromPlace(quint16 name)
{
    if (m_place == nullptr || m_place->content.find(name) == nullptr) {
        return;
    }
    if (m_place->content.entries.size() == 1) {
        release(std::exchange(m_place, nullptr));
        return;
    }
    AttributeEntries &place = ownPlace();
    std::erase_if(place.entries, [name](const AttributeEntry &entry) { return entry.name == name; });
    place.names = {};
    for (const AttributeEntry &entry : place.entries) {
        place.names |= entry.mask();
    }
}

void AttributeSet::checkInvariants() const
{
    for (const AttributeEntries *side : sides()) {
        if (side == nullptr) {
            continue;
        }
        QUIB_REQUIRE(!side->entries.empty());
        const auto repeated =
            std::ranges::adjacent_find(side->entries, std::ranges::greater_equal(), &AttributeEntry::name);
        QUIB_REQUIRE(repeated == side->entries.end());
        AttributeNameMask names;
        for (const AttributeEntry &entry : side->entries) {
            names |= entry.mask();
            QUIB_REQUIRE(m_shared == nullptr || side == m_shared || m_shared->find(entry.name) == nullptr);
        }
        AttributeNameMask all = side->names;
        all |= names;
        QUIB_REQUIRE(all == side->names);
        names.classes = side->names.classes;
        QUIB_REQUIRE(names == side->names);
    }
}

void AttributeSet::release(Place *place) noexcept
{
    if (place->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        delete place;
    }
}

bool AttributeSet::hasSamePlace(const AttributeSet &a, const AttributeSet &b)
{
    if (a.m_place == nullptr || b.m_place == nullptr) {
        return false;
    }
    return std::ranges::equal(a.m_place->content.entries, b.m_place->content.entries,
                              [](const AttributeEntry &first, const AttributeEntry &second) {
                                  return first.name == second.name && first.value == second.value;
                              });
}

bool AttributeSet::hasSameContent(const AttributeSet &a, const AttributeSet &b)
{
    // Each shared content exists once, so two different ones can only be made equal by what stands beside them.
    if ((a.m_place == nullptr && b.m_place == nullptr) || a.count() != b.count()) {
        return false;
    }
    for (const AttributeEntries *side : a.sides()) {
        if (side == nullptr) {
            continue;
        }
        for (const AttributeEntry &entry : side->entries) {
            const AttributeValue *other = b.m_shared != nullptr ? b.m_shared->find(entry.name) : nullptr;
            if (other == nullptr && b.m_place != nullptr) {
                other = b.m_place->content.find(entry.name);
            }
            if (other == nullptr || !(*other == entry.value)) {
                return false;
            }
        }
    }
    return true;
}

} // namespace quib
