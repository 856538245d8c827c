#pragma once

#include <Foundation/NSRange.h>

#include <QStringView>

/// The two tag forms, tried at one place of a text whose ends count as line ends.
namespace quib::tags {

/// The length of the tag of the closed form at position, where a hash stands; 0 when there is none. nextHash is the
/// place of the next hash behind position, or the text's size.
[[nodiscard]] qint64 lengthOfClosedTagAt(QStringView text, qint64 position, qint64 nextHash);
/// The same for the single form.
[[nodiscard]] qint64 lengthOfSingleTagAt(QStringView text, qint64 position);

} // namespace quib::tags
