#pragma once

#include <Graphics/GraphicsAttributes.h>

#include <optional>

namespace quib {

/// A theme's colour as the value of an attribute; nothing where the theme has none.
[[nodiscard]] inline AttributeValue colorValue(const std::optional<NSColor> &color)
{
    return color ? attributeValue(*color) : AttributeValue();
}
/// What makes a line under or through a text invisible while it keeps its room.
[[nodiscard]] inline AttributeValue invisibleColorValue()
{
    return attributeValue(NSColor::colorWithWhite(1, 0));
}

} // namespace quib
