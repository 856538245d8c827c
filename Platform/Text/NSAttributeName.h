#pragma once

#include <QString>
#include <QStringView>

#include <atomic>
#include <cstddef>
#include <typeinfo>

namespace quib {

/// Which names a set of attributes may hold: one bit a name, names that are 128 apart share theirs; and of which
/// classes the objects with identity among its values may be: one bit a class, which others may share. A value.
struct AttributeNameMask
{
    /// So many names have bits of their own.
    static constexpr quint16 kBitCount = 128;

    quint64 low = 0;
    quint64 high = 0;
    quint64 classes = 0;

    [[nodiscard]] static constexpr AttributeNameMask ofIndex(quint16 index)
    {
        const quint64 bit = quint64(1) << (index & 63);
        return (index & 64) == 0 ? AttributeNameMask{bit, 0, 0} : AttributeNameMask{0, bit, 0};
    }
    [[nodiscard]] static AttributeNameMask ofClass(const std::type_info &type);
    [[nodiscard]] constexpr bool hasClassesOnly() const { return (low | high) == 0; }
    /// False only when no name and no class is in both.
    [[nodiscard]] constexpr bool intersects(AttributeNameMask other) const
    {
        return ((low & other.low) | (high & other.high) | (classes & other.classes)) != 0;
    }
    /// Whether each name's bit is in the other too.
    [[nodiscard]] constexpr bool isWithin(AttributeNameMask other) const
    {
        return ((low & ~other.low) | (high & ~other.high)) == 0;
    }
    constexpr AttributeNameMask &operator|=(AttributeNameMask other)
    {
        low |= other.low;
        high |= other.high;
        classes |= other.classes;
        return *this;
    }
    friend constexpr bool operator==(AttributeNameMask a, AttributeNameMask b) = default;

private:
    [[nodiscard]] static quint64 bitOfClass(const std::type_info &type);
};

} // namespace quib

/// The name of an attribute of a text. A value; names are compared by a small index that each gets at its first use.
/// One made from a literal is a constant, so that modules declare theirs as `inline constinit const NSAttributeName`.
/// Any thread.
class NSAttributeName
{
public:
    template <std::size_t Size>
    consteval NSAttributeName(const char16_t (&literal)[Size])
        : m_text(literal)
        , m_size(static_cast<quint32>(Size - 1))
    {
    }
    /// For names made at run time. They are kept for the life of the process.
    explicit NSAttributeName(const QString &name);
    NSAttributeName(const NSAttributeName &other)
        : m_text(other.m_text)
        , m_size(other.m_size)
        , m_number(other.m_number.load(std::memory_order_relaxed))
    {
    }
    NSAttributeName &operator=(const NSAttributeName &other)
    {
        m_text = other.m_text;
        m_size = other.m_size;
        m_number.store(other.m_number.load(std::memory_order_relaxed), std::memory_order_relaxed);
        return *this;
    }
    [[nodiscard]] static NSAttributeName nameOfIndex(quint16 index);

    [[nodiscard]] QString string() const { return QStringView(m_text, m_size).toString(); }
    [[nodiscard]] quint16 index() const
    {
        const quint16 number = m_number.load(std::memory_order_relaxed);
        return static_cast<quint16>((number != 0 ? number : registeredNumber()) - 1);
    }
    [[nodiscard]] quib::AttributeNameMask mask() const { return quib::AttributeNameMask::ofIndex(index()); }

    friend bool operator==(const NSAttributeName &a, const NSAttributeName &b) { return a.index() == b.index(); }
    friend size_t qHash(const NSAttributeName &name, size_t seed = 0) { return name.index() ^ seed; }

private:
    NSAttributeName(QStringView text, quint16 number)
        : m_text(text.utf16())
        , m_size(static_cast<quint32>(text.size()))
        , m_number(number)
    {
    }
    [[nodiscard]] quint16 registeredNumber() const;

    /// Lives as long as the process.
    const char16_t *m_text;
    quint32 m_size;
    /// The index and one; 0 until it is asked for.
    mutable std::atomic<quint16> m_number{0};
};

inline constinit const NSAttributeName NSFontAttributeName{u"NSFont"};
inline constinit const NSAttributeName NSForegroundColorAttributeName{u"NSColor"};
inline constinit const NSAttributeName NSBackgroundColorAttributeName{u"NSBackgroundColor"};
inline constinit const NSAttributeName NSParagraphStyleAttributeName{u"NSParagraphStyle"};
inline constinit const NSAttributeName NSLinkAttributeName{u"NSLink"};
inline constinit const NSAttributeName NSUnderlineStyleAttributeName{u"NSUnderline"};
inline constinit const NSAttributeName NSUnderlineColorAttributeName{u"NSUnderlineColor"};
inline constinit const NSAttributeName NSStrikethroughStyleAttributeName{u"NSStrikethrough"};
inline constinit const NSAttributeName NSStrikethroughColorAttributeName{u"NSStrikethroughColor"};
inline constinit const NSAttributeName NSBaselineOffsetAttributeName{u"NSBaselineOffset"};
inline constinit const NSAttributeName NSKernAttributeName{u"NSKern"};
inline constinit const NSAttributeName NSAttachmentAttributeName{u"NSAttachment"};
