#pragma once

#include <QLatin1StringView>
#include <QString>
#include <QStringView>

#include <span>

namespace quib {

/// A font name as it is compared: lower case, without spaces and hyphens.
[[nodiscard]] QString foldedFontName(QStringView name);

/// The families that may stand in for one that the machine lacks, best first; empty for a name that is not known.
[[nodiscard]] std::span<const QLatin1StringView> fontStandIns(QStringView foldedName);

} // namespace quib
