#pragma once

#include <Store/_QBExternalChanges.h>

#include <Store/NSManagedObjectID.h>

#include <QList>
#include <QSet>

#include <optional>

/// One object that another program changed, left in the store by the save that changed it, for the application that has
/// the store open to take up. Confined to its context's queue.
class QBExternalChanges : public _QBExternalChanges
{
public:
    /// What happened to the object.
    enum ChangeType : qint16
    {
        Inserted = 0,
        Updated = 1,
        Deleted = 2,
    };

    /// All rows, or the oldest of them where a number is given.
    [[nodiscard]] static QList<quib::Ref<QBExternalChanges>>
    externalChangesInManagedObjectContext(NSManagedObjectContext &moc, qint64 atMost = 0);

    // The writing side

    /// Records what the context is about to save, in the same save. Rows left by a save that failed are made anew.
    /// Errors: logged, and nothing is recorded, where the objects cannot get their permanent identities.
    static void updateExternalChangesInManagedObjectContext(NSManagedObjectContext &moc);
    static void newExternalChangesForInsertedObjects(const QSet<quib::Ref<NSManagedObject>> &insertedObjects,
                                                     const QSet<quib::Ref<NSManagedObject>> &updatedObjects,
                                                     const QSet<quib::Ref<NSManagedObject>> &deletedObjects,
                                                     NSManagedObjectContext &inManagedObjectContext);
    /// A row for an object, in the object's context.
    static quib::Ref<QBExternalChanges> newExternalChangeForModelObject(const NSManagedObject &object,
                                                                        ChangeType changeType);

    // The reading side

    /// Takes into the context what the rows name, all or the oldest ones, and deletes these rows there.
    /// Shape:  the identities of inserted, updated and deleted objects, in this order; rows of any other type and rows
    ///         that name nothing in this store are not among them. Nothing when there are no rows.
    static std::optional<QList<NSManagedObjectID>>
    mergeExternalChangesInManagedObjectContext(NSManagedObjectContext &moc, qint64 atMost = 0);
    /// The identity that the row names in the store of a context; null for none.
    [[nodiscard]] NSManagedObjectID managedObjectIDInManagedObjectContext(const NSManagedObjectContext &moc) const;
};
