#pragma once

#include <QtGlobal>

class MRTFetchedResultsController;
class NSManagedObject;

/// What happened to an object of a list. The numbers are part of the interface.
enum class MRTChangeType : int
{
    Insert = 1,
    Delete = 2,
    Move = 3,
    Update = 4,
};

/// Which of the delegate's operations a listener answers.
struct MRTFetchedResultsControllerDelegateHas
{
    bool controllerWillChangeContent = true;
    bool controllerDidChangeContent = true;
    bool controllerDidChangeObject = true;
    /// With this one, only it is told of objects.
    bool controllerDidProgressivelyChangeObject = false;
};

/// Who listens to the changes of a list. Called on the list's queue; the list shows its new state already from the
/// first call about an object on. Indexes that do not exist are NSNotFound.
class MRTFetchedResultsControllerDelegate
{
public:
    virtual ~MRTFetchedResultsControllerDelegate() = default;

    /// Asked once, when the listener is set.
    [[nodiscard]] virtual MRTFetchedResultsControllerDelegateHas delegateHas() const { return {}; }

    /// The list still shows its old state.
    virtual void controllerWillChangeContent(MRTFetchedResultsController &controller);
    virtual void controllerDidChangeContent(MRTFetchedResultsController &controller);
    /// Units: atIndex in the list before all changes, newIndex in the list after all of them.
    virtual void controllerDidChangeObject(MRTFetchedResultsController &controller, NSManagedObject &object,
                                           qint64 atIndex, MRTChangeType forChangeType, qint64 newIndex);
    /// The same, with each change described once more for a list that is changed step by step.
    /// Units: progressiveIndex and newProgressiveIndex in the list as it stands after every report before this one;
    /// the new one counts after the object was taken out at the old one.
    virtual void controllerDidProgressivelyChangeObject(MRTFetchedResultsController &controller,
                                                        NSManagedObject &object, qint64 atIndex,
                                                        qint64 progressiveIndex, MRTChangeType forChangeType,
                                                        MRTChangeType forProgressiveChangeType, qint64 newIndex,
                                                        qint64 newProgressiveIndex);
};
