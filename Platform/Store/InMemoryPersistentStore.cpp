#include "InMemoryPersistentStore.h"

#include <Foundation/Identifiers.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

/// A stored row as conditions and orders see it. Lives during one call, under the store's lock.
class InMemoryPersistentStore::StoredObject final : public KeyValueObject
{
public:
    StoredObject(const InMemoryPersistentStore &store, StoredRow row)
        : m_store(store)
        , m_row(std::move(row))
    {
    }

    [[nodiscard]] NSManagedObjectID objectID() const override { return m_row.objectID; }
    [[nodiscard]] KeyKind kindOfKey(const QString &key) const override
    {
        const auto *entity = m_row.objectID.entity();
        if (entity->attributeNamed(key) != nullptr) {
            return KeyKind::Attribute;
        }
        const auto *relationship = entity->relationshipNamed(key);
        return relationship == nullptr ? KeyKind::Unknown : (relationship->isToMany ? KeyKind::ToMany : KeyKind::ToOne);
    }
    [[nodiscard]] Value attributeForKey(const QString &key) const override
    {
        return m_row.snapshot->valueAt(m_row.objectID.entity()->attributeNamed(key)->slot);
    }
    [[nodiscard]] const KeyValueObject *targetForKey(const QString &key) const override
    {
        const NSManagedObjectID target =
            m_row.snapshot->targetAt(m_row.objectID.entity()->relationshipNamed(key)->slot);
        if (target.isNull()) {
            return nullptr;
        }
        const StoredRow row = m_store.m_rows.value(target.entity()->rootEntity()).value(target.key());
        m_target = row.snapshot ? std::make_unique<StoredObject>(m_store, row) : nullptr;
        return m_target.get();
    }
    [[nodiscard]] qint64 countForKey(const QString &toManyKey) const override { return targets(toManyKey).size(); }
    [[nodiscard]] bool relationContains(const QString &toManyKey, const NSManagedObjectID &target) const override
    {
        return targets(toManyKey).contains(target);
    }
    void forEachTarget(const QString &toManyKey,
                       const std::function<bool(const KeyValueObject &target)> &visit) const override
    {
        for (const NSManagedObjectID &target : targets(toManyKey)) {
            if (!visit(
                    StoredObject(m_store, m_store.m_rows.value(target.entity()->rootEntity()).value(target.key())))) {
                return;
            }
        }
    }

private:
    [[nodiscard]] QList<NSManagedObjectID> targets(const QString &key) const
    {
        return m_store.targetsOf(m_row.objectID, m_row.objectID.entity()->relationshipNamed(key));
    }

    const InMemoryPersistentStore &m_store;
    StoredRow m_row;
    mutable std::unique_ptr<StoredObject> m_target;
};

InMemoryPersistentStore::InMemoryPersistentStore(std::shared_ptr<const NSManagedObjectModel> model)
    : m_model(std::move(model))
    , m_identifier(uuidString())
{
}

QList<NSManagedObjectID> InMemoryPersistentStore::targetsOf(const NSManagedObjectID &objectID,
                                                            const NSRelationshipDescription *relationship) const
{
    QList<NSManagedObjectID> found;
    const Rows rows = m_rows.value(relationship->destinationEntity->rootEntity());
    if (relationship->isManyToMany()) {
        const bool isOwner = relationship->ownsJoinTable;
        for (const auto &[source, target] : m_joins.value(isOwner ? relationship : relationship->inverse)) {
            if ((isOwner ? source : target) == objectID.key()) {
                found.append(rows.value(isOwner ? target : source).objectID);
            }
        }
        found.removeAll(NSManagedObjectID());
    } else {
        for (const StoredRow &row : rows) {
            const auto *inverse = row.objectID.entity()->relationshipNamed(relationship->inverseName);
            if (inverse != nullptr && row.snapshot->targetKeyAt(inverse->slot) == objectID.key()) {
                found.append(row.objectID);
            }
        }
    }
    std::sort(found.begin(), found.end(),
              [](const NSManagedObjectID &a, const NSManagedObjectID &b) { return a.key() < b.key(); });
    return found;
}

