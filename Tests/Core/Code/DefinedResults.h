#pragma once

#include <Code/QBCodeLanguageDetector.h>

namespace quib::tests {

/// The points as the expression engine gives them, checker by checker and line by line.
[[nodiscard]] QBCodeLanguageDetector::ResultArray definedResults(const QList<QStringView> &lines);

} // namespace quib::tests
