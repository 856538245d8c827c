#include "ExternalChangeMonitor.h"

#include "QBCoreDataStack.h"
#include "QBExternalChanges.h"
#include "QBNoteFile.h"
#include "QBNoteFilesDowloadedNotification.h"

#include <Foundation/Assert.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/NSPersistentStore.h>

namespace quib {

ExternalChangeMonitor::ExternalChangeMonitor(QBCoreDataStack &stack)
    : m_stack(stack)
    , m_watch(*stack.managedObjectContext()->persistentStoreCoordinator()->persistentStore(),
              stack.persistentStoreURL(), [this] { takeUpChanges(); })
{
    takeUpChanges();
}

void ExternalChangeMonitor::takeUpChanges()
{
    NSManagedObjectContext &moc = *m_stack.managedObjectContext();
    QUIB_ASSERT(moc.queue()->isCurrent());
    m_nextTurn.reset();
    const auto merged = QBExternalChanges::mergeExternalChangesInManagedObjectContext(moc, kMostInATurn);
    if (merged || m_stack.saveError().code() == static_cast<qint64>(NSCocoaErrorCode::PersistentStoreTimeout)) {
        // A save that a companion held up for too long gets its turn when the companion is done.
        m_stack.saveUsingCoalescence(/*coalescence=*/true);
    }
    if (merged) {
        m_nextTurn = Clock::shared().schedule(0, [this] { takeUpChanges(); });
    }
    if (merged && !merged->isEmpty()) {
        postChangedFiles(*merged);
        didMerge.notify(*merged);
    }
}

void ExternalChangeMonitor::postChangedFiles(const QList<NSManagedObjectID> &objectIDs) const
{
    NSManagedObjectContext &moc = *m_stack.managedObjectContext();
    QStringList identifiers;
    QSet<QString> seen;
    for (const NSManagedObjectID &objectID : objectIDs) {
        if (objectID.entity()->rootEntity()->name() != QBNoteFile::entityName()) {
            continue;
        }
        const auto file = moc.existingObjectWithID(objectID).as<QBNoteFile>();
        const QString identifier = file ? file->uniqueIdentifier() : QString();
        if (!identifier.isEmpty() && !seen.contains(identifier)) {
            seen.insert(identifier);
            identifiers.append(identifier);
        }
    }
    if (!identifiers.isEmpty()) {
        QBNoteFilesDowloadedNotification().notify(identifiers);
    }
}

} // namespace quib
