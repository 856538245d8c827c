#pragma once

#include <QHash>
#include <QString>

#include <any>
#include <utility>

namespace quib {

/// Values made from a theme, of any type, by name: metrics, sizes, pictures. Its manager empties it when the theme or a
/// size changes. Queue: that of its manager.
class ThemeCache
{
public:
    /// Null where there is none, or it has another type. Valid until the cache changes.
    template <typename T> [[nodiscard]] const T *value(const QString &key) const
    {
        const auto found = m_values.constFind(key);
        return found == m_values.cend() ? nullptr : std::any_cast<T>(&*found);
    }
    template <typename T> void insert(const QString &key, T value) { m_values.insert(key, std::any(std::move(value))); }
    /// The value of that name, made and kept at the first asking.
    template <typename Make> [[nodiscard]] auto value(const QString &key, const Make &make) -> decltype(make())
    {
        using T = decltype(make());
        if (const T *known = value<T>(key)) {
            return *known;
        }
        T made = make(); // may ask for other values of this cache
        insert(key, made);
        return made;
    }
    [[nodiscard]] bool isEmpty() const { return m_values.isEmpty(); }
    void clear() { m_values.clear(); }

private:
    QHash<QString, std::any> m_values;
};

} // namespace quib
