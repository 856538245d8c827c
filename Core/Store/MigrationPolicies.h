#pragma once

#include <Store/NSEntityMigrationPolicy.h>

#include <memory>

/// Gives each note of a version 1 store what version 2 derives from the text.
class Model1toModel2QBNoteMigrationPolicy : public NSEntityMigrationPolicy
{
public:
    [[nodiscard]] bool createDestinationInstancesForSourceInstance(const quib::StoredRow &sourceInstance,
                                                                   const QString &entityMapping,
                                                                   NSMigrationManager &manager,
                                                                   NSError *error) override;
};

/// Gives each note of a version 2 store what version 3 derives from text and files; at the stage of relationships,
/// since it looks at the files.
class Model2toModel3QBNoteMigrationPolicy : public NSEntityMigrationPolicy
{
public:
    [[nodiscard]] bool createRelationshipsForDestinationInstance(NSManagedObject &destinationInstance,
                                                                 const QString &entityMapping,
                                                                 NSMigrationManager &manager, NSError *error) override;
};

namespace quib {

/// The policy of a name in a mapping, or null.
[[nodiscard]] std::unique_ptr<NSEntityMigrationPolicy> makeMigrationPolicy(const QString &policyName);

} // namespace quib
