#pragma once

#include <QUrl>

#include <functional>

QT_BEGIN_NAMESPACE
class QObject;
QT_END_NAMESPACE

namespace quib {

/// Has the desktop's file manager show a file among the others of its folder. Where there is none that can, the
/// fallback is called, now or later, unless its owner is gone by then. Main queue.
void showInFileManager(const QUrl &file, QObject *owner, std::function<void()> fallback);

} // namespace quib
