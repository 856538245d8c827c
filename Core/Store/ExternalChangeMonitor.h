#pragma once

#include "StoreWatch.h"

#include <Foundation/Clock.h>
#include <Foundation/NotificationCenter.h>
#include <Store/NSManagedObjectID.h>

#include <QList>

#include <memory>

class NSManagedObjectContext;
class QBCoreDataStack;

namespace quib {

/// The application's ear for companions: what they leave in the table of external changes is merged into the main
/// context within a second, and the rows are deleted in a coalesced save. Many rows are taken up in turns of the event
/// loop, so that a companion that imports a library does not stop the typist. Changes that were not saved yet stay. Of
/// attachments that came or changed, QBNoteFilesDowloadedNotification tells. The application makes one once the stack
/// is set up, under its ProfileLock, without which nobody leaves anything. Main queue.
class ExternalChangeMonitor
{
public:
    /// Takes up what is there already. The stack must outlive the monitor and have a main context.
    explicit ExternalChangeMonitor(QBCoreDataStack &stack);

    /// Takes up now what companions left; of many rows the oldest, and the others in the next turns.
    void takeUpChanges();
    /// More than one turn takes up.
    static constexpr qint64 kMostInATurn = 200;

    /// After changes were merged, with the objects that they named.
    ObserverList<const QList<NSManagedObjectID> &> didMerge;

private:
    void postChangedFiles(const QList<NSManagedObjectID> &objectIDs) const;

    QBCoreDataStack &m_stack;
    StoreWatch m_watch;
    std::unique_ptr<TimerToken> m_nextTurn; ///< set while there may be more
};

} // namespace quib
