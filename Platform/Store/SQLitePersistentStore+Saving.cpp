#include "SQLNames.h"
#include "SQLiteDatabase_p.h"
#include "SQLitePersistentStore.h"
#include "SQLitePersistentStore_p.h"
#include "StoreObserver.h"

#include <Text/Folding.h>

using namespace Qt::StringLiterals;

namespace quib {

bool SQLitePersistentStore::allocateKeys(const QList<NSManagedObjectID> &temporaryIDs,
                                         QHash<NSManagedObjectID, NSManagedObjectID> *permanentIDs, NSError *error)
{
    QHash<const NSEntityDescription *, qint64> counts;
    for (const NSManagedObjectID &objectID : temporaryIDs) {
        if (objectID.isTemporaryID()) {
            ++counts[objectID.entity()->rootEntity()];
        }
    }
    QHash<const NSEntityDescription *, qint64> nextKeys;
    for (auto entry = counts.cbegin(); entry != counts.cend(); ++entry) {
        SQLiteStatement update =
            m_database->prepare("UPDATE sqlite_sequence SET seq = seq + ? WHERE name = ? RETURNING seq", error);
        if (!update) {
            return false;
        }
        update.bindInteger(1, entry.value());
        update.bindText(2, entry.key()->name());
        if (update.step() != SQLITE_ROW) {
            return m_database->fail(error, "count rows");
        }
        nextKeys.insert(entry.key(), update.integer(0) - entry.value() + 1);
        if (update.step() != SQLITE_DONE) {
            return m_database->fail(error, "count rows");
        }
    }
    for (const NSManagedObjectID &objectID : temporaryIDs) {
        if (objectID.isTemporaryID()) {
            permanentIDs->insert(objectID,
                                 NSManagedObjectID(objectID.entity(), nextKeys[objectID.entity()->rootEntity()]++));
        }
    }
    return true;
}

std::optional<QHash<NSManagedObjectID, NSManagedObjectID>>
SQLitePersistentStore::reserveIdentities(const QList<NSManagedObjectID> &temporaryIDs, NSError *error)
{
    const std::lock_guard lock(m_mutex);
    if (m_damage.isSet()) {
        NSError::fill(error, m_damage.domain(), m_damage.code(), m_damage.localizedDescription(), m_damage.causeCode());
        return std::nullopt;
    }
    QHash<NSManagedObjectID, NSManagedObjectID> permanentIDs;
    SQLiteTransaction transaction(*m_database);
    if (!transaction.begin(error) || !allocateKeys(temporaryIDs, &permanentIDs, error) || !transaction.commit(error)) {
        return std::nullopt;
    }
    return permanentIDs;
}

/// One save inside its transaction. Every step gives false on failure; conflicts are gathered and are no failure.
class SQLitePersistentStore::Saver
{
public:
    Saver(SQLitePersistentStore &store, const SaveRequest &request, SaveResult &result)
        : m_store(store)
        , m_database(*store.m_database)
        , m_request(request)
        , m_result(result)
    {
    }

    bool run()
    {
        QList<NSManagedObjectID> temporaryIDs;
        for (const SaveRequest::Insertion &insertion : m_request.insertions) {
            temporaryIDs.append(insertion.temporaryID);
        }
        if (!m_store.allocateKeys(temporaryIDs, &m_result.permanentIDs, &m_result.error)) {
            return false;
        }
        // Deletions first: what they leave behind is cleared before new rows refer to anything.
        for (const SaveRequest::Deletion &deletion : m_request.deletions) {
            if (!remove(deletion)) {
                return false;
            }
        }
        for (const SaveRequest::Update &update : m_request.updates) {
            if (!this->update(update)) {
                return false;
            }
        }
        if (!m_result.conflicts.isEmpty()) {
            return true; // nothing will be committed
        }
        for (const SaveRequest::Insertion &insertion : m_request.insertions) {
            if (!insert(insertion)) {
                return false;
            }
        }
        for (const JoinChange &change : m_request.joinChanges) {
            if (!join(change)) {
                return false;
            }
        }
        return true;
    }

private:
    [[nodiscard]] qint64 keyOf(qint64 key, const NSEntityDescription *entity) const
    {
        if (key < 0 || m_hasMovedReserved) {
            const NSManagedObjectID named(entity, key);
            return m_result.permanentIDs.value(named, key < 0 ? NSManagedObjectID() : named).key();
        }
        return key;
    }

