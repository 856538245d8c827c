#pragma once

#include <Foundation/NotificationCenter.h>

#include <QStringList>

/// "QBNoteFilesDowloadedNotificationName": the binaries of attachments came or changed on disk. Observers get the
/// identifiers of the attachments. Main queue only, both to observe and to post.
[[nodiscard]] quib::ObserverList<const QStringList &> &QBNoteFilesDowloadedNotification();
