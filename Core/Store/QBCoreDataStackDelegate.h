#pragma once

#include <Foundation/NSError.h>

#include <memory>

class NSManagedObjectContext;
class NSProgress;
class QBCoreDataStack;

/// Who wants to know how the opening of the store goes. Called on the main queue; each operation may be left out.
class QBCoreDataStackDelegate
{
public:
    virtual ~QBCoreDataStackDelegate() = default;

    virtual void coreDataStackDidInitializeManagedObjectContext(QBCoreDataStack &coreDataStack,
                                                                NSManagedObjectContext &managedObjectContext);
    /// Units: 100 for each step of the migration.
    virtual void coreDataStackDidBeginMigrationWithProgress(QBCoreDataStack &coreDataStack,
                                                            const std::shared_ptr<NSProgress> &progress);
    /// Shape:   migrationError is not set when the migration succeeded.
    virtual void coreDataStackDidEndMigration(QBCoreDataStack &coreDataStack, const NSError &migrationError);
};
