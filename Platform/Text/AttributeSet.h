#pragma once

#include "AttributeValue.h"
#include "NSAttributeName.h"

#include <QTypeInfo>

#include <array>
#include <atomic>
#include <initializer_list>
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

/// Entries in the order of their names. The table's sets are immutable and live as long as the process; those of one
/// place are counted and change only while they have one owner.
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

/// The attributes of a stretch of text: a dictionary from names to values. A value of two pointers; any thread.
///
/// What many places have in common (numbers, colours, fonts, paragraph styles) stands in one table for the process, and
/// the way from one set to the next by a value or a dictionary is remembered, so a change costs a look-up. What is
/// unique to a place (texts, URLs, objects with identity, and whatever is too various for the table) hangs beside it.
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
        , m_place(other.m_place)
    {
        if (m_place != nullptr) {
            m_place->references.fetch_add(1, std::memory_order_relaxed);
        }
    }
    AttributeSet(AttributeSet &&other) noexcept
        : m_shared(std::exchange(other.m_shared, nullptr))
        , m_place(std::exchange(other.m_place, nullptr))
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
        if (m_place != nullptr) {
            release(m_place);
        }
    }
    void swap(AttributeSet &other) noexcept
    {
        std::swap(m_shared, other.m_shared);
        std::swap(m_place, other.m_place);
    }

    [[nodiscard]] bool isEmpty() const { return m_shared == nullptr && m_place == nullptr; }
    [[nodiscard]] qint64 count() const;
    [[nodiscard]] bool contains(const NSAttributeName &name) const { return find(name) != nullptr; }
    /// Nothing where the set has no such name.
    [[nodiscard]] AttributeValue value(const NSAttributeName &name) const;
    /// Null where the set has no such name. Valid until this set changes.
    [[nodiscard]] const AttributeValue *find(const NSAttributeName &name) const
    {
        const quint16 index = name.index();
        const AttributeValue *value = m_shared != nullptr ? m_shared->find(index) : nullptr;
        return value == nullptr && m_place != nullptr ? m_place->content.find(index) : value;
    }
    /// May hold names that the set does not, never the other way round.
    [[nodiscard]] AttributeNameMask names() const
    {
        AttributeNameMask names = m_shared != nullptr ? m_shared->names : AttributeNameMask();
        if (m_place != nullptr) {
            names |= m_place->content.names;
        }
        return names;
    }
    /// The names in no order that means anything, but the same in every equal set.
    [[nodiscard]] std::vector<NSAttributeName> allNames() const;

    /// Sets one value; nothing removes the name.
    void insert(const NSAttributeName &name, const AttributeValue &value);
    /// Takes over every value of the other set.
    void insert(const AttributeSet &other);
    void remove(const NSAttributeName &name);

    friend bool operator==(const AttributeSet &a, const AttributeSet &b)
    {
        return a.m_shared == b.m_shared ? a.m_place == b.m_place || hasSamePlace(a, b) : hasSameContent(a, b);
    }

    /// Requires that each name stands on one side only, in order, and that the masks are right; for tests.
    void checkInvariants() const;

private:
    struct Place
    {
        std::atomic<int> references{1};
        AttributeEntries content;
    };

    /// Either may be null.
    [[nodiscard]] std::array<const AttributeEntries *, 2> sides() const
    {
        return {m_shared, m_place != nullptr ? &m_place->content : nullptr};
    }
    static void release(Place *place) noexcept;
    [[nodiscard]] static bool hasSamePlace(const AttributeSet &a, const AttributeSet &b);
    [[nodiscard]] static bool hasSameContent(const AttributeSet &a, const AttributeSet &b);
    void insertIntoPlace(quint16 name, const AttributeValue &value);
    void removeFromPlace(quint16 name);
    void removeFromShared(quint16 name);
    void insertShared(const AttributeEntries *other);
    /// The place's entries for writing: made, or copied where others see them.
    [[nodiscard]] AttributeEntries &ownPlace();

    /// Null where nothing is shared; never an empty set.
    const AttributeEntries *m_shared = nullptr;
    /// Null where the place has nothing of its own. No name stands on both sides.
    Place *m_place = nullptr;
};

} // namespace quib

Q_DECLARE_TYPEINFO(quib::AttributeSet, Q_RELOCATABLE_TYPE);