std::optional<QList<StoredRow>> InMemoryPersistentStore::select(const NSFetchRequest &request, NSError *error) const
{
    const auto *entity = m_model->entityNamed(request.entityName);
    if (entity == nullptr) {
        NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::FileReadUnknown),
                      u"no entity \"%1\""_s.arg(request.entityName));
        return std::nullopt;
    }
    QList<StoredRow> rows;
    for (const StoredRow &row : m_rows.value(entity->rootEntity())) {
        const bool isWanted = request.includesSubentities ? row.objectID.entity()->isKindOfEntity(entity)
                                                          : row.objectID.entity() == entity;
        if (isWanted && (!request.predicate || request.predicate->evaluateWithObject(StoredObject(*this, row)))) {
            rows.append(row);
        }
    }
    std::stable_sort(rows.begin(), rows.end(), [this, &request](const StoredRow &a, const StoredRow &b) {
        return NSSortDescriptor::compare(request.sortDescriptors, StoredObject(*this, a), StoredObject(*this, b)) < 0;
    });
    if (request.fetchLimit > 0 && rows.size() > request.fetchLimit) {
        rows.resize(request.fetchLimit);
    }
    return rows;
}

std::optional<QList<StoredRow>> InMemoryPersistentStore::fetch(const NSFetchRequest &request, NSError *error)
{
    const std::lock_guard lock(m_mutex);
    return select(request, error);
}

std::optional<QList<NSManagedObjectID>> InMemoryPersistentStore::fetchIDs(const NSFetchRequest &request, NSError *error)
{
    const std::lock_guard lock(m_mutex);
    const auto rows = select(request, error);
    if (!rows) {
        return std::nullopt;
    }
    QList<NSManagedObjectID> identities;
    for (const StoredRow &row : *rows) {
        identities.append(row.objectID);
    }
    return identities;
}

std::optional<QList<RowVersion>> InMemoryPersistentStore::rowVersions(const QString &entityName, NSError *error)
{
    const std::lock_guard lock(m_mutex);
    const auto rows = select({.entityName = entityName}, error);
    if (!rows) {
        return std::nullopt;
    }
    QList<RowVersion> versions;
    for (const StoredRow &row : *rows) {
        versions.append({row.objectID, row.snapshot->version()});
    }
    return versions;
}

std::optional<qint64> InMemoryPersistentStore::count(const NSFetchRequest &request, NSError *error)
{
    const std::lock_guard lock(m_mutex);
    const auto rows = select(request, error);
    return rows ? std::optional<qint64>(rows->size()) : std::nullopt;
}

std::optional<QList<QList<Value>>>
InMemoryPersistentStore::fetchDictionaries(const NSFetchRequest &request, const QStringList &attributes, NSError *error)
{
    const std::lock_guard lock(m_mutex);
    const auto rows = select(request, error);
    if (!rows) {
        return std::nullopt;
    }
    QList<QList<Value>> dictionaries;
    for (const StoredRow &row : *rows) {
        QList<Value> values;
        for (const QString &name : attributes) {
            const auto *attribute = row.objectID.entity()->attributeNamed(name);
            values.append(attribute != nullptr ? row.snapshot->valueAt(attribute->slot) : Value());
        }
        dictionaries.append(values);
    }
    return dictionaries;
}

std::optional<StoredRow> InMemoryPersistentStore::row(const NSManagedObjectID &objectID, NSError * /*error*/)
{
    const std::lock_guard lock(m_mutex);
    const StoredRow found = m_rows.value(objectID.entity()->rootEntity()).value(objectID.key());
    return found.snapshot ? found : StoredRow{objectID, {}};
}

std::optional<NSPersistentStore::LazyValue> InMemoryPersistentStore::lazyValue(const NSManagedObjectID &objectID,
                                                                               int slot, NSError *error)
{
    const auto found = row(objectID, error);
    if (!found->snapshot) {
        return LazyValue{};
    }
    return LazyValue{found->snapshot->valueAt(slot), found->snapshot->version(), true};
}

