#pragma once

#include <Store/NSManagedObject.h>
#include <Store/Ref.h>

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace quib {

/// The place of an object in a list, by identity.
[[nodiscard]] std::optional<size_t> indexOfObject(std::span<NSManagedObject *const> list,
                                                  const NSManagedObject *object);

/// An array of managed objects that holds a reference to each, as a block of plain pointers: moving one object in a
/// list of many is one move of memory. A list of objects that another list holds may borrow them: of many, those that
/// a search finds are then listed without touching each. A value.
class ObjectList
{
public:
    ObjectList() = default;
    explicit ObjectList(std::span<NSManagedObject *const> objects)
        : m_objects(objects.begin(), objects.end())
    {
        retainAll();
    }
    /// Holds no references. Requires: whoever does takes no object out before it was taken out here, unless the change
    /// that names it still holds it.
    [[nodiscard]] static ObjectList borrowing(std::vector<NSManagedObject *> objects)
    {
        ObjectList list;
        list.m_objects = std::move(objects);
        list.m_isBorrowing = true;
        return list;
    }
    ObjectList(const ObjectList &other)
        : m_objects(other.m_objects)
        , m_isBorrowing(other.m_isBorrowing)
    {
        retainAll();
    }
    ObjectList(ObjectList &&other) noexcept
        : m_objects(std::exchange(other.m_objects, {}))
        , m_isBorrowing(other.m_isBorrowing)
    {
    }
    ObjectList &operator=(ObjectList other) noexcept
    {
        std::swap(m_objects, other.m_objects);
        std::swap(m_isBorrowing, other.m_isBorrowing);
        return *this;
    }
    ~ObjectList()
    {
        for (size_t i = 0; i < m_objects.size() && !m_isBorrowing; ++i) {
            m_objects[i]->release();
        }
    }

    [[nodiscard]] size_t size() const { return m_objects.size(); }
    [[nodiscard]] std::span<NSManagedObject *const> objects() const { return m_objects; }
    [[nodiscard]] NSManagedObject *operator[](size_t index) const { return m_objects[index]; }

    void reserve(size_t count) { m_objects.reserve(count); }
    void append(NSManagedObject *object)
    {
        retain(object);
        m_objects.push_back(object);
    }
    /// Moves one object; newIndex counts after it was taken out.
    void move(size_t index, size_t newIndex);
    /// Takes out the objects at the removed indexes, then puts in each placed object so that it stands at its index in
    /// the result. Both ascending. Copies each stretch between them once.
    struct Placed
    {
        NSManagedObject *object = nullptr;
        size_t index = 0;
    };
    void rearrange(std::span<const size_t> removed, std::span<const Placed> placed);

private:
    void retain(NSManagedObject *object) const
    {
        if (!m_isBorrowing) {
            object->retain();
        }
    }
    void retainAll()
    {
        for (size_t i = 0; i < m_objects.size() && !m_isBorrowing; ++i) {
            m_objects[i]->retain();
        }
    }

    std::vector<NSManagedObject *> m_objects;
    bool m_isBorrowing = false;
};

} // namespace quib
