#include "AttributeSet.h"

#include "AttributeTable.h"

#include <Foundation/Assert.h>

#include <algorithm>
#include <array>
#include <memory>

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

[[nodiscard]] bool hasIdentity(const AttributeValue &value)
{
    return value.isObject() && !AttributeTable::isShareable(value);
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

AttributeNameList::AttributeNameList(std::span<const NSAttributeName> list)
    : names(list)
{
    for (const NSAttributeName &name : list) {
        mask |= name.mask();
        isMaskExact = isMaskExact && name.index() < AttributeNameMask::kBitCount;
    }
}

bool AttributeNameList::contains(quint16 name) const
{
    if (!mask.intersects(AttributeNameMask::ofIndex(name))) {
        return false;
    }
    return isMaskExact ? name < AttributeNameMask::kBitCount
                       : std::ranges::find(names, name, &NSAttributeName::index) != names.end();
}

AttributeSet::AttributeSet(std::initializer_list<Pair> pairs)
{
    for (const Pair &pair : pairs) {
        insert(pair.name, pair.value);
    }
}

qint64 AttributeSet::count() const
{
    return static_cast<qint64>(sharedEntries().size() + entriesOf(m_place).size() + entriesOf(objects()).size());
}

AttributeValue AttributeSet::value(const NSAttributeName &name) const
{
    const AttributeValue *value = find(name);
    return value != nullptr ? *value : AttributeValue();
}

std::vector<NSAttributeName> AttributeSet::allNames() const
{
    std::vector<quint16> indexes;
    for (const auto &side : {sharedEntries(), entriesOf(m_place), entriesOf(objects())}) {
        std::ranges::transform(side, std::back_inserter(indexes), &AttributeEntry::name);
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
    if (!removeOrShare(name, value)) {
        insertUnshared(name.index(), value);
    }
}

void AttributeSet::insert(const NSAttributeName &name, AttributeValue &&value)
{
    if (!removeOrShare(name, value)) {
        insertUnshared(name.index(), std::move(value));
    }
}

bool AttributeSet::removeOrShare(const NSAttributeName &name, const AttributeValue &value)
{
    const quint16 index = name.index();
    if (value.isNothing()) {
        remove(name);
        return true;
    }
    if (!AttributeTable::isShareable(value)) {
        return false;
    }
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
    if (!to.has_value()) {
        return false;
    }
    m_shared = *to;
    removeFromPlaces(index);
    return true;
}

void AttributeSet::insertUnshared(quint16 name, AttributeValue value)
{
    removeFromShared(name);
    const bool isObject = hasIdentity(value);
    changeObjects([&](Place *&objects) {
        removeFromPlace(isObject ? m_place : objects, name);
        insertIntoPlace(isObject ? objects : m_place, name, std::move(value));
    });
}

void AttributeSet::insert(const AttributeSet &other)
{
    if (other.m_shared != nullptr) {
        insertShared(other.m_shared);
    }
    if (other.hasNoPlace() || &other == this) {
        return;
    }
    for (Place *const added : {other.m_place, other.objects()}) {
        if (added == nullptr || added == m_place || added == objects()) {
            continue;
        }
        if (m_shared != nullptr && m_shared->names.intersects(added->names)) {
            for (const AttributeEntry &entry : added->entries()) {
                removeFromShared(entry.name);
            }
        }
        const bool isObjects = added != other.m_place;
        changeObjects([&](Place *&objects) {
            Place *&otherKind = isObjects ? m_place : objects;
            if (otherKind != nullptr && otherKind->names.intersects(added->names)) {
                for (const AttributeEntry &entry : added->entries()) {
                    removeFromPlace(otherKind, entry.name);
                }
            }
            insertPlace(isObjects ? objects : m_place, added);
        });
    }
}

void AttributeSet::insert(AttributeSet &&other)
{
    // OPTIMIZATION: the usual case, in which the place goes over as it is.
    if (other.m_objects == 0 && other.m_place != nullptr && m_place == nullptr) {
        AttributeSet taken;
        std::swap(taken.m_shared, other.m_shared);
        insert(taken);
        const AttributeNameMask names = other.m_place->names;
        if (m_place == nullptr && !mayHave(names)) {
            m_place = std::exchange(other.m_place, nullptr);
            return;
        }
    }
    insert(std::as_const(other));
}

void AttributeSet::insertPlace(Place *&place, Place *other)
{
    if (place == nullptr) {
        place = retained(other);
        return;
    }
    ownPlace(place, other->count);
    for (const AttributeEntry &entry : other->entries()) {
        insertIntoPlace(place, entry.name, entry.value);
    }
}

void AttributeSet::remove(const NSAttributeName &name)
{
    const quint16 index = name.index();
    removeFromShared(index);
    removeFromPlaces(index);
}

void AttributeSet::remove(const AttributeNameList &names)
{
    for (const NSAttributeName &name : names.names) {
        if (m_shared != nullptr && m_shared->names.intersects(name.mask())) {
            removeFromShared(name.index());
        }
    }
    removeFromPlaces(names);
}

AttributeSet AttributeSet::replacing(std::span<const NSAttributeName> names, const AttributeValue &value) const
{
    QUIB_ASSERT(m_place != nullptr && !value.isNumber() && !value.isObject() && !value.isNothing());
    AttributeSet copy;
    copy.m_shared = m_shared;
    copy.setObjects(retained(objects()));
    // OPTIMIZATION: made in one go, rather than copied and then written to name by name.
    copy.m_place = newPlace(m_place->count);
    const AttributeNameList replaced(names);
    for (const AttributeEntry &entry : m_place->entries()) {
        const bool isReplaced = replaced.contains(entry.name);
        new (copy.m_place->data() + copy.m_place->count++) AttributeEntry{entry.name, isReplaced ? value : entry.value};
    }
    copy.m_place->names = m_place->names;
    return copy;
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
        const auto removeFrom = [other](Place *&place) {
            for (const AttributeEntry &entry : other->entries) {
                removeFromPlace(place, entry.name);
            }
        };
        if (m_place != nullptr && m_place->names.intersects(other->names)) {
            removeFrom(m_place);
        }
        if (m_objects != 0 && objects()->names.intersects(other->names)) {
            changeObjects(removeFrom);
        }
        return;
    }
    for (const AttributeEntry &entry : other->entries) {
        removeFromShared(entry.name);
        changeObjects([&entry](Place *&objects) { removeFromPlace(objects, entry.name); });
        insertIntoPlace(m_place, entry.name, entry.value);
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
            insertIntoPlace(m_place, entry.name, entry.value);
        }
    }
}

