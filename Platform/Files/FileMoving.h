#pragma once

#include <Foundation/NSError.h>

#include <QString>

namespace quib {

/// Whether a name can stand for one item of a folder and nothing else: not empty, not "." or "..", without "/" and
/// without NUL. Names from notes, archives and other devices are judged by this before they meet a folder.
[[nodiscard]] bool isSafeFileName(QStringView name);

/// The longest name of an item. Units: bytes of UTF-8.
inline constexpr qsizetype kLongestFileName = 255;

/// The beginning of a name that takes at most that many bytes, cut between composed characters where one fits, else
/// between code points.
[[nodiscard]] QString cutToBytes(const QString &name, qsizetype bytes);

/// Copies a file, durably, with mode 0600 and the times of the source. Nothing stands at the destination before the
/// copy is whole.
/// Errors: FileWriteFileExists where something is there; a source that is no file; others as files. Nothing is left.
[[nodiscard]] bool copyFile(const QString &from, const QString &to, NSError *error);

/// Moves a file, or a folder with all in it, also to another file system. An empty folder at the destination gives way.
/// Errors: FileWriteFileExists where something else is there; others as files. The source is then whole.
[[nodiscard]] bool moveItem(const QString &from, const QString &to, NSError *error);

/// Removes a file, or a folder with all in it. A symbolic link goes, what it points to stays.
bool removeItem(const QString &path);

} // namespace quib
