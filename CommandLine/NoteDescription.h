#pragma once

#include <Store/QBNote.h>

#include <QJsonObject>
#include <QString>

namespace quib::cli {

/// What --json tells of a note; its text only when asked for.
[[nodiscard]] QJsonObject jsonForNote(const QBNote &note, bool withText);
/// One line of a listing: identifier, date, marks, title, between tabs; in columns on a terminal.
[[nodiscard]] QString lineForNote(const QBNote &note);
/// An instant in the local time zone, to the minute.
[[nodiscard]] QString localDateTime(NSDate date);

} // namespace quib::cli
