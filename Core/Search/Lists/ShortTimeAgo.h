#pragma once

#include <Foundation/NSDate.h>

#include <QString>

namespace quib {

/// How long ago an instant was, in one short word of the user's language: "now", "5m", "3h", "2d", "4w", "3M", "2y".
/// Each unit begins where one of it is full and is cut, not rounded; a month is the twelfth part of a year. What lies
/// ahead is "now".
[[nodiscard]] QString shortTimeAgoSinceNow(NSDate date);

} // namespace quib
