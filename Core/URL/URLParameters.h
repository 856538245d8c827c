#pragma once

#include <QMap>
#include <QString>
#include <QStringView>
#include <QUrl>

/// The parameters of an action, or its result, by name. Values are text as people write it; what is no text goes in by
/// its description. In the order of the names, so that the same parameters always make the same URL.
using IACParameters = QMap<QString, QString>;

namespace quib {

/// A new UUID in canonical upper-case form.
[[nodiscard]] QString stringWithUUID();

/// The URL that a text stands for. A "%" without two hexadecimal digits stands for itself and takes nothing from the
/// escapes beside it.
[[nodiscard]] QUrl urlFromText(const QString &text);

/// The parameters of a URL's query, in one pass. A part with no "=", or with more than one, is dropped; of two with one
/// name the later one counts. Values are percent-decoded, names are not.
/// Errors: never fails. A "%" without two hexadecimal digits stands for itself; bytes that are not UTF-8 give U+FFFD
///         each. A lone surrogate that stringByAppendingURLParams wrote comes back.
[[nodiscard]] IACParameters parseURLParams(QStringView query);

/// The URL with the parameters behind it, each followed by "&". Values are percent-encoded but for what the query of a
/// URL may hold: "&", "=", "+", "/" and "?" in them stay.
[[nodiscard]] QString stringByAppendingURLParams(const QString &string, const IACParameters &params);

/// The number that a text begins with, behind blanks and a sign; 0 where it begins with none. One too large to hold is
/// the largest, or smallest, there is.
[[nodiscard]] qint64 leadingInteger(QStringView text);

} // namespace quib
