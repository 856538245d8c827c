#pragma once

#include <Graphics/NSColor.h>

#include <QColor>
#include <QFont>
#include <QString>

namespace quib {

[[nodiscard]] QColor qColor(const NSColor &color);

/// The colour of the application's theme; magenta, which no theme has, where the theme lacks it. Queue: main.
[[nodiscard]] QColor themeColor(const QString &key);

/// The colour of a theme's line, made quieter where it only divides what space divides already; left as it is in a
/// theme that is all about contrast.
[[nodiscard]] QColor quietLineColor(const QString &key);

/// The fonts of the interface. Units: points, one to a pixel at scale 1.
[[nodiscard]] QFont interfaceFont(double size, bool isBold = false);

} // namespace quib
