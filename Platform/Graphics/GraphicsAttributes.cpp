#include "GraphicsAttributes.h"

namespace quib {

bool ColorAttribute::isEqual(const AttributeObject &other) const
{
    return m_color == static_cast<const ColorAttribute &>(other).m_color;
}

size_t ColorAttribute::hash() const
{
    return qHash(m_color);
}

bool FontAttribute::isEqual(const AttributeObject &other) const
{
    return m_font == static_cast<const FontAttribute &>(other).m_font;
}

size_t FontAttribute::hash() const
{
    return qHash(m_font);
}

AttributeValue attributeValue(const NSColor &color)
{
    return std::make_shared<ColorAttribute>(color);
}

AttributeValue attributeValue(const NSFont &font)
{
    return std::make_shared<FontAttribute>(font);
}

const NSColor *colorOfAttribute(const AttributeValue &value)
{
    const auto *attribute = value.as<ColorAttribute>();
    return attribute == nullptr ? nullptr : &attribute->color();
}

const NSFont *fontOfAttribute(const AttributeValue &value)
{
    const auto *attribute = value.as<FontAttribute>();
    return attribute == nullptr ? nullptr : &attribute->font();
}

} // namespace quib
