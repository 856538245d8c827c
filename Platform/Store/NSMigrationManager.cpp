#include "NSMigrationManager.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using quib::Ref;
using quib::StoredRow;

namespace {

/// Rows between two saves: few enough for memory, many enough that a save's cost does not count.
constexpr qsizetype kBatch = 100;

} // namespace

NSMigrationManager::NSMigrationManager(std::shared_ptr<const NSManagedObjectModel> sourceModel,
                                       std::shared_ptr<const NSManagedObjectModel> destinationModel,
                                       PolicyFactory policies)
    : m_sourceModel(std::move(sourceModel))
    , m_destinationModel(std::move(destinationModel))
    , m_makePolicy(std::move(policies))
{
}

NSMigrationManager::~NSMigrationManager() = default;

bool NSMigrationManager::openStores(const QString &sourceURL, const QString &destinationURL, NSError *error)
{
    m_source = std::make_unique<NSPersistentStoreCoordinator>(m_sourceModel, NSManagedObjectFactories());
    NSPersistentStoreOptions options;
    options.mustExist = true;
    if (m_source->addPersistentStoreWithType(NSSQLiteStoreType, sourceURL, options, error) == nullptr) {
        return false;
    }
    m_destination = std::make_shared<NSPersistentStoreCoordinator>(m_destinationModel, NSManagedObjectFactories());
    if (m_destination->addPersistentStoreWithType(NSSQLiteStoreType, destinationURL, {}, error) == nullptr) {
        return false;
    }
    m_context = NSManagedObjectContext::contextWithCoordinator(NSManagedObjectContextConcurrencyType::PrivateQueue,
                                                               m_destination);
    return true;
}

void NSMigrationManager::advance(qint64 rows)
{
    m_rowsDone += rows;
    m_progress = m_rowsToDo > 0 ? static_cast<double>(m_rowsDone) / static_cast<double>(m_rowsToDo) : 1;
    if (m_observer) {
        m_observer(m_progress);
    }
}

NSEntityMigrationPolicy &NSMigrationManager::policyFor(const NSEntityDescription *entity, const NSMappingModel &mapping)
{
    auto &policy = m_policies[entity->name()];
    if (!policy) {
        const QString name = mapping.policies.value(entity->name());
        policy =
            name.isEmpty() || !m_makePolicy ? nullptr : std::shared_ptr<NSEntityMigrationPolicy>(m_makePolicy(name));
        if (!policy) {
            policy = std::make_shared<NSEntityMigrationPolicy>();
        }
    }
    return *policy;
}

bool NSMigrationManager::forEachRow(const NSEntityDescription *entity,
                                    const std::function<bool(const StoredRow &row)> &step, NSError *error)
{
    NSFetchRequest request{.entityName = entity->name()};
    request.includesSubentities = false;
    const auto identities = m_source->persistentStore()->fetchIDs(request, error);
    if (!identities) {
        return false;
    }
    for (qsizetype start = 0; start < identities->size(); start += kBatch) {
        const qsizetype limit = std::min(start + kBatch, identities->size());
        bool isDone = true;
        m_context->performBlockAndWait([&] {
            for (qsizetype i = start; isDone && i < limit; ++i) {
                const auto row = m_source->persistentStore()->row(identities->at(i), error);
                isDone = row && row->snapshot && step(*row);
            }
            isDone = isDone && m_context->save(error);
            for (const auto &[source, object] : std::as_const(m_unsaved)) {
                m_instances.insert(source, object->objectID());
            }
            m_unsaved.clear();
            m_context->reset();
        });
        if (!isDone) {
            if (error != nullptr && !error->isSet()) {
                NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::Migration),
                              u"a row of %1 could not be carried over"_s.arg(entity->name()));
            }
            return false;
        }
        if (m_isCancelled) {
            return NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::Migration),
                                 u"the migration was cancelled"_s);
        }
        advance(limit - start);
    }
    return true;
}

