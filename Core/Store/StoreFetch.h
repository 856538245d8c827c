#pragma once

#include <Store/NSManagedObjectContext.h>

#include <QList>
#include <QString>

namespace quib {

/// Logs a failed fetch in the form that all of them share.
void logFetchError(const NSError &error, const char *function, int line);

/// The objects that a request finds; a failure is logged and gives none.
/// Queue: the context's.
template <typename T>
[[nodiscard]] QList<Ref<T>> fetchLogged(NSManagedObjectContext &moc, const NSFetchRequest &request,
                                        const char *function = __builtin_FUNCTION(), int line = __builtin_LINE())
{
    NSError error;
    auto found = moc.fetch<T>(request, &error);
    if (!found) {
        logFetchError(error, function, line);
        return {};
    }
    return std::move(*found);
}

/// A request for the objects of T's entity that meet a condition.
template <typename T>
[[nodiscard]] NSFetchRequest requestFor(const QString &format, const QList<NSPredicateArgument> &arguments = {})
{
    NSFetchRequest request;
    request.entityName = T::entityName();
    request.predicate = NSPredicate::predicateWithFormat(format, arguments);
    return request;
}

} // namespace quib