AttributeSet::Place *AttributeSet::newPlace(size_t capacity)
{
    static_assert(sizeof(Place) % alignof(AttributeEntry) == 0 && alignof(Place) >= alignof(AttributeEntry));
    // The address tells the class of an object in its lowest bits.
    static_assert(__STDCPP_DEFAULT_NEW_ALIGNMENT__ > kClassNumbers);
    auto *place = new (::operator new(sizeof(Place) + capacity * sizeof(AttributeEntry))) Place;
    place->capacity = static_cast<quint16>(capacity);
    return place;
}

void AttributeSet::deletePlace(Place *place) noexcept
{
    std::destroy_n(place->data(), place->count);
    place->~Place();
    ::operator delete(place);
}

void AttributeSet::ownPlace(Place *&place, size_t room)
{
    if (place == nullptr) {
        place = newPlace(room);
        return;
    }
    const bool isOwn = place->references.load(std::memory_order_acquire) == 1;
    if (isOwn && size_t(place->capacity) - place->count >= room) {
        return;
    }
    auto *other = newPlace(place->count + room);
    if (isOwn) {
        std::uninitialized_move_n(place->data(), place->count, other->data());
    } else {
        std::uninitialized_copy_n(place->data(), place->count, other->data());
    }
    other->count = place->count;
    other->names = place->names;
    release(std::exchange(place, other));
}

void AttributeSet::insertIntoPlace(Place *&place, quint16 name, AttributeValue value)
{
    const std::span<const AttributeEntry> before = entriesOf(place);
    const auto index = std::ranges::lower_bound(before, name, {}, &AttributeEntry::name) - before.begin();
    const bool isKnown = index < std::ssize(before) && before[static_cast<size_t>(index)].name == name;
    ownPlace(place, isKnown ? 0 : 1);
    AttributeEntry *const entry = place->data() + index;
    if (isKnown) {
        // Another object's class may stay in the mask, which only has to hold what there is.
        entry->value = std::move(value);
    } else {
        AttributeEntry *const limit = place->data() + place->count;
        new (limit) AttributeEntry{name, std::move(value)};
        ++place->count;
        if (entry != limit) {
            std::rotate(entry, limit, limit + 1);
        }
    }
    place->names |= entry->mask();
}

template <typename Function> void AttributeSet::eraseEntries(Place *&place, const Function &isGone)
{
    const std::span<const AttributeEntry> entries = place->entries();
    const auto gone = static_cast<size_t>(std::ranges::count_if(entries, isGone));
    if (gone == 0) {
        return;
    }
    if (gone == entries.size()) {
        release(std::exchange(place, nullptr));
        return;
    }
    if (place->references.load(std::memory_order_acquire) == 1) {
        AttributeEntry *const limit = place->data() + place->count;
        std::destroy(std::remove_if(place->data(), limit, isGone), limit);
        place->count = static_cast<quint16>(place->count - gone);
    } else {
        auto *other = newPlace(entries.size() - gone);
        for (const AttributeEntry &entry : entries) {
            if (!isGone(entry)) {
                new (other->data() + other->count++) AttributeEntry(entry);
            }
        }
        release(std::exchange(place, other));
    }
    place->names = {};
    for (const AttributeEntry &entry : place->entries()) {
        place->names |= entry.mask();
    }
}

