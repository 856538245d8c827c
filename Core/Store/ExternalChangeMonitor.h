#pragma once

#include "StoreWatch.h"

#include <Foundation/NotificationCenter.h>
#include <Store/NSManagedObjectID.h>

#include <QList>

#include <memory>

class NSManagedObjectContext;
class QBCoreDataStack;

namespace quib {

/// The application's ear for companions: what they leave in the table of external changes is merged into the main
/// context within a second, and the rows are deleted in a coalesced save. Changes that were not saved yet stay. Of
/// attachments that came or changed, QBNoteFilesDowloadedNotification tells. The application makes one once the stack
/// is set up, under its ProfileLock, without which nobody leaves anything. Main queue.
class ExternalChangeMonitor
{
public:
    /// Takes up what is there already. The stack must outlive the monitor and have a main context.
    explicit ExternalChangeMonitor(QBCoreDataStack &stack);

    /// Takes up now what companions left.
    void takeUpChanges();

    /// After changes were merged, with the objects that they named.
    ObserverList<const QList<NSManagedObjectID> &> didMerge;

private:
    void postChangedFiles(const QList<NSManagedObjectID> &objectIDs) const;

    QBCoreDataStack &m_stack;
    StoreWatch m_watch;
};

} // namespace quib
