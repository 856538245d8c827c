#pragma once

#include <Text/NSMutableAttributedString.h>

#include <QString>

#include <map>
#include <vector>

namespace quib::tests {

/// An attributed text as it would be written down by hand: every unit with its own dictionary. Slow, and plain enough
/// to be right.
class AttributedStringModel
{
public:
    using Dictionary = std::map<quint16, AttributeValue>;
    struct Unit
    {
        char16_t unit = 0;
        Dictionary attributes;
        friend bool operator==(const Unit &a, const Unit &b) = default;
    };

    AttributedStringModel() = default;
    explicit AttributedStringModel(const NSAttributedString &string)
    {
        for (qint64 index = 0; index < string.length(); ++index) {
            m_units.push_back({string.characterAtIndex(index), dictionary(string.attributesAtIndex(index))});
        }
    }

    [[nodiscard]] static Dictionary dictionary(const AttributeSet &attributes)
    {
        Dictionary result;
        for (const NSAttributeName &name : attributes.allNames()) {
            result.emplace(name.index(), attributes.value(name));
        }
        return result;
    }
    [[nodiscard]] qint64 length() const { return static_cast<qint64>(m_units.size()); }
    [[nodiscard]] const Unit &at(qint64 index) const { return m_units[static_cast<size_t>(index)]; }
    [[nodiscard]] AttributeValue value(quint16 name, qint64 index) const
    {
        const Dictionary &attributes = at(index).attributes;
        const auto found = attributes.find(name);
        return found != attributes.end() ? found->second : AttributeValue();
    }

    template <typename Change> void change(NSRange range, const Change &change)
    {
        for (qint64 index = range.location; index < range.limit(); ++index) {
            change(m_units[static_cast<size_t>(index)].attributes);
        }
    }
    void replace(NSRange range, QStringView string)
    {
        Dictionary inherited;
        if (range.length > 0) {
            inherited = at(range.location).attributes;
        } else if (range.location > 0) {
            inherited = at(range.location - 1).attributes;
        } else if (length() > 0) {
            inherited = at(0).attributes;
        }
        std::vector<Unit> units;
        for (const QChar unit : string) {
            units.push_back({unit.unicode(), inherited});
        }
        replace(range, units);
    }
    void replace(NSRange range, const AttributedStringModel &other) { replace(range, std::vector(other.m_units)); }
    [[nodiscard]] AttributedStringModel part(NSRange range) const
    {
        AttributedStringModel result;
        const auto first = m_units.begin() + range.location;
        result.m_units.assign(first, first + range.length);
        return result;
    }
    /// The longest range of one value around a place, within a range.
    [[nodiscard]] NSRange longestRange(quint16 name, qint64 index, NSRange inRange) const
    {
        qint64 start = index;
        qint64 limit = index + 1;
        while (start > inRange.location && value(name, start - 1) == value(name, index)) {
            --start;
        }
        while (limit < inRange.limit() && value(name, limit) == value(name, index)) {
            ++limit;
        }
        return {start, limit - start};
    }

    friend bool operator==(const AttributedStringModel &a, const AttributedStringModel &b) = default;

private:
    void replace(NSRange range, const std::vector<Unit> &units)
    {
        const auto first = m_units.begin() + range.location;
        const auto place = m_units.erase(first, first + range.length);
        m_units.insert(place, units.begin(), units.end());
    }

    std::vector<Unit> m_units;
};

} // namespace quib::tests
