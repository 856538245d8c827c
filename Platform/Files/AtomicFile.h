#pragma once

#include <Foundation/NSError.h>

#include <QByteArray>
#include <QString>

#include <optional>

namespace quib {

/// The largest file that is read into memory as one piece where the caller names no limit of its own. Units: bytes.
inline constexpr qint64 kLargestWholeFile = 256 * 1024 * 1024;

/// Makes a folder with mode 0700, and those above it that are missing. A folder that is there keeps its mode.
/// Errors: as fillFileError; a file in the way is FileWriteFileExists.
[[nodiscard]] bool ensureFolder(const QString &path, NSError *error);

/// Replaces a file's content in one step: readers, and a start after a power loss, see the old bytes or the new ones.
/// The file has mode 0600 where it is new and keeps its mode where it was there; a symbolic link stays one, its target
/// is replaced. The folder must exist.
/// Errors: as fillFileError; the old file is then unchanged and nothing is left beside it.
[[nodiscard]] bool writeFileAtomically(const QString &path, const QByteArray &bytes, NSError *error);

/// A file's bytes.
/// Errors: FileNoSuchFile and others as fillFileError; FileReadUnknown for a folder or a file above the limit.
[[nodiscard]] std::optional<QByteArray> readWholeFile(const QString &path, NSError *error,
                                                      qint64 limit = kLargestWholeFile);

/// Makes what was renamed, made or removed in a folder durable. Failure is not reported: some file systems refuse.
void syncFolder(const QString &path);

} // namespace quib