void AttributeSet::removeFromPlace(Place *&place, quint16 name)
{
    if (place != nullptr && place->names.intersects(AttributeNameMask::ofIndex(name))) {
        eraseEntries(place, [name](const AttributeEntry &entry) { return entry.name == name; });
    }
}

void AttributeSet::removeFromPlaces(quint16 name)
{
    removeFromPlace(m_place, name);
    if (m_objects != 0) {
        changeObjects([name](Place *&objects) { removeFromPlace(objects, name); });
    }
}

void AttributeSet::removeFromPlaces(const AttributeNameList &names)
{
    const auto isGone = [&names](const AttributeEntry &entry) { return names.contains(entry.name); };
    if (m_place != nullptr && m_place->names.intersects(names.mask)) {
        eraseEntries(m_place, isGone);
    }
    if (m_objects != 0 && objects()->names.intersects(names.mask)) {
        changeObjects([&isGone](Place *&objects) { eraseEntries(objects, isGone); });
    }
}

AttributeSet::Place *AttributeSet::placeWithout(Place *place, const AttributeNameList &names,
                                                const AttributeEntries *others)
{
    AttributeNameMask gone = names.mask;
    if (others != nullptr) {
        gone |= others->names;
    }
    if (place == nullptr || !place->names.intersects(gone)) {
        return retained(place);
    }
    // OPTIMIZATION: mostly all of a place goes, which its mask tells where it is exact, and nothing is copied.
    if (names.isMaskExact && place->names.isWithin(names.mask) &&
        place->entries().back().name < AttributeNameMask::kBitCount) {
        return nullptr;
    }
    const auto isGone = [&](const AttributeEntry &entry) {
        return names.contains(entry.name) || (others != nullptr && others->find(entry.name) != nullptr);
    };
    if (std::ranges::all_of(place->entries(), isGone)) {
        return nullptr;
    }
    Place *left = retained(place);
    eraseEntries(left, isGone);
    return left;
}

void AttributeSet::checkInvariants() const
{
    const auto check = [](std::span<const AttributeEntry> entries, AttributeNameMask told) {
        QUIB_REQUIRE(!entries.empty());
        const auto repeated = std::ranges::adjacent_find(entries, std::ranges::greater_equal(), &AttributeEntry::name);
        QUIB_REQUIRE(repeated == entries.end());
        AttributeNameMask names;
        for (const AttributeEntry &entry : entries) {
            names |= entry.mask();
        }
        AttributeNameMask all = told;
        all |= names;
        QUIB_REQUIRE(all == told);
        names.classes = told.classes;
        QUIB_REQUIRE(names == told);
    };
    if (m_shared != nullptr) {
        check(m_shared->entries, m_shared->names);
    }
    for (const Place *const place : {m_place, objects()}) {
        if (place != nullptr) {
            check(place->entries(), place->names);
            QUIB_REQUIRE(place->count <= place->capacity);
        }
    }
    for (const AttributeEntry &entry : entriesOf(m_place)) {
        QUIB_REQUIRE(m_shared == nullptr || m_shared->find(entry.name) == nullptr);
        QUIB_REQUIRE(!hasIdentity(entry.value));
    }
    for (const AttributeEntry &entry : entriesOf(objects())) {
        QUIB_REQUIRE(m_shared == nullptr || m_shared->find(entry.name) == nullptr);
        QUIB_REQUIRE(m_place == nullptr || m_place->find(entry.name) == nullptr);
        QUIB_REQUIRE(hasIdentity(entry.value));
    }
}

bool AttributeSet::hasSameEntries(const Place &a, const Place &b)
{
    return std::ranges::equal(a.entries(), b.entries(), [](const AttributeEntry &first, const AttributeEntry &second) {
        return first.name == second.name && first.value == second.value;
    });
}

bool AttributeSet::hasSameContent(const AttributeSet &a, const AttributeSet &b)
{
    const size_t count = a.sharedEntries().size() + entriesOf(a.m_place).size();
    if (count != b.sharedEntries().size() + entriesOf(b.m_place).size()) {
        return false;
    }
    const auto isInOther = [&b](const AttributeEntry &entry) {
        const AttributeValue *other = b.m_shared != nullptr ? b.m_shared->find(entry.name) : nullptr;
        if (other == nullptr && b.m_place != nullptr) {
            other = b.m_place->find(entry.name);
        }
        return other != nullptr && *other == entry.value;
    };
    return std::ranges::all_of(a.sharedEntries(), isInOther) && std::ranges::all_of(entriesOf(a.m_place), isInOther);
}

} // namespace quib
