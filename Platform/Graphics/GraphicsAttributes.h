#pragma once

#include "NSColor.h"
#include "NSFont.h"

#include <Text/AttributeValue.h>

#include <utility>

namespace quib {

/// A colour as the value of a text attribute. A value kind: texts keep one of the equal ones.
class ColorAttribute : public AttributeObject
{
public:
    using KindBase = ColorAttribute;
    static constexpr Kind kKind = Kind::Color;

    explicit ColorAttribute(const NSColor &color)
        : m_color(color)
    {
    }
    [[nodiscard]] const NSColor &color() const { return m_color; }

    [[nodiscard]] Kind kind() const final { return kKind; }
    [[nodiscard]] bool isShareable() const final { return true; }
    [[nodiscard]] bool isEqual(const AttributeObject &other) const final;
    [[nodiscard]] size_t hash() const final;

private:
    const NSColor m_color;
};

/// A font as the value of a text attribute. A value kind, as ColorAttribute.
class FontAttribute : public AttributeObject
{
public:
    using KindBase = FontAttribute;
    static constexpr Kind kKind = Kind::Font;

    explicit FontAttribute(NSFont font)
        : m_font(std::move(font))
    {
    }
    [[nodiscard]] const NSFont &font() const { return m_font; }

    [[nodiscard]] Kind kind() const final { return kKind; }
    [[nodiscard]] bool isShareable() const final { return true; }
    [[nodiscard]] bool isEqual(const AttributeObject &other) const final;
    [[nodiscard]] size_t hash() const final;

private:
    const NSFont m_font;
};

[[nodiscard]] AttributeValue attributeValue(const NSColor &color);
[[nodiscard]] AttributeValue attributeValue(const NSFont &font);

/// The colour of an attribute, or null where its value is none. Valid while the value, or the text that holds it, is.
[[nodiscard]] const NSColor *colorOfAttribute(const AttributeValue &value);
/// The font of an attribute, as colorOfAttribute.
[[nodiscard]] const NSFont *fontOfAttribute(const AttributeValue &value);

} // namespace quib