    bool done(SQLiteStatement &statement)
    {
        return statement.step() == SQLITE_DONE || m_database.fail(&m_result.error, "save");
    }

    bool runWithKey(const QByteArray &sql, qint64 key)
    {
        SQLiteStatement statement = m_database.prepare(sql, &m_result.error);
        if (!statement) {
            return false;
        }
        statement.bindInteger(1, key);
        return done(statement);
    }

    void bindSlot(SQLiteStatement &statement, int index, const RowSnapshot &row, int slot)
    {
        const auto &layout = row.entity()->slotLayout(slot);
        if (layout.relationship != nullptr) {
            const qint64 key = keyOf(row.targetKeyAt(slot), layout.relationship->destinationEntity);
            if (key == 0) {
                statement.bindNull(index);
            } else {
                statement.bindInteger(index, key);
            }
        } else if (layout.type == NSAttributeType::String) {
            if (row.isNull(slot)) {
                statement.bindNull(index);
            } else {
                statement.bindText(index, row.stringAt(slot));
            }
        } else {
            statement.bind(index, row.valueAt(slot));
        }
    }

    static QString nameOfSlot(const NSEntityDescription *entity, int slot)
    {
        const auto &attributes = entity->attributes();
        return static_cast<size_t>(slot) < attributes.size() ? attributes[static_cast<size_t>(slot)].name
                                                             : entity->slotLayout(slot).relationship->name;
    }

    static const NSAttributeDescription *attributeOfSlot(const NSEntityDescription *entity, int slot)
    {
        const auto &attributes = entity->attributes();
        return static_cast<size_t>(slot) < attributes.size() ? &attributes[static_cast<size_t>(slot)] : nullptr;
    }

    bool conflict(const NSManagedObjectID &objectID, const std::vector<bool> &changedSlots)
    {
        auto stored = m_store.readRowWithKey(objectID, &m_result.error);
        if (!stored) {
            return false;
        }
        if (stored->snapshot) {
            const auto *entity = stored->snapshot->entity();
            for (int slot = 0; static_cast<size_t>(slot) < changedSlots.size() && slot < entity->slotCount(); ++slot) {
                const auto *attribute = attributeOfSlot(entity, slot);
                if (!changedSlots[static_cast<size_t>(slot)] || attribute == nullptr || !attribute->isLazy) {
                    continue;
                }
                const auto lazy = m_store.readLazyValue(stored->objectID, slot, &m_result.error);
                if (!lazy) {
                    return false;
                }
                stored->snapshot.edit()->setValueAt(slot, lazy->value);
            }
        }
        m_result.conflicts.append({objectID, stored->snapshot});
        return true;
    }

    bool remove(const SaveRequest::Deletion &deletion)
    {
        const NSManagedObjectID &objectID = deletion.objectID;
        const QByteArray table = SQLNames::table(objectID.entity());
        SQLiteStatement statement =
            m_database.prepare("DELETE FROM " + table + " WHERE _pk = ?1 AND (?3 OR _version = ?2)", &m_result.error);
        if (!statement) {
            return false;
        }
        statement.bindInteger(1, objectID.key());
        statement.bindInteger(2, deletion.expectedVersion);
        statement.bindInteger(3, deletion.isForced ? 1 : 0);
        if (!done(statement)) {
            return false;
        }
        if (m_database.changes() == 0) {
            const auto stored = m_store.readRowWithKey(objectID, &m_result.error);
            if (!stored) {
                return false;
            }
            if (stored->snapshot) {
                m_result.conflicts.append({objectID, stored->snapshot});
                return true;
            }
        }
        return clearTraces(objectID);
    }

