#pragma once

#include <QByteArray>
#include <QString>

namespace quib {

/// A name for the file at a URL, safe in any folder: made of the last component of the path, without the query. Never
/// empty, hidden, "." or "..", without separators and characters that do not show, of at most 255 bytes with its
/// extension kept. A component that is an extension alone, or missing, gives a name that begins with "file". Bytes that
/// show a picture decide the extension, unless it is "jpg", "jpeg" or "png" already.
[[nodiscard]] QString fileNameForURL(const QString &url, const QByteArray &data);

} // namespace quib
