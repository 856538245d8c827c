#pragma once

#include <QSet>
#include <QString>

class NSManagedObjectContext;

namespace quib {

/// How long a folder of an attachment must have been as it is before it may count as left behind: a younger one may
/// belong to something that is under way, in this process or another. Units: seconds.
inline constexpr double kYoungestLeftBehind = 24.0 * 60 * 60;

/// How long ago a folder or a file in it changed last; very long where there is none. Units: seconds.
[[nodiscard]] double ageOfFolder(const QString &folder);

// An attachment is saved before the text with its marker is. One whose marker was taken back in time, or came into a
// place where it is mere text, never was a note's, and so never becomes unused: nothing would ever collect it.

/// The identifiers of attachments that may be forgotten: without a note, not unused, made here and not known to the
/// cloud, of a class with markers, and old enough. What texts say is not looked at.
/// Queue: the context's.
[[nodiscard]] QSet<QString> possiblyForgottenFiles(NSManagedObjectContext &moc);

/// Those of them that no text names, whatever the note's state and wherever in the text: code counts too. None where a
/// text cannot be read. The context forgets its objects as it goes, so that memory does not grow with the texts.
/// Queue: the context's.
[[nodiscard]] QSet<QString> filesNamedInNoText(const QSet<QString> &identifiers, NSManagedObjectContext &moc);

/// Has them go with the others that are unused, unless a text takes them up first.
/// Queue: the context's.
void markAsUnused(const QSet<QString> &identifiers, NSManagedObjectContext &moc);

} // namespace quib
