#pragma once

#include <Foundation/NSError.h>

#include <QByteArray>
#include <QString>

#include <optional>

QT_BEGIN_NAMESPACE
class QIODevice;
QT_END_NAMESPACE

namespace quib {

/// The most bytes that a text read from outside may have.
inline constexpr qint64 kMaximumTextBytes = 512LL * 1024 * 1024;

/// What a device gives up to its end, at most so many bytes. One read of a pipe gives what is in it just now; only an
/// empty one is its end.
[[nodiscard]] QByteArray readToEnd(QIODevice &device, qint64 atMost);

/// Decodes a text of UTF-8, or of UTF-16 where a byte-order mark tells so. The mark itself is no part of the text;
/// every other character is, U+0000 included. Errors: nullopt, FileReadCorruptFile; the message has the name and the
/// offset of the first byte that is not text.
[[nodiscard]] std::optional<QString> decodePlainText(const QByteArray &bytes, const QString &name, NSError *error);

/// Reads and decodes a file; "-" is standard input.
/// Errors: nullopt; FileNoSuchFile, FileReadNoPermission, FileReadUnknown (folders, files beyond kMaximumTextBytes), or
/// the decoder's.
[[nodiscard]] std::optional<QString> readPlainTextFile(const QString &path, NSError *error);

} // namespace quib