bool NSMigrationManager::migrateStoreFromURL(const QString &sourceURL, const NSMappingModel &withMappingModel,
                                             const QString &toDestinationURL, NSError *error)
{
    m_instances.clear();
    m_policies.clear();
    m_rowsDone = 0;
    m_rowsToDo = 0;
    if (!openStores(sourceURL, toDestinationURL, error)) {
        return false;
    }
    QList<const NSEntityDescription *> entities;
    for (const auto &entity : m_sourceModel->entities()) {
        if (!entity->isAbstract() && m_destinationModel->entityNamed(entity->name()) != nullptr) {
            NSFetchRequest request{.entityName = entity->name()};
            request.includesSubentities = false;
            const auto count = m_source->persistentStore()->count(request, error);
            if (!count) {
                return false;
            }
            m_rowsToDo += 2 * *count;
            entities.append(entity.get());
        }
    }
    advance(0);
    // 1. All objects with their attributes. 2. Their relationships, which need all objects.
    for (const auto *entity : std::as_const(entities)) {
        const auto create = [&](const StoredRow &row) {
            return policyFor(entity, withMappingModel)
                .createDestinationInstancesForSourceInstance(row, entity->name(), *this, error);
        };
        if (!forEachRow(entity, create, error)) {
            return false;
        }
    }
    for (const auto *entity : std::as_const(entities)) {
        const auto relate = [&](const StoredRow &row) {
            for (const auto &object : destinationInstancesForEntityMappingNamed(entity->name(), {row.objectID})) {
                m_currentSource = row;
                if (!policyFor(entity, withMappingModel)
                         .createRelationshipsForDestinationInstance(*object, entity->name(), *this, error)) {
                    return false;
                }
            }
            return true;
        };
        if (!forEachRow(entity, relate, error)) {
            return false;
        }
    }
    // The files are closed before anyone moves them.
    m_context.reset();
    m_destination.reset();
    m_source.reset();
    return true;
}

QList<Ref<NSManagedObject>>
NSMigrationManager::destinationInstancesForEntityMappingNamed(const QString & /*mappingName*/,
                                                              const QList<NSManagedObjectID> &sourceInstances) const
{
    QList<Ref<NSManagedObject>> objects;
    for (const NSManagedObjectID &source : sourceInstances) {
        for (const auto &[identity, object] : m_unsaved) {
            if (identity == source) {
                objects.append(object);
            }
        }
        if (const auto found = m_instances.constFind(source); found != m_instances.constEnd()) {
            if (auto object = m_context->existingObjectWithID(*found)) {
                objects.append(object);
            }
        }
    }
    return objects;
}

bool NSEntityMigrationPolicy::createDestinationInstancesForSourceInstance(const StoredRow &sourceInstance,
                                                                          const QString & /*entityMapping*/,
                                                                          NSMigrationManager &manager, NSError *error)
{
    const auto *source = sourceInstance.objectID.entity();
    const auto *destination = manager.m_destinationModel->entityNamed(source->name());
    const auto object = manager.m_context->insertNewObjectForEntityForName(source->name());
    for (const NSAttributeDescription &attribute : destination->attributes()) {
        const auto *from = source->attributeNamed(attribute.name);
        if (from == nullptr) {
            continue;
        }
        if (from->isLazy) {
            const auto lazy =
                manager.m_source->persistentStore()->lazyValue(sourceInstance.objectID, from->slot, error);
            if (!lazy) {
                return false;
            }
            object->setValueForKey(lazy->value, attribute.name);
        } else {
            object->setValueForKey(sourceInstance.snapshot->valueAt(from->slot), attribute.name);
        }
    }
    manager.m_unsaved.append({sourceInstance.objectID, object});
    return true;
}

bool NSEntityMigrationPolicy::createRelationshipsForDestinationInstance(NSManagedObject &destinationInstance,
                                                                        const QString & /*entityMapping*/,
                                                                        NSMigrationManager &manager, NSError *error)
{
    const StoredRow row = manager.m_currentSource;
    const auto *source = row.objectID.entity();
    for (const NSRelationshipDescription &relationship : destinationInstance.entity()->relationships()) {
        const auto *from = source->relationshipNamed(relationship.name);
        if (from == nullptr || from->isToMany != relationship.isToMany) {
            continue;
        }
        QList<NSManagedObjectID> targets;
        if (from->isToMany) {
            const auto stored = manager.m_source->persistentStore()->targets(row.objectID, from, error);
            if (!stored) {
                return false;
            }
            targets = *stored;
        } else if (const NSManagedObjectID target = row.snapshot->targetAt(from->slot); !target.isNull()) {
            targets.append(target);
        }
        const auto objects = manager.destinationInstancesForEntityMappingNamed({}, targets);
        if (relationship.isToMany) {
            destinationInstance.setTargetObjectsForKey(objects, relationship.name);
        } else {
            destinationInstance.setTargetObjectForKey(objects.value(0), relationship.name);
        }
    }
    return true;
}
