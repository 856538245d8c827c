#pragma once

#include <QHashFunctions>

#include <cstddef>
#include <type_traits>
#include <utility>

namespace quib {

/// A counted reference to a managed object; null by default. Holding one keeps the object alive and unique in its
/// context. Copied and dropped on the context's queue only, but for the last drop after the context died.
template <typename T> class Ref
{
public:
    Ref() = default;
    Ref(std::nullptr_t) {}
    explicit Ref(T *object)
        : m_object(object)
    {
        if (m_object != nullptr) {
            m_object->retain();
        }
    }
    Ref(const Ref &other)
        : Ref(other.m_object)
    {
    }
    Ref(Ref &&other) noexcept
        : m_object(std::exchange(other.m_object, nullptr))
    {
    }
    template <typename U>
    requires std::is_convertible_v<U *, T *> Ref(const Ref<U> &other)
        : Ref(other.get())
    {
    }
    Ref &operator=(Ref other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~Ref()
    {
        if (m_object != nullptr) {
            m_object->release();
        }
    }

    [[nodiscard]] T *get() const { return m_object; }
    [[nodiscard]] T *operator->() const { return m_object; }
    [[nodiscard]] T &operator*() const { return *m_object; }
    [[nodiscard]] explicit operator bool() const { return m_object != nullptr; }
    friend bool operator==(const Ref &a, const Ref &b) = default;
    friend bool operator==(const Ref &a, std::nullptr_t) { return a.m_object == nullptr; }
    friend size_t qHash(const Ref &reference, size_t seed = 0) { return ::qHash(reference.m_object, seed); }

    /// The same object seen as a subclass, or null where it is none.
    template <typename U> [[nodiscard]] Ref<U> as() const { return Ref<U>(dynamic_cast<U *>(m_object)); }

    /// The same object seen as the subclass that it is known to be; the reference moves there.
    template <typename U> [[nodiscard]] Ref<U> moveTo() &&
    {
        Ref<U> moved;
        moved.m_object = static_cast<U *>(std::exchange(m_object, nullptr));
        return moved;
    }

private:
    template <typename U> friend class Ref;
    T *m_object = nullptr;
};

} // namespace quib
