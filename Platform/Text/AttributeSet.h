#pragma once

#include "AttributeValue.h"
#include "NSAttributeName.h"

#include <QTypeInfo>

#include <array>
#include <atomic>
#include <bit>
#include <initializer_list>
#include <new>
#include <span>
#include <utility>
#include <vector>

namespace quib {

struct AttributeEntry
{
    quint16 name = 0;
    AttributeValue value;

    /// The bit of its name, and that of its object's class where the object has identity.
    [[nodiscard]] AttributeNameMask mask() const;
};

/// Entries in the order of their names, as the table keeps them: immutable, for the life of the process.
struct AttributeEntries
{
    AttributeNameMask names;
    std::vector<AttributeEntry> entries;

    [[nodiscard]] const AttributeValue *find(quint16 name) const
    {
        if (names.intersects(AttributeNameMask::ofIndex(name))) {
            for (const AttributeEntry &entry : entries) {
                if (entry.name == name) {
                    return &entry.value;
                }
            }
        }
        return nullptr;
    }
};

/// Names that are taken away together. Holds a reference to them.
struct AttributeNameList
{
    explicit AttributeNameList(std::span<const NSAttributeName> list = {});
    [[nodiscard]] bool contains(quint16 name) const;

    std::span<const NSAttributeName> names;
    AttributeNameMask mask;
    /// Whether the mask tells which of the first names are in the list, and no other is.
    bool isMaskExact = true;
};

/// The attributes of a stretch of text: a dictionary from names to values. A value of three pointers; any thread.
///
/// What many places have in common (numbers, colours, fonts, paragraph styles) stands in one table for the process, and
/// the way from one set to the next by a value or a dictionary is remembered, so a change costs a look-up. What is
/// unique to a place (texts, URLs, and whatever is too various for the table) hangs beside it; and apart from that the
/// objects with identity, which outlive most changes around them.
class AttributeSet
{
public:
    struct Pair
    {
        NSAttributeName name;
        AttributeValue value;
    };

    AttributeSet() = default;
    AttributeSet(std::initializer_list<Pair> pairs);
    AttributeSet(const AttributeSet &other)
        : m_shared(other.m_shared)
        , m_place(retained(other.m_place))
        , m_objects(other.m_objects)
    {
        static_cast<void>(retained(objects()));
    }
    AttributeSet(AttributeSet &&other) noexcept
        : m_shared(std::exchange(other.m_shared, nullptr))
        , m_place(std::exchange(other.m_place, nullptr))
        , m_objects(std::exchange(other.m_objects, 0))
    {
    }
    AttributeSet &operator=(const AttributeSet &other)
    {
        AttributeSet copy(other);
        swap(copy);
        return *this;
    }
    AttributeSet &operator=(AttributeSet &&other) noexcept
    {
        swap(other);
        return *this;
    }
    ~AttributeSet()
    {
        release(m_place);
        release(objects());
    }
    void swap(AttributeSet &other) noexcept
    {
        std::swap(m_shared, other.m_shared);
        std::swap(m_place, other.m_place);
        std::swap(m_objects, other.m_objects);
    }

    [[nodiscard]] bool isEmpty() const { return m_shared == nullptr && hasNoPlace(); }
    [[nodiscard]] qint64 count() const;
    [[nodiscard]] bool contains(const NSAttributeName &name) const { return find(name) != nullptr; }
    /// Nothing where the set has no such name.
    [[nodiscard]] AttributeValue value(const NSAttributeName &name) const;
    /// Null where the set has no such name. Valid until this set changes.
    [[nodiscard]] const AttributeValue *find(const NSAttributeName &name) const
    {
        const quint16 index = name.index();
        const AttributeValue *value = m_shared != nullptr ? m_shared->find(index) : nullptr;
        if (value == nullptr && m_place != nullptr) {
            value = m_place->find(index);
        }
        return value == nullptr && m_objects != 0 ? objects()->find(index) : value;
    }
    /// Whether one of its values is an object with identity, as attachments are. Costs nothing.
    [[nodiscard]] bool hasObjects() const { return m_objects != 0; }
    /// The part that it has in common with other places; sets with the same one have the same values in it.
    [[nodiscard]] const AttributeEntries *shared() const { return m_shared; }
    /// May hold names that the set does not, never the other way round.
    [[nodiscard]] AttributeNameMask names() const
    {
        AttributeNameMask names = m_shared != nullptr ? m_shared->names : AttributeNameMask();
        if (m_place != nullptr) {
            names |= m_place->names;
        }
        if (m_objects != 0) {
            names |= objects()->names;
        }
        return names;
    }
    /// False only when the set has none of the names.
    [[nodiscard]] bool mayHave(AttributeNameMask names) const
    {
        // OPTIMIZATION: classes are told by the objects alone, and mostly without a look at them.
        if (names.hasClassesOnly()) {
            const quintptr number = m_objects & kClassNumbers;
            return number != 0 ? (names.classes >> (number - 1) & 1) != 0
                               : m_objects != 0 && objects()->names.intersects(names);
        }
        return (m_shared != nullptr && m_shared->names.intersects(names)) ||
               (m_place != nullptr && m_place->names.intersects(names)) ||
               (m_objects != 0 && objects()->names.intersects(names));
    }
    /// The names in no order that means anything, but the same in every equal set.
    [[nodiscard]] std::vector<NSAttributeName> allNames() const;