std::optional<QList<NSManagedObjectID>> InMemoryPersistentStore::targets(const NSManagedObjectID &objectID,
                                                                         const NSRelationshipDescription *relationship,
                                                                         NSError * /*error*/)
{
    const std::lock_guard lock(m_mutex);
    return targetsOf(objectID, relationship);
}

std::optional<QHash<NSManagedObjectID, QList<NSManagedObjectID>>>
InMemoryPersistentStore::targetsForObjects(const QList<NSManagedObjectID> &objectIDs,
                                           const NSRelationshipDescription *relationship, NSError * /*error*/)
{
    const std::lock_guard lock(m_mutex);
    QHash<NSManagedObjectID, QList<NSManagedObjectID>> found;
    for (const NSManagedObjectID &objectID : objectIDs) {
        found.insert(objectID, targetsOf(objectID, relationship));
    }
    return found;
}

void InMemoryPersistentStore::allocate(const QList<NSManagedObjectID> &temporaryIDs,
                                       QHash<NSManagedObjectID, NSManagedObjectID> *permanent)
{
    for (const NSManagedObjectID &objectID : temporaryIDs) {
        if (objectID.isTemporaryID()) {
            permanent->insert(objectID,
                              NSManagedObjectID(objectID.entity(), ++m_lastKeys[objectID.entity()->rootEntity()]));
        }
    }
}

void InMemoryPersistentStore::removeRow(const NSManagedObjectID &objectID)
{
    const auto *root = objectID.entity()->rootEntity();
    m_rows[root].remove(objectID.key());
    for (auto joins = m_joins.begin(); joins != m_joins.end(); ++joins) {
        const bool isSource = joins.key()->entity->rootEntity() == root;
        const bool isTarget = joins.key()->destinationEntity->rootEntity() == root;
        joins.value().removeIf([&](const std::pair<qint64, qint64> &pair) {
            return (isSource && pair.first == objectID.key()) || (isTarget && pair.second == objectID.key());
        });
    }
    for (Rows &rows : m_rows) {
        for (StoredRow &row : rows) {
            for (const NSRelationshipDescription &relationship : row.objectID.entity()->relationships()) {
                if (!relationship.isToMany && relationship.destinationEntity->rootEntity() == root &&
                    row.snapshot->targetKeyAt(relationship.slot) == objectID.key()) {
                    row.snapshot.edit()->setTargetAt(relationship.slot, {});
                }
            }
        }
    }
}

