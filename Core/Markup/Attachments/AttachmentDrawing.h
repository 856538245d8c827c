#pragma once

#include <Graphics/GraphicsContext.h>

#include <QString>

#include <optional>

namespace quib {

/// The theme's colour, or a grey that is seen on light and on dark where the theme has none.
[[nodiscard]] NSColor colorOrGray(const std::optional<NSColor> &color);

/// The box of a size in the middle of another one.
[[nodiscard]] QRectF centeredRect(const QRectF &inRect, QSizeF size);

/// The box in which a picture of a size fills another box as far as its ratio allows.
[[nodiscard]] QRectF fittedRect(const QRectF &inRect, QSizeF size);

/// A text in the middle of a box; the middle of a capital letter is its own.
void drawCenteredText(GraphicsContext &context, QStringView text, const QRectF &inRect, const NSFont &font,
                      const NSColor &color);

/// A file's name that is no wider than a width: what is too much goes from the middle, the extension stays.
[[nodiscard]] QString elidedFilename(const QString &filename, const NSFont &font, double width);

} // namespace quib
