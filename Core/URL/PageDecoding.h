#pragma once

#include <QByteArray>
#include <QString>

namespace quib {

/// The text of a web page whose bytes may be in any encoding, broken, or not what they say they are. Tried in turn: a
/// byte-order mark; UTF-8 that is whole and more than ASCII; what the server declares; what the page declares; ASCII;
/// the declared ones again, with U+FFFD for what does not fit; what the bytes look like, Windows code pages included.
/// The first that can be counts. Any thread.
[[nodiscard]] QString decodePage(const QByteArray &bytes, const QByteArray &declaredByServer);

} // namespace quib
