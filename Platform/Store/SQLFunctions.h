#pragma once

#include "Value.h"

#include <QByteArray>
#include <QList>

struct sqlite3;

namespace quib {

/// Gives a connection the functions and the collation named in SQLNames.h, and quib_in.
/// Errors: the SQLite result code of the first that could not be registered, else 0 (SQLITE_OK).
[[nodiscard]] int registerSQLFunctions(sqlite3 *database);

/// f(value, packed list BLOB) -> 0/1: the value is one of a list too long for variables of its own.
inline constexpr char kSQLIn[] = "quib_in";
/// f(text, option) -> BLOB: the text folded by a FoldOption's number.
inline constexpr char kSQLFoldWith[] = "quib_fold";
/// The packed list of whole numbers and strings; values of other kinds are left out.
[[nodiscard]] QByteArray packedList(const QList<Value> &values);

} // namespace quib
