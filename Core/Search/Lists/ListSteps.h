#pragma once

#include "ListChange.h"
#include "MRTFetchedResultsControllerDelegate.h"

#include <functional>

namespace quib {

/// One report about a list: a change between the list before and the list after, and the step that a table which is
/// changed report by report performs for it. Indexes that do not exist are NSNotFound.
struct ListStep
{
    NSManagedObject *object = nullptr;
    qint64 index = 0;
    qint64 progressiveIndex = 0;
    MRTChangeType type = MRTChangeType::Update;
    MRTChangeType progressiveType = MRTChangeType::Update;
    qint64 newIndex = 0;
    /// Counts after the object was taken out at progressiveIndex.
    qint64 newProgressiveIndex = 0;
};

/// Calls visit for each report of a change: deletions, insertions, updates. Performed in this order the steps turn the
/// list before into the list after.
void forEachStep(const ListChange &change, const std::function<void(const ListStep &step)> &visit);

} // namespace quib
