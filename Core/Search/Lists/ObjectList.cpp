#include "ObjectList.h"

#include <Foundation/Assert.h>

#include <algorithm>

namespace quib {

std::optional<size_t> indexOfObject(std::span<NSManagedObject *const> list, const NSManagedObject *object)
{
    // OPTIMIZATION: eight comparisons between two branches find the stretch, then the place in it.
    constexpr size_t kStretch = 8;
    size_t at = 0;
    for (; at + kStretch <= list.size(); at += kStretch) {
        bool isFound = false;
        for (size_t i = 0; i < kStretch; ++i) {
            isFound |= list[at + i] == object;
        }
        if (isFound) {
            break;
        }
    }
    const auto found = std::find(list.begin() + static_cast<ptrdiff_t>(at), list.end(), object);
    return found != list.end() ? std::optional(static_cast<size_t>(found - list.begin())) : std::nullopt;
}

void ObjectList::move(size_t index, size_t newIndex)
{
    NSManagedObject **objects = m_objects.data();
    NSManagedObject *moved = objects[index];
    // Plain pointers: both are one move of a block of memory.
    if (newIndex < index) {
        std::copy_backward(objects + newIndex, objects + index, objects + index + 1);
    } else {
        std::copy(objects + index + 1, objects + newIndex + 1, objects + index);
    }
    objects[newIndex] = moved;
}

void ObjectList::rearrange(std::span<const size_t> removed, std::span<const Placed> placed)
{
    if (removed.size() == 1 && placed.size() == 1 && m_objects[removed[0]] == placed[0].object) {
        move(removed[0], placed[0].index);
        return;
    }
    // Retained before anything is let go: an object that moves is in both.
    for (const Placed &one : placed) {
        one.object->retain();
    }
    std::vector<NSManagedObject *> gone;
    gone.reserve(removed.size());
    for (const size_t index : removed) {
        gone.push_back(m_objects[index]);
    }
    std::vector<NSManagedObject *> next;
    next.reserve(m_objects.size() - removed.size() + placed.size());
    size_t at = 0; // in m_objects
    auto nextRemoved = removed.begin();
    const auto copyUntil = [&](size_t limit) {
        while (next.size() < limit) {
            while (nextRemoved != removed.end() && at == *nextRemoved) {
                ++at;
                ++nextRemoved;
            }
            const size_t end = nextRemoved != removed.end() ? *nextRemoved : m_objects.size();
            QUIB_ASSERT(at < end);
            const size_t count = std::min(end - at, limit - next.size());
            next.insert(next.end(), m_objects.begin() + static_cast<ptrdiff_t>(at),
                        m_objects.begin() + static_cast<ptrdiff_t>(at + count));
            at += count;
        }
    };
    for (const Placed &one : placed) {
        copyUntil(one.index);
        next.push_back(one.object);
    }
    copyUntil(m_objects.size() - removed.size() + placed.size());
    m_objects.swap(next);
    for (NSManagedObject *object : gone) {
        object->release();
    }
}

} // namespace quib
