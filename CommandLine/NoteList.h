#pragma once

#include "Command.h"

#include <Store/NSManagedObjectContext.h>

#include <QString>

#include <functional>
#include <optional>

namespace quib::cli {

/// The request of a list by its name, in the list's own order, narrowed down to what a search finds; an empty search
/// narrows nothing.
/// Errors: nullopt after the reason was told; status then says how the command ends.
[[nodiscard]] std::optional<NSFetchRequest> requestForList(const QString &list, const QString &search,
                                                           NSManagedObjectContext &context, ExitStatus *status);

/// Prints a list and then each change of it as a JSON line, flushed one by one, until the process is interrupted or its
/// reader is gone. A list that names the day is another list at midnight, and is printed whole again.
[[nodiscard]] ExitStatus watchList(NSManagedObjectContext &context, const QString &storePath,
                                   const std::function<std::optional<NSFetchRequest>()> &makeRequest);

} // namespace quib::cli
