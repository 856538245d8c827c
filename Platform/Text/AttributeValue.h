#pragma once

#include <QString>
#include <QUrl>

#include <atomic>
#include <concepts>
#include <memory>
#include <type_traits>
#include <utility>
#include <variant>

namespace quib {

class AttributeTable;

/// What can stand under an attribute's name besides numbers, texts and URLs: a colour, a font, a paragraph style, an
/// attachment. A kind whose objects are values (equal ones are interchangeable) has no setters and overrides
/// isShareable, isEqual and hash; texts then keep one of the equal objects for the life of the process. All others have
/// identity. Value kinds may be used on any thread.
class AttributeObject
{
public:
    enum class Kind : quint8
    {
        Color,
        Font,
        ParagraphStyle,
        Attachment,
        Other,
    };

    AttributeObject &operator=(const AttributeObject &) = delete;
    virtual ~AttributeObject();

    [[nodiscard]] virtual Kind kind() const = 0;
    /// True for value kinds.
    [[nodiscard]] virtual bool isShareable() const { return false; }
    /// Requires: other is of the same kind.
    [[nodiscard]] virtual bool isEqual(const AttributeObject &other) const { return this == &other; }
    [[nodiscard]] virtual size_t hash() const { return std::hash<const AttributeObject *>()(this); }

protected:
    AttributeObject() = default;
    /// The copy has an identity of its own.
    AttributeObject(const AttributeObject &) {}

private:
    friend class AttributeTable;
    /// The equal object that the attribute table keeps; null until it was asked for. Written by the table only.
    mutable std::atomic<AttributeObject *> m_twin{nullptr};
};

/// The value of an attribute: nothing, a number, a text, a URL or an object. A value; equal numbers are equal whatever
/// type they came from, a boolean being 0 or 1.
class AttributeValue
{
public:
    AttributeValue() = default;
    template <std::integral Number>
    AttributeValue(Number value)
        : m_value(static_cast<qint64>(value))
    {
    }
    AttributeValue(double value);
    AttributeValue(const QString &value)
        : m_value(value)
    {
    }
    AttributeValue(const QUrl &value)
        : m_value(value)
    {
    }
    /// A null pointer is nothing.
    template <std::derived_from<AttributeObject> T> AttributeValue(std::shared_ptr<T> object)
    {
        if (object != nullptr) {
            m_value = std::shared_ptr<AttributeObject>(std::move(object));
        }
    }

    [[nodiscard]] bool isNothing() const { return std::holds_alternative<std::monostate>(m_value); }
    [[nodiscard]] explicit operator bool() const { return !isNothing(); }
    [[nodiscard]] bool isInteger() const { return std::holds_alternative<qint64>(m_value); }
    [[nodiscard]] bool isNumber() const { return isInteger() || std::holds_alternative<double>(m_value); }
    [[nodiscard]] bool isString() const { return std::holds_alternative<QString>(m_value); }
    [[nodiscard]] bool isUrl() const { return std::holds_alternative<QUrl>(m_value); }
    [[nodiscard]] bool isObject() const { return std::holds_alternative<std::shared_ptr<AttributeObject>>(m_value); }

    /// True for a number other than 0.
    [[nodiscard]] bool boolValue() const;
    /// 0 where there is no number; a fraction is cut off.
    [[nodiscard]] qint64 integerValue() const;
    [[nodiscard]] double doubleValue() const;
    /// Empty where there is no text.
    [[nodiscard]] QString stringValue() const;
    /// Empty where there is no URL.
    [[nodiscard]] QUrl urlValue() const;
    /// Null where there is no object.
    [[nodiscard]] std::shared_ptr<AttributeObject> objectValue() const;
    /// The object as a T, or null where it is none. Valid while the value, or the text that holds it, is.
    template <std::derived_from<AttributeObject> T> [[nodiscard]] T *as() const
    {
        const auto *object = std::get_if<std::shared_ptr<AttributeObject>>(&m_value);
        return object == nullptr ? nullptr : cast<T>(object->get());
    }
    /// The same as an owner.
    template <std::derived_from<AttributeObject> T> [[nodiscard]] std::shared_ptr<T> sharedAs() const
    {
        const auto *object = std::get_if<std::shared_ptr<AttributeObject>>(&m_value);
        T *const found = object == nullptr ? nullptr : cast<T>(object->get());
        return found == nullptr ? nullptr : std::shared_ptr<T>(*object, found);
    }

    friend bool operator==(const AttributeValue &a, const AttributeValue &b);
    friend size_t qHash(const AttributeValue &value, size_t seed) noexcept;

private:
    friend class AttributeTable;

    /// A class that is the base of its kind declares `using KindBase = itself` and `kKind`: those are told apart
    /// without a dynamic cast.
    template <typename T> [[nodiscard]] static T *cast(AttributeObject *object)
    {
        if constexpr (requires { typename T::KindBase; }) {
            if constexpr (std::is_same_v<typename T::KindBase, T>) {
                return object->kind() == T::kKind ? static_cast<T *>(object) : nullptr;
            }
        }
        return dynamic_cast<T *>(object);
    }

    /// A double here is never a whole number that fits an integer.
    std::variant<std::monostate, qint64, double, QString, QUrl, std::shared_ptr<AttributeObject>> m_value;
};

} // namespace quib
