#include "MRTFetchedResultsControllerDelegate.h"

// Each operation may be left out; what is left out does nothing.

void MRTFetchedResultsControllerDelegate::controllerWillChangeContent(MRTFetchedResultsController & /*controller*/) {}

void MRTFetchedResultsControllerDelegate::controllerDidChangeContent(MRTFetchedResultsController & /*controller*/) {}

void MRTFetchedResultsControllerDelegate::controllerDidChangeObject(MRTFetchedResultsController & /*controller*/,
                                                                    NSManagedObject & /*object*/, qint64 /*atIndex*/,
                                                                    MRTChangeType /*forChangeType*/,
                                                                    qint64 /*newIndex*/)
{
}

void MRTFetchedResultsControllerDelegate::controllerDidProgressivelyChangeObject(
    MRTFetchedResultsController & /*controller*/, NSManagedObject & /*object*/, qint64 /*atIndex*/,
    qint64 /*progressiveIndex*/, MRTChangeType /*forChangeType*/, MRTChangeType /*forProgressiveChangeType*/,
    qint64 /*newIndex*/, qint64 /*newProgressiveIndex*/)
{
}