SaveResult InMemoryPersistentStore::save(const SaveRequest &request)
{
    const std::lock_guard lock(m_mutex);
    SaveResult result;
    const auto stored = [this](const NSManagedObjectID &objectID) -> StoredRow {
        return m_rows.value(objectID.entity()->rootEntity()).value(objectID.key());
    };
    for (const SaveRequest::Update &update : request.updates) {
        const StoredRow row = stored(update.objectID);
        if (!row.snapshot || row.snapshot->version() != update.expectedVersion) {
            result.conflicts.append({update.objectID, row.snapshot});
        }
    }
    for (const SaveRequest::Deletion &deletion : request.deletions) {
        const StoredRow row = stored(deletion.objectID);
        if (row.snapshot && !deletion.isForced && row.snapshot->version() != deletion.expectedVersion) {
            result.conflicts.append({deletion.objectID, row.snapshot});
        }
    }
    if (!result.conflicts.isEmpty()) {
        result.outcome = SaveResult::Outcome::Conflicts;
        return result;
    }
    QList<NSManagedObjectID> temporaryIDs;
    for (const SaveRequest::Insertion &insertion : request.insertions) {
        temporaryIDs.append(insertion.temporaryID);
    }
    allocate(temporaryIDs, &result.permanentIDs);
    const auto permanent = [&result](const NSManagedObjectID &objectID) {
        return objectID.isTemporaryID() ? result.permanentIDs.value(objectID) : objectID;
    };
    const auto resolved = [&permanent](RowSnapshotRef row, qint64 version) {
        RowSnapshot *edited = row.edit();
        edited->setVersion(version);
        for (const NSRelationshipDescription &relationship : edited->entity()->relationships()) {
            if (!relationship.isToMany && edited->targetKeyAt(relationship.slot) < 0) {
                edited->setTargetAt(relationship.slot, permanent(edited->targetAt(relationship.slot)));
            }
        }
        return row;
    };
    for (const SaveRequest::Deletion &deletion : request.deletions) {
        removeRow(deletion.objectID);
    }
    for (const SaveRequest::Update &update : request.updates) {
        StoredRow row = stored(update.objectID);
        RowSnapshot *edited = row.snapshot.edit();
        for (int slot = 0; slot < edited->entity()->slotCount(); ++slot) {
            if (!update.changedSlots[static_cast<size_t>(slot)]) {
                continue;
            }
            if (edited->entity()->slotLayout(slot).relationship != nullptr) {
                edited->setTargetAt(slot, update.row->targetAt(slot));
            } else {
                edited->setValueAt(slot, update.row->valueAt(slot));
            }
        }
        row.snapshot = resolved(row.snapshot, update.expectedVersion + 1);
        m_rows[update.objectID.entity()->rootEntity()].insert(update.objectID.key(), row);
        result.versions.insert(update.objectID, update.expectedVersion + 1);
    }
    for (const SaveRequest::Insertion &insertion : request.insertions) {
        const NSManagedObjectID objectID = permanent(insertion.temporaryID);
        m_rows[objectID.entity()->rootEntity()].insert(objectID.key(), {objectID, resolved(insertion.row, 1)});
        result.versions.insert(objectID, 1);
    }
    for (const JoinChange &change : request.joinChanges) {
        const std::pair pair(permanent(change.source).key(), permanent(change.target).key());
        if (change.isInsertion) {
            m_joins[change.relationship].insert(pair);
        } else {
            m_joins[change.relationship].remove(pair);
        }
    }
    ++m_changeCounter;
    result.outcome = SaveResult::Outcome::Saved;
    return result;
}

std::optional<QHash<NSManagedObjectID, NSManagedObjectID>>
InMemoryPersistentStore::reserveIdentities(const QList<NSManagedObjectID> &temporaryIDs, NSError * /*error*/)
{
    const std::lock_guard lock(m_mutex);
    QHash<NSManagedObjectID, NSManagedObjectID> permanent;
    allocate(temporaryIDs, &permanent);
    return permanent;
}

bool InMemoryPersistentStore::enumerateLazyValues(const NSEntityDescription *entity, int slot, const LazyVisitor &visit,
                                                  NSError * /*error*/)
{
    Rows rows;
    {
        const std::lock_guard lock(m_mutex);
        rows = m_rows.value(entity->rootEntity());
    }
    for (const StoredRow &row : std::as_const(rows)) {
        if (row.objectID.entity()->isKindOfEntity(entity) &&
            !visit(row.objectID, row.snapshot->version(), row.snapshot->valueAt(slot))) {
            break;
        }
    }
    return true;
}

bool InMemoryPersistentStore::enumerateRows(const NSEntityDescription *entity, const QStringList & /*attributes*/,
                                            const RowVisitor &visit, NSError * /*error*/)
{
    Rows rows;
    {
        const std::lock_guard lock(m_mutex);
        rows = m_rows.value(entity->rootEntity());
    }
    for (const StoredRow &row : std::as_const(rows)) {
        if (row.objectID.entity()->isKindOfEntity(entity) && !visit(row)) {
            break;
        }
    }
    return true;
}

std::optional<qint64> InMemoryPersistentStore::changeCounter(NSError * /*error*/)
{
    const std::lock_guard lock(m_mutex);
    return m_changeCounter;
}

std::optional<QStringList> InMemoryPersistentStore::integrityProblems(NSError * /*error*/)
{
    return QStringList();
}

} // namespace quib
