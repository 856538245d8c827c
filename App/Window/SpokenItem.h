#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QAbstractItemView;
QT_END_NAMESPACE

namespace quib {

/// Tells assistive programs which entry of a list is the current one, once the list has got the keyboard: the toolkit
/// tells of the list alone. To be called when the keyboard comes.
void tellCurrentItem(QAbstractItemView &view);

} // namespace quib
