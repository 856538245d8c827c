#include "ObjectList.h"

#include <Foundation/Assert.h>

#include <algorithm>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace quib {
namespace {

ptrdiff_t toOffset(size_t index)
{
    return static_cast<ptrdiff_t>(index);
}

// OPTIMIZATION: sixteen comparisons between two branches find the stretch that holds a pointer; what is left at the end
// of the list is looked at one by one. Gives the start of the stretch.
constexpr size_t kStretch = 16;

size_t firstStretchPlain(std::span<NSManagedObject *const> list, const NSManagedObject *object)
{
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
    return at;
}

#if defined(__x86_64__)

__attribute__((target("avx2"))) size_t firstStretchWide(std::span<NSManagedObject *const> list,
                                                        const NSManagedObject *object)
{
    const __m256i wanted = _mm256_set1_epi64x(reinterpret_cast<qintptr>(object));
    size_t at = 0;
    for (; at + kStretch <= list.size(); at += kStretch) {
        const auto *places = reinterpret_cast<const __m256i *>(list.data() + at);
        const __m256i first = _mm256_or_si256(_mm256_cmpeq_epi64(_mm256_loadu_si256(places), wanted),
                                              _mm256_cmpeq_epi64(_mm256_loadu_si256(places + 1), wanted));
        const __m256i second = _mm256_or_si256(_mm256_cmpeq_epi64(_mm256_loadu_si256(places + 2), wanted),
                                               _mm256_cmpeq_epi64(_mm256_loadu_si256(places + 3), wanted));
        const __m256i any = _mm256_or_si256(first, second);
        if (_mm256_testz_si256(any, any) == 0) {
            break;
        }
    }
    return at;
}

size_t firstStretch(std::span<NSManagedObject *const> list, const NSManagedObject *object)
{
    return __builtin_cpu_supports("avx2") != 0 ? firstStretchWide(list, object) : firstStretchPlain(list, object);
}

#else

size_t firstStretch(std::span<NSManagedObject *const> list, const NSManagedObject *object)
{
    return firstStretchPlain(list, object);
}

#endif

} // namespace

std::optional<size_t> indexOfObject(std::span<NSManagedObject *const> list, const NSManagedObject *object)
{
    const size_t start = firstStretch(list, object);
    const auto found = std::find(list.begin() + toOffset(start), list.end(), object);
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
        retain(one.object);
    }
    std::vector<NSManagedObject *> gone;
    gone.reserve(removed.size());
    for (const size_t index : removed) {
        gone.push_back(m_objects[index]);
    }
    // Stretches move towards the front over what is taken out, then towards the back from their end on to make room:
    // plain pointers, so each is one move of memory.
    size_t end = removed.empty() ? m_objects.size() : removed[0];
    for (size_t i = 0; i < removed.size(); ++i) {
        const size_t start = removed[i] + 1;
        const size_t limit = i + 1 < removed.size() ? removed[i + 1] : m_objects.size();
        std::copy(m_objects.begin() + toOffset(start), m_objects.begin() + toOffset(limit),
                  m_objects.begin() + toOffset(end));
        end += limit - start;
    }
    m_objects.resize(end + placed.size());
    size_t limit = m_objects.size(); // of what is still to fill
    for (size_t i = placed.size(); i > 0; --i) {
        const ObjectList::Placed &one = placed[i - 1];
        const size_t count = limit - one.index - 1;
        QUIB_ASSERT(one.index < limit && count <= end);
        std::copy_backward(m_objects.begin() + toOffset(end - count), m_objects.begin() + toOffset(end),
                           m_objects.begin() + toOffset(limit));
        end -= count;
        m_objects[one.index] = one.object;
        limit = one.index;
    }
    for (size_t i = 0; i < gone.size() && !m_isBorrowing; ++i) {
        gone[i]->release();
    }
}

} // namespace quib
