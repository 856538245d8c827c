#include "MigrationPolicies.h"

#include "QBNote.h"

#include <Store/NSMigrationManager.h>

bool Model1toModel2QBNoteMigrationPolicy::createDestinationInstancesForSourceInstance(
    const quib::StoredRow &sourceInstance, const QString &entityMapping, NSMigrationManager &manager, NSError *error)
{
    if (!NSEntityMigrationPolicy::createDestinationInstancesForSourceInstance(sourceInstance, entityMapping, manager,
                                                                              error)) {
        return false;
    }
    const auto made = manager.destinationInstancesForEntityMappingNamed(entityMapping, {sourceInstance.objectID});
    if (!made.isEmpty() && made.constLast()) {
        QBNote::migrateManagedObjectToVersion2(*made.constLast());
    }
    return true;
}

bool Model2toModel3QBNoteMigrationPolicy::createRelationshipsForDestinationInstance(
    NSManagedObject &destinationInstance, const QString &entityMapping, NSMigrationManager &manager, NSError *error)
{
    const bool isDone = NSEntityMigrationPolicy::createRelationshipsForDestinationInstance(
        destinationInstance, entityMapping, manager, error);
    QBNote::migrateManagedObjectToVersion3(destinationInstance);
    return isDone;
}

namespace quib {

std::unique_ptr<NSEntityMigrationPolicy> makeMigrationPolicy(const QString &policyName)
{
    if (policyName == QLatin1StringView("Model1toModel2QBNoteMigrationPolicy")) {
        return std::make_unique<Model1toModel2QBNoteMigrationPolicy>();
    }
    if (policyName == QLatin1StringView("Model2toModel3QBNoteMigrationPolicy")) {
        return std::make_unique<Model2toModel3QBNoteMigrationPolicy>();
    }
    return nullptr;
}

} // namespace quib
