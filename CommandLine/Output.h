#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

namespace quib::cli {

/// Results: to standard output, as UTF-8 in which lone surrogates survive.
void print(const QString &text);
void printLine(const QString &line);
/// One JSON document and a line end.
void printJson(const QJsonObject &object);
void printJson(const QJsonArray &array);
/// Messages: to standard error, "quibctl: " in front.
void complain(const QString &message);
/// A note of progress, shown only when standard error is a terminal; an empty one clears the line.
void showProgress(const QString &message);
/// Whether standard output is a terminal.
[[nodiscard]] bool isTerminal();
/// False after a write to standard output failed (disk full, closed pipe).
[[nodiscard]] bool flushOutput();
/// One line of a listing: control characters and line ends become blanks.
[[nodiscard]] QString singleLine(const QString &text);

} // namespace quib::cli
