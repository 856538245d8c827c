#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>

namespace quib {

/// The symbols of the interface: line drawings of one colour, drawn sharply at any scale. Without state but for what
/// was drawn already. Queue: main.

/// Whether there is a symbol of that name.
[[nodiscard]] bool hasSymbol(const QString &name);

/// A symbol in a colour; an empty picture for a name that there is none of.
/// Units:   size in points; the picture has scale pixels to a point.
[[nodiscard]] QPixmap symbol(const QString &name, const QColor &color, int size, double scale);

/// The same as an icon that follows the theme: drawn in the colour that the theme has for the key at the time.
[[nodiscard]] QIcon symbolIcon(const QString &name, const QString &colorKey = QStringLiteral("Panel Icon Color"),
                               const QString &activeColorKey = QStringLiteral("Panel Icon Active Color"));

} // namespace quib
