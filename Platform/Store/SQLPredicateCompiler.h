#pragma once

#include "NSManagedObjectModel.h"
#include "NSPredicate.h"
#include "NSSortDescriptor.h"

#include <Foundation/NSError.h>

#include <QByteArray>
#include <QList>

namespace quib {

/// A piece of SQL and what its question marks stand for, in order.
struct SQLFragment
{
    QByteArray sql;
    QList<Value> bindings;
};

/// The alias of the fetched table in what these functions give.
inline constexpr char kSQLRootAlias[] = "t0";

/// Compiles a condition on rows of entity to an SQL expression that is 1 or 0, never NULL, with the same rows as
/// evaluation in memory. Text is bound as strings, folded text as bytes.
/// Errors: nullopt for keys that the entity lacks and for comparisons that rows cannot answer.
[[nodiscard]] std::optional<SQLFragment> compilePredicate(const NSPredicate &predicate,
                                                          const NSEntityDescription *entity, NSError *error);

/// How rows stand that the descriptors of an order leave equal.
enum class TieOrder : quint8
{
    ByKey, ///< the key of the row last
    Any,   ///< as the store finds them; the same as ByKey where there is no descriptor
};

/// Compiles an order to the terms of ORDER BY.
/// Errors: nullopt for keys that the entity lacks.
[[nodiscard]] std::optional<QByteArray> compileOrder(const QList<NSSortDescriptor> &descriptors,
                                                     const NSEntityDescription *entity, TieOrder ties, NSError *error);

} // namespace quib