    /// What a deleted row leaves in other tables: its lazy values, its joins, and keys that point at it.
    bool clearTraces(const NSManagedObjectID &objectID)
    {
        const auto *root = objectID.entity()->rootEntity();
        for (const auto &entity : m_store.m_model->entities()) {
            const bool isOwn = entity->rootEntity() == root;
            if (isOwn && entity->superentity() == nullptr) {
                for (const NSAttributeDescription &attribute : entity->attributes()) {
                    if (attribute.isLazy &&
                        !runWithKey("DELETE FROM " + SQLNames::lazyTable(root, attribute.name) + " WHERE _pk = ?",
                                    objectID.key())) {
                        return false;
                    }
                }
            }
            if (entity->superentity() != nullptr) {
                continue; // its parent's relationships are the ones of the table
            }
            for (const NSRelationshipDescription &relationship : entity->relationships()) {
                if (isOwn && relationship.isManyToMany() &&
                    !runWithKey("DELETE FROM " + SQLNames::joinTable(&relationship) + " WHERE " +
                                    SQLNames::joinOwnColumn(&relationship) + " = ?",
                                objectID.key())) {
                    return false;
                }
                if (!relationship.isToMany && relationship.destinationEntity->rootEntity() == root &&
                    !runWithKey("UPDATE " + SQLNames::table(entity.get()) + " SET " +
                                    SQLNames::column(relationship.name) + " = NULL WHERE " +
                                    SQLNames::column(relationship.name) + " = ?",
                                objectID.key())) {
                    return false;
                }
            }
        }
        return true;
    }

    bool update(const SaveRequest::Update &update)
    {
        const NSManagedObjectID &objectID = update.objectID;
        const auto *entity = update.row->entity();
        QByteArray assignments = "_version = _version + 1";
        std::vector<int> boundSlots;
        std::vector<int> foldedSlots;
        std::vector<int> lazySlots;
        for (int slot = 0; slot < entity->slotCount() && static_cast<size_t>(slot) < update.changedSlots.size();
             ++slot) {
            if (!update.changedSlots[static_cast<size_t>(slot)]) {
                continue;
            }
            const auto *attribute = attributeOfSlot(entity, slot);
            if (attribute != nullptr && attribute->isLazy) {
                lazySlots.push_back(slot);
                continue;
            }
            assignments += ", " + SQLNames::column(nameOfSlot(entity, slot)) + " = ?";
            boundSlots.push_back(slot);
        }
        for (const int slot : boundSlots) {
            if (const auto *attribute = attributeOfSlot(entity, slot);
                attribute != nullptr && attribute->isFoldIndexed) {
                assignments += ", " + SQLNames::foldedColumn(attribute->name) + " = ?";
                foldedSlots.push_back(slot);
            }
        }
        SQLiteStatement statement = m_database.prepare("UPDATE " + SQLNames::table(entity) + " SET " + assignments +
                                                           " WHERE _pk = ? AND _version = ?",
                                                       &m_result.error);
        if (!statement) {
            return false;
        }
        int index = 1;
        for (const int slot : boundSlots) {
            bindSlot(statement, index++, *update.row, slot);
        }
        for (const int slot : foldedSlots) {
            bindFolded(statement, index++, *update.row, slot);
        }
        statement.bindInteger(index++, objectID.key());
        statement.bindInteger(index, update.expectedVersion);
        if (!done(statement)) {
            return false;
        }
        if (m_database.changes() == 0) {
            return conflict(objectID, update.changedSlots);
        }
        m_result.versions.insert(objectID, update.expectedVersion + 1);
        for (const int slot : lazySlots) {
            if (!writeLazy(objectID.key(), *update.row, slot)) {
                return false;
            }
        }
        return true;
    }

