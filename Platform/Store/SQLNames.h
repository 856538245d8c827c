#pragma once

#include "NSManagedObjectModel.h"

#include <QByteArray>

namespace quib {

/// The names of tables and columns that a model gives in the file. All are already quoted for SQL. One table a root
/// entity, its rows holding the columns of every entity below:
///   "QBNote"(_pk INTEGER PRIMARY KEY, _version INTEGER NOT NULL, [_entity INTEGER NOT NULL,] attributes...,
///            to-one relationships as INTEGER keys, "title_cd" for fold-indexed attributes)
/// A lazy attribute stands in "QBNote_text"(_pk INTEGER PRIMARY KEY, "text"). A many-to-many relationship stands in
/// "QBNote_tags"(source INTEGER, target INTEGER, PRIMARY KEY(source, target)) WITHOUT ROWID, with the reverse index.
/// Booleans and whole numbers are INTEGER, dates REAL seconds since 1970, strings TEXT in UTF-8, binary BLOB.
struct SQLNames
{
    [[nodiscard]] static QByteArray table(const NSEntityDescription *entity);
    /// True when rows of several entities share the table, so that it has the column _entity.
    [[nodiscard]] static bool hasEntityColumn(const NSEntityDescription *entity);
    [[nodiscard]] static QByteArray column(const QString &property);
    [[nodiscard]] static QByteArray foldedColumn(const QString &attribute);
    [[nodiscard]] static QByteArray lazyTable(const NSEntityDescription *entity, const QString &attribute);
    /// The join table of either side of a many-to-many relationship.
    [[nodiscard]] static QByteArray joinTable(const NSRelationshipDescription *relationship);
    /// The join table's column that holds rows of the relationship's own entity: "source" on the owning side.
    [[nodiscard]] static QByteArray joinOwnColumn(const NSRelationshipDescription *relationship);
    [[nodiscard]] static QByteArray joinOtherColumn(const NSRelationshipDescription *relationship);
};

/// The name of the SQL function f(text, foldedNeedle BLOB) -> 0/1: the [cd]-folded text holds the folded needle.
inline constexpr char kSQLContainsFolded[] = "quib_contains_cd";
/// f(text) -> BLOB: the [cd]-folded text, as the folded columns hold it.
inline constexpr char kSQLFold[] = "quib_fold_cd";
/// f(text, needle) -> 0/1, by code unit: exact containment, prefix, suffix.
inline constexpr char kSQLContains[] = "quib_contains";
inline constexpr char kSQLBeginsWith[] = "quib_begins_with";
inline constexpr char kSQLEndsWith[] = "quib_ends_with";
/// A collation: the locale's natural order.
inline constexpr char kSQLLocalizedStandard[] = "quib_localized_standard";

} // namespace quib