    /// Sets one value; nothing removes the name.
    void insert(const NSAttributeName &name, const AttributeValue &value);
    void insert(const NSAttributeName &name, AttributeValue &&value);
    /// Makes room for so many more values that are unique to a place: cheaper than to grow with each.
    /// Requires: at least one is inserted.
    void reserve(size_t values) { ownPlace(m_place, values); }
    /// Takes over every value of the other set.
    void insert(const AttributeSet &other);
    void insert(AttributeSet &&other);
    void remove(const NSAttributeName &name);
    void remove(const AttributeNameList &names);
    /// A copy in which one value, a text or a URL, stands under all these names. Requires: a text or a URL does in
    /// this.
    [[nodiscard]] AttributeSet replacing(std::span<const NSAttributeName> names, const AttributeValue &value) const;

    friend bool operator==(const AttributeSet &a, const AttributeSet &b)
    {
        // Each shared content exists once: two different ones are made equal only by what differs beside them.
        return (a.m_shared == b.m_shared ? isSamePlace(a.m_place, b.m_place)
                                         : a.m_place != b.m_place && hasSameContent(a, b)) &&
               isSamePlace(a.objects(), b.objects());
    }

    /// Requires that each name stands on one side only, in order, and that the masks are right; for tests.
    void checkInvariants() const;

private:
    friend class AttributeChange;

    /// The entries of one place, in the order of their names: one block of memory, counted, changed only while it has
    /// one owner.
    struct Place
    {
        std::atomic<int> references{1};
        quint16 count = 0;
        quint16 capacity = 0;
        AttributeNameMask names;

        [[nodiscard]] AttributeEntry *data() { return std::launder(reinterpret_cast<AttributeEntry *>(this + 1)); }
        [[nodiscard]] std::span<const AttributeEntry> entries() const
        {
            return {std::launder(reinterpret_cast<const AttributeEntry *>(this + 1)), count};
        }
        [[nodiscard]] const AttributeValue *find(quint16 name) const
        {
            if (names.intersects(AttributeNameMask::ofIndex(name))) {
                for (const AttributeEntry &entry : entries()) {
                    if (entry.name == name) {
                        return &entry.value;
                    }
                }
            }
            return nullptr;
        }
    };

    [[nodiscard]] bool hasNoPlace() const { return m_place == nullptr && m_objects == 0; }
    /// Null where it has no object with identity.
    [[nodiscard]] Place *objects() const { return reinterpret_cast<Place *>(m_objects & ~kClassNumbers); }
    void setObjects(Place *place)
    {
        const quint64 classes = place != nullptr ? place->names.classes : 0;
        const bool isOne = (classes & (classes - 1)) == 0 && classes != 0 && classes >> kClassNumbers == 0;
        m_objects = reinterpret_cast<quintptr>(place) |
                    (isOne ? static_cast<quintptr>(std::countr_zero(classes)) + 1 : quintptr(0));
    }
    /// Calls a function with the objects, which it may put others in the place of.
    template <typename Function> void changeObjects(const Function &change)
    {
        Place *place = objects();
        change(place);
        setObjects(place);
    }
    [[nodiscard]] std::span<const AttributeEntry> sharedEntries() const
    {
        return m_shared != nullptr ? std::span(m_shared->entries) : std::span<const AttributeEntry>();
    }
    [[nodiscard]] static std::span<const AttributeEntry> entriesOf(const Place *place)
    {
        return place != nullptr ? place->entries() : std::span<const AttributeEntry>();
    }
    [[nodiscard]] static Place *newPlace(size_t capacity);
    static void deletePlace(Place *place) noexcept;
    [[nodiscard]] static Place *retained(Place *place)
    {
        if (place != nullptr) {
            place->references.fetch_add(1, std::memory_order_relaxed);
        }
        return place;
    }
    static void release(Place *place) noexcept
    {
        if (place != nullptr && place->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            deletePlace(place);
        }
    }
    [[nodiscard]] static bool isSamePlace(const Place *a, const Place *b)
    {
        return a == b || (a != nullptr && b != nullptr && hasSameEntries(*a, *b));
    }
    [[nodiscard]] static bool hasSameEntries(const Place &a, const Place &b);
    [[nodiscard]] static bool hasSameContent(const AttributeSet &a, const AttributeSet &b);

    void removeFromShared(quint16 name);
    void insertShared(const AttributeEntries *other);
    /// True where there is nothing to insert, or the shared part has it now.
    [[nodiscard]] bool removeOrShare(const NSAttributeName &name, const AttributeValue &value);
    /// The value is a copy: it may have been one of this set's.
    void insertUnshared(quint16 name, AttributeValue value);
    void removeFromPlaces(quint16 name);
    void removeFromPlaces(const AttributeNameList &names);

    // Of one place, which may be null.

    /// Makes it this set's own, with room for more entries than it has.
    static void ownPlace(Place *&place, size_t room);
    static void insertIntoPlace(Place *&place, quint16 name, AttributeValue value);
    static void insertPlace(Place *&place, Place *other);
    static void removeFromPlace(Place *&place, quint16 name);
    /// A place without the entries of some names, and of those that another set has; null where none is left.
    [[nodiscard]] static Place *placeWithout(Place *place, const AttributeNameList &names,
                                             const AttributeEntries *others);
    /// Takes the entries away for which a function says so.
    template <typename Function> static void eraseEntries(Place *&place, const Function &isGone);

    /// Null where nothing is shared; never an empty set.
    const AttributeEntries *m_shared = nullptr;
    /// Null where the place has nothing of its own. No name stands on two sides.
    Place *m_place = nullptr;
    /// The address of the objects, which is a multiple of 16; and below it one more than the bit of their class, or 0
    /// where they are of several or of one that came late.
    static constexpr quintptr kClassNumbers = 15;
    quintptr m_objects = 0;
};

} // namespace quib

Q_DECLARE_TYPEINFO(quib::AttributeSet, Q_RELOCATABLE_TYPE);
