#pragma once

#include "NSManagedObject.h"
#include "NSPersistentStore.h"

#include <Foundation/NSError.h>

#include <QString>

class NSMigrationManager;

/// What is done with each row of one entity while a store is migrated. The ordinary steps stand here; a policy of its
/// own overrides a step, calls this one first, and does more. Destination objects are used by key. Queue: the
/// migration's.
class NSEntityMigrationPolicy
{
public:
    virtual ~NSEntityMigrationPolicy() = default;

    /// Makes the destination object of a source row, with the attributes that both models name.
    /// Errors: false ends the migration.
    [[nodiscard]] virtual bool createDestinationInstancesForSourceInstance(const quib::StoredRow &sourceInstance,
                                                                           const QString &entityMapping,
                                                                           NSMigrationManager &manager, NSError *error);
    /// Gives the destination object the relationships of its source row.
    /// Errors: false ends the migration.
    [[nodiscard]] virtual bool createRelationshipsForDestinationInstance(NSManagedObject &destinationInstance,
                                                                         const QString &entityMapping,
                                                                         NSMigrationManager &manager, NSError *error);
};
