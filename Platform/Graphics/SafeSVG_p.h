#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace quib {

/// Rewrites an SVG picture so that drawing it reaches for nothing and takes bounded work: no files, no scripts, no
/// motion, no declared entities, references that unfold into a bounded number of elements without a circle, and
/// embedded pictures of a bounded size that are made of pixels. Errors: nullopt with a reason for what is not well
/// formed, nests too deeply or unfolds into too much.
[[nodiscard]] std::optional<QByteArray> safeSVG(const QByteArray &svg, QString *reason);

} // namespace quib