    static void bindFolded(SQLiteStatement &statement, int index, const RowSnapshot &row, int slot)
    {
        if (row.isNull(slot)) {
            statement.bindNull(index);
            return;
        }
        const QByteArray folded = foldedUtf8(row.stringAt(slot));
        statement.bindBytes(index, folded.isNull() ? QByteArray("") : folded);
    }

    bool writeLazy(qint64 key, const RowSnapshot &row, int slot)
    {
        const auto *attribute = attributeOfSlot(row.entity(), slot);
        SQLiteStatement statement = m_database.prepare(
            "INSERT INTO " + SQLNames::lazyTable(row.entity(), attribute->name) + " (_pk, " +
                SQLNames::column(attribute->name) + ") VALUES (?1, ?2) ON CONFLICT (_pk) DO UPDATE SET " +
                SQLNames::column(attribute->name) + " = ?2",
            &m_result.error);
        if (!statement) {
            return false;
        }
        statement.bindInteger(1, key);
        bindSlot(statement, 2, row, slot);
        return done(statement);
    }

    /// Looks for a row with the same unique value, which another writer inserted since this one looked.
    bool adoptExistingRow(const SaveRequest::Insertion &insertion, bool *isAdopted)
    {
        const auto *entity = insertion.row->entity();
        for (const NSAttributeDescription &attribute : entity->attributes()) {
            if (!attribute.isUnique || insertion.row->isNull(attribute.slot) || insertion.isReinsertion) {
                continue;
            }
            SQLiteStatement statement =
                m_database.prepare("SELECT _pk, _version FROM " + SQLNames::table(entity) + " WHERE " +
                                       SQLNames::foldedColumn(attribute.name) + " = ? ORDER BY _pk LIMIT 1",
                                   &m_result.error);
            if (!statement) {
                return false;
            }
            bindFolded(statement, 1, *insertion.row, attribute.slot);
            const int result = statement.step();
            if (result == SQLITE_ROW) {
                const NSManagedObjectID existing(entity, statement.integer(0));
                if (m_result.versions.contains(existing) && !m_result.adoptedIDs.contains(existing)) {
                    return true; // of this very save: its writer knows what it does
                }
                m_result.permanentIDs.insert(insertion.temporaryID, existing);
                m_hasMovedReserved = m_hasMovedReserved || !insertion.temporaryID.isTemporaryID();
                m_result.versions.insert(existing, statement.integer(1));
                m_result.adoptedIDs.insert(existing);
                *isAdopted = true;
                return true;
            }
            if (result != SQLITE_DONE) {
                return m_database.fail(&m_result.error, "save");
            }
        }
        return true;
    }

    bool insert(const SaveRequest::Insertion &insertion)
    {
        const auto *entity = insertion.row->entity();
        bool isAdopted = false;
        if (!adoptExistingRow(insertion, &isAdopted)) {
            return false;
        }
        if (isAdopted) {
            return true;
        }
        const InsertPlan &plan = insertPlan(entity);
        SQLiteStatement statement = m_database.prepare(plan.sql, &m_result.error);
        if (!statement) {
            return false;
        }
        const NSManagedObjectID objectID = insertion.temporaryID.isTemporaryID()
                                               ? m_result.permanentIDs.value(insertion.temporaryID)
                                               : insertion.temporaryID;
        int index = 1;
        statement.bindInteger(index++, objectID.key());
        if (plan.hasEntityColumn) {
            statement.bindInteger(index++, entity->code());
        }
        for (const int slot : plan.slotIndexes) {
            bindSlot(statement, index++, *insertion.row, slot);
        }
        for (const int slot : plan.foldedSlots) {
            bindFolded(statement, index++, *insertion.row, slot);
        }
        if (!done(statement)) {
            return false;
        }
        m_result.versions.insert(objectID, 1);
        for (const int slot : plan.lazySlots) {
            if (!insertion.row->isNull(slot) && !writeLazy(objectID.key(), *insertion.row, slot)) {
                return false;
            }
        }
        return true;
    }

