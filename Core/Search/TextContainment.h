#pragma once

#include <Store/PredicateNode.h>

namespace quib {

/// Whether a condition is the search language's plain term: text CONTAINS[cd] "...".
[[nodiscard]] bool isTextContainment(const PredicateNode &node);
/// Requires: isTextContainment.
[[nodiscard]] QString termOfTextContainment(const PredicateNode &node);

} // namespace quib