    struct InsertPlan
    {
        QByteArray sql;
        bool hasEntityColumn = false;
        std::vector<int> slotIndexes;
        std::vector<int> foldedSlots;
        std::vector<int> lazySlots;
    };
    const InsertPlan &insertPlan(const NSEntityDescription *entity)
    {
        InsertPlan &plan = m_insertPlans[entity];
        if (!plan.sql.isEmpty()) {
            return plan;
        }
        plan.hasEntityColumn = SQLNames::hasEntityColumn(entity);
        QByteArray columns = plan.hasEntityColumn ? "_pk, _version, _entity" : "_pk, _version";
        QByteArray marks = plan.hasEntityColumn ? "?, 1, ?" : "?, 1";
        for (int slot = 0; slot < entity->slotCount(); ++slot) {
            const auto *attribute = attributeOfSlot(entity, slot);
            if (attribute != nullptr && attribute->isLazy) {
                plan.lazySlots.push_back(slot);
                continue;
            }
            columns += ", " + SQLNames::column(nameOfSlot(entity, slot));
            marks += ", ?";
            plan.slotIndexes.push_back(slot);
        }
        for (const int slot : plan.slotIndexes) {
            if (const auto *attribute = attributeOfSlot(entity, slot);
                attribute != nullptr && attribute->isFoldIndexed) {
                columns += ", " + SQLNames::foldedColumn(attribute->name);
                marks += ", ?";
                plan.foldedSlots.push_back(slot);
            }
        }
        plan.sql = "INSERT INTO " + SQLNames::table(entity) + " (" + columns + ") VALUES (" + marks + ')';
        return plan;
    }

    bool join(const JoinChange &change)
    {
        const QByteArray table = SQLNames::joinTable(change.relationship);
        const QByteArray sql = change.isInsertion
                                   ? QByteArray("INSERT OR IGNORE INTO " + table + " (source, target) VALUES (?, ?)")
                                   : QByteArray("DELETE FROM " + table + " WHERE source = ? AND target = ?");
        SQLiteStatement statement = m_database.prepare(sql, &m_result.error);
        if (!statement) {
            return false;
        }
        statement.bindInteger(1, keyOf(change.source.key(), change.source.entity()));
        statement.bindInteger(2, keyOf(change.target.key(), change.target.entity()));
        return done(statement);
    }

    SQLitePersistentStore &m_store;
    SQLiteDatabase &m_database;
    const SaveRequest &m_request;
    SaveResult &m_result;
    QHash<const NSEntityDescription *, InsertPlan> m_insertPlans;
    /// An identity reserved before became another writer's row, so that permanent keys have to be looked up too.
    bool m_hasMovedReserved = false;
};

SaveResult SQLitePersistentStore::save(const SaveRequest &request)
{
    const std::lock_guard lock(m_mutex);
    SaveResult result = saveLocked(request);
    // Conflicts are settled and saved anew; only then is anything known.
    const auto observer = result.outcome == SaveResult::Outcome::Conflicts ? nullptr : m_observer.lock();
    if (observer) {
        observer->storeDidSave(result.outcome == SaveResult::Outcome::Saved ? NSError() : result.error);
    }
    return result;
}

SaveResult SQLitePersistentStore::saveLocked(const SaveRequest &request)
{
    SaveResult result;
    if (m_damage.isSet()) {
        result.error = m_damage;
        return result;
    }
    SQLiteTransaction transaction(*m_database);
    if (!transaction.begin(&result.error)) {
        return result;
    }
    if (!Saver(*this, request, result).run()) {
        result.conflicts.clear();
        return result;
    }
    if (!result.conflicts.isEmpty()) {
        result.outcome = SaveResult::Outcome::Conflicts;
        return result;
    }
    if (!transaction.commit(&result.error)) {
        return result;
    }
    ++m_changeCounter;
    result.outcome = SaveResult::Outcome::Saved;
    return result;
}

} // namespace quib
