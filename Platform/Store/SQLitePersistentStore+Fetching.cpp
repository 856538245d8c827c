#include "SQLNames.h"
#include "SQLPredicateCompiler.h"
#include "SQLiteDatabase_p.h"
#include "SQLitePersistentStore.h"
#include "SQLitePersistentStore_p.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// From so many objects on, all targets between the first and the last of them are read at once.
constexpr qsizetype kFewestForScan = 256;

} // namespace

const NSEntityDescription *SQLitePersistentStore::requestedEntity(const NSFetchRequest &request, NSError *error) const
{
    const auto *entity = m_model->entityNamed(request.entityName);
    if (entity == nullptr) {
        m_database->fail(error, NSCocoaErrorCode::FileReadUnknown, u"no entity \"%1\""_s.arg(request.entityName));
    }
    return entity;
}

SQLitePersistentStore::ColumnPlan SQLitePersistentStore::planFor(const NSEntityDescription *entity,
                                                                 const QStringList &properties) const
{
    ColumnPlan plan;
    plan.entity = entity;
    plan.hasEntityColumn = SQLNames::hasEntityColumn(entity);
    plan.columns = "t0._pk, t0._version";
    if (plan.hasEntityColumn) {
        plan.columns += ", t0._entity";
    }
    QStringList names;
    for (const auto *candidate : entity->withSubentities()) {
        for (const NSAttributeDescription &attribute : candidate->attributes()) {
            if (!attribute.isLazy && !names.contains(attribute.name) &&
                (properties.isEmpty() || properties.contains(attribute.name))) {
                names.append(attribute.name);
            }
        }
        for (const NSRelationshipDescription &relationship : candidate->relationships()) {
            if (!relationship.isToMany && !names.contains(relationship.name) &&
                (properties.isEmpty() || properties.contains(relationship.name))) {
                names.append(relationship.name);
            }
        }
    }
    for (const QString &name : std::as_const(names)) {
        plan.columns += ", t0." + SQLNames::column(name);
    }
    for (const auto *candidate : entity->withSubentities()) {
        std::vector<int> indexes;
        quint64 slotMask = 0;
        for (const QString &name : std::as_const(names)) {
            if (const auto *attribute = candidate->attributeNamed(name)) {
                indexes.push_back(attribute->slot);
            } else {
                const auto *relationship = candidate->relationshipNamed(name);
                indexes.push_back(relationship != nullptr ? relationship->slot : -1);
            }
            if (indexes.back() >= 0) {
                slotMask |= quint64{1} << indexes.back();
            }
        }
        // Whole rows have room for what is read later, narrow ones are given up for whole ones then.
        plan.slotsOf.push_back(
            {candidate, std::move(indexes),
             properties.isEmpty() ? candidate->wholeRowLayout() : candidate->rowLayoutOfSlots(slotMask)});
    }
    plan.repeated.resize(static_cast<size_t>(names.size()) + 3);
    return plan;
}

StoredRow SQLitePersistentStore::readRow(const SQLiteStatement &statement, const ColumnPlan &plan) const
{
    const qint64 key = statement.integer(0);
    const auto *entity = plan.hasEntityColumn ? entityWithCode(statement.integer(2), plan.entity) : plan.entity;
    const auto *slotsOf = &plan.slotsOf.front();
    for (const auto &candidate : plan.slotsOf) {
        if (candidate.entity == entity) {
            slotsOf = &candidate;
        }
    }
    StoredRow stored{NSManagedObjectID(slotsOf->entity, key), RowSnapshot::makeNarrow(slotsOf->layout)};
    RowSnapshot *row = stored.snapshot.fill();
    row->setVersion(statement.integer(1));
    int column = plan.hasEntityColumn ? 3 : 2;
    for (const int slot : slotsOf->indexes) {
        if (slot >= 0) {
            readSlot(statement, column, *row, slot, plan.repeated[static_cast<size_t>(column)]);
        }
        ++column;
    }
    return stored;
}

SQLiteStatement SQLitePersistentStore::select(const NSFetchRequest &request, const NSEntityDescription *entity,
                                              const QByteArray &columns, std::optional<TieOrder> ties, NSError *error)
{
    QByteArray sql = "SELECT " + columns + " FROM " + SQLNames::table(entity) + " t0";
    QList<Value> bindings;
    QByteArray condition;
    if (SQLNames::hasEntityColumn(entity)) {
        QByteArray codes;
        for (const auto *candidate :
             request.includesSubentities ? entity->withSubentities() : QList<const NSEntityDescription *>{entity}) {
            codes += (codes.isEmpty() ? "" : ", ") + QByteArray::number(candidate->code());
        }
        condition = "t0._entity IN (" + codes + ')';
    }
    if (request.predicate) {
        const auto compiled = compilePredicate(*request.predicate, entity, error);
        if (!compiled) {
            return {};
        }
        condition += (condition.isEmpty() ? "" : " AND ") + compiled->sql;
        bindings = compiled->bindings;
    }
    if (!condition.isEmpty()) {
        sql += " WHERE " + condition;
    }
    if (ties) {
        const auto order = compileOrder(request.sortDescriptors, entity, *ties, error);
        if (!order) {
            return {};
        }
        sql += " ORDER BY " + *order;
    }
    if (request.fetchLimit > 0) {
        sql += " LIMIT ?";
        bindings.append(Value(request.fetchLimit));
    }
    SQLiteStatement statement = m_database->prepare(sql, error);
    if (statement) {
        for (qsizetype i = 0; i < bindings.size(); ++i) {
            statement.bind(static_cast<int>(i) + 1, bindings[i]);
        }
    }
    return statement;
}

namespace {

/// The slots that a whole fetch is ordered by, where all are numbers or dates that its rows hold; else nothing.
///
/// OPTIMIZATION: an index that gives such an order does not give that of the keys, and SQLite would sort every row's
/// columns once more for it. Rows that tie are few, and put in order here.
std::vector<int> slotsOfNumericOrder(const NSFetchRequest &request, const NSEntityDescription *entity)
{
    if (request.fetchLimit > 0 || SQLNames::hasEntityColumn(entity)) {
        return {};
    }
    std::vector<int> slotsOfOrder;
    for (const NSSortDescriptor &descriptor : request.sortDescriptors) {
        const auto *attribute = entity->attributeNamed(descriptor.key());
        const bool isRead =
            attribute != nullptr && !attribute->isLazy &&
            (request.propertiesToFetch.isEmpty() || request.propertiesToFetch.contains(attribute->name));
        if (!isRead || attribute->type == NSAttributeType::String || attribute->type == NSAttributeType::Binary) {
            return {};
        }
        slotsOfOrder.push_back(attribute->slot);
    }
    return slotsOfOrder;
}

bool isTied(const StoredRow &a, const StoredRow &b, const std::vector<int> &slotsOfOrder)
{
    return std::all_of(slotsOfOrder.begin(), slotsOfOrder.end(), [&](int slot) {
        const RowSnapshot &left = *a.snapshot;
        const RowSnapshot &right = *b.snapshot;
        if (left.isNull(slot) || right.isNull(slot)) {
            return left.isNull(slot) == right.isNull(slot);
        }
        const auto type = left.entity()->slotLayout(slot).type;
        if (type == NSAttributeType::Double || type == NSAttributeType::Date) {
            return left.doubleAt(slot) == right.doubleAt(slot);
        }
        return type == NSAttributeType::Boolean ? left.boolAt(slot) == right.boolAt(slot)
                                                : left.integerAt(slot) == right.integerAt(slot);
    });
}

void sortByKey(QList<StoredRow> &rows, qsizetype begin, qsizetype end)
{
    if (end - begin > 1) {
        std::sort(rows.begin() + begin, rows.begin() + end,
                  [](const StoredRow &a, const StoredRow &b) { return a.objectID.key() < b.objectID.key(); });
    }
}

} // namespace

NSFetchRequest SQLitePersistentStore::withoutIdleOrder(NSFetchRequest request, const NSEntityDescription *entity) const
{
    const auto isIdle = [this, entity](const NSSortDescriptor &descriptor) {
        const auto *attribute = entity->attributeNamed(descriptor.key());
        if (attribute == nullptr || !attribute->isIndexed) {
            return false;
        }
        const auto exists = m_database->scalar("SELECT EXISTS(SELECT 1 FROM " + SQLNames::table(entity) + " WHERE " +
                                                   SQLNames::column(attribute->name) + " IS NOT NULL)",
                                               nullptr);
        return exists && valueOr<QString>(*exists) == u"0";
    };
    request.sortDescriptors.removeIf(isIdle);
    return request;
}

std::optional<QList<StoredRow>> SQLitePersistentStore::fetch(const NSFetchRequest &asked, NSError *error)
{
    const std::lock_guard lock(m_mutex);
    const auto *entity = requestedEntity(asked, error);
    if (entity == nullptr) {
        return std::nullopt;
    }
    const NSFetchRequest request = withoutIdleOrder(asked, entity);
    const ColumnPlan plan = planFor(entity, request.propertiesToFetch);
    const std::vector<int> tieSlots = slotsOfNumericOrder(request, entity);
    SQLiteStatement statement =
        select(request, entity, plan.columns, tieSlots.empty() ? TieOrder::ByKey : TieOrder::Any, error);
    if (!statement) {
        return std::nullopt;
    }
    QList<StoredRow> rows;
    qsizetype tied = 0; // where the rows begin that are equal to the last one
    int result = statement.step();
    for (; result == SQLITE_ROW; result = statement.step()) {
        rows.append(readRow(statement, plan));
        if (rows.size() > 1 && !isTied(rows.constLast(), rows.at(rows.size() - 2), tieSlots)) {
            sortByKey(rows, tied, rows.size() - 1);
            tied = rows.size() - 1;
        }
    }
    if (!tieSlots.empty()) {
        sortByKey(rows, tied, rows.size());
    }
    if (result != SQLITE_DONE) {
        m_database->fail(error, "read");
        return std::nullopt;
    }
    return rows;
}

std::optional<QList<NSManagedObjectID>> SQLitePersistentStore::fetchIDs(const NSFetchRequest &request, NSError *error)
{
    const std::lock_guard lock(m_mutex);
    const auto *entity = requestedEntity(request, error);
    if (entity == nullptr) {
        return std::nullopt;
    }
    const bool hasCode = SQLNames::hasEntityColumn(entity);
    // All rows in the order of their keys: asking for that order would keep SQLite from the narrow index that covers
    // the condition, and to sort numbers afterwards costs nothing beside it.
    const bool isSortedHere = request.sortDescriptors.isEmpty() && request.fetchLimit <= 0;
    SQLiteStatement statement = select(request, entity, hasCode ? "t0._pk, t0._entity" : "t0._pk",
                                       isSortedHere ? std::nullopt : std::optional(TieOrder::ByKey), error);
    if (!statement) {
        return std::nullopt;
    }
    QList<NSManagedObjectID> identities;
    int result = statement.step();
    for (; result == SQLITE_ROW; result = statement.step()) {
        identities.append(
            NSManagedObjectID(hasCode ? entityWithCode(statement.integer(1), entity) : entity, statement.integer(0)));
    }
    if (result != SQLITE_DONE) {
        m_database->fail(error, "read");
        return std::nullopt;
    }
    if (isSortedHere) {
        std::sort(identities.begin(), identities.end(),
                  [](const NSManagedObjectID &a, const NSManagedObjectID &b) { return a.key() < b.key(); });
    }
    return identities;
}

std::optional<QList<RowVersion>> SQLitePersistentStore::rowVersions(const QString &entityName, NSError *error)
{
    const std::lock_guard lock(m_mutex);
    const NSFetchRequest request{.entityName = entityName};
    const auto *entity = requestedEntity(request, error);
    if (entity == nullptr) {
        return std::nullopt;
    }
    const bool hasCode = SQLNames::hasEntityColumn(entity);
    SQLiteStatement statement = select(
        request, entity, hasCode ? "t0._pk, t0._version, t0._entity" : "t0._pk, t0._version", TieOrder::ByKey, error);
    if (!statement) {
        return std::nullopt;
    }
    QList<RowVersion> versions;
    int result = statement.step();
    for (; result == SQLITE_ROW; result = statement.step()) {
        versions.append(
            {NSManagedObjectID(hasCode ? entityWithCode(statement.integer(2), entity) : entity, statement.integer(0)),
             statement.integer(1)});
    }
    if (result != SQLITE_DONE) {
        m_database->fail(error, "read");
        return std::nullopt;
    }
    return versions;
}

std::optional<qint64> SQLitePersistentStore::count(const NSFetchRequest &request, NSError *error)
{
    const std::lock_guard lock(m_mutex);
    const auto *entity = requestedEntity(request, error);
    if (entity == nullptr) {
        return std::nullopt;
    }
    // Up to a limit, rows are met one by one: whether there is any is known at the first.
    const bool isLimited = request.fetchLimit > 0;
    SQLiteStatement statement = select(request, entity, isLimited ? "1" : "COUNT(*)", /*ties=*/std::nullopt, error);
    if (!statement) {
        return std::nullopt;
    }
    qint64 met = 0;
    int result = statement.step();
    for (; isLimited && result == SQLITE_ROW; result = statement.step()) {
        ++met;
    }
    if (result != (isLimited ? SQLITE_DONE : SQLITE_ROW)) {
        m_database->fail(error, "count");
        return std::nullopt;
    }
    return isLimited ? met : statement.integer(0);
}

std::optional<QList<QList<Value>>>
SQLitePersistentStore::fetchDictionaries(const NSFetchRequest &request, const QStringList &attributes, NSError *error)
{
    const std::lock_guard lock(m_mutex);
    const auto *entity = requestedEntity(request, error);
    if (entity == nullptr) {
        return std::nullopt;
    }
    QByteArray columns;
    QList<const NSAttributeDescription *> wanted;
    for (const QString &name : attributes) {
        const auto *attribute = entity->attributeNamed(name);
        if (attribute == nullptr) {
            m_database->fail(error, NSCocoaErrorCode::FileReadUnknown,
                             u"%1 has no attribute \"%2\""_s.arg(entity->name(), name));
            return std::nullopt;
        }
        wanted.append(attribute);
        columns += columns.isEmpty() ? "" : ", ";
        if (attribute->isLazy) {
            columns += "(SELECT " + SQLNames::column(name) + " FROM " + SQLNames::lazyTable(entity, name) +
                       " l WHERE l._pk = t0._pk)";
        } else {
            columns += "t0." + SQLNames::column(name);
        }
    }
    SQLiteStatement statement = select(request, entity, columns.isEmpty() ? "1" : columns, TieOrder::ByKey, error);
    if (!statement) {
        return std::nullopt;
    }
    QList<QList<Value>> rows;
    int result = statement.step();
    for (; result == SQLITE_ROW; result = statement.step()) {
        QList<Value> row;
        for (qsizetype i = 0; i < wanted.size(); ++i) {
            row.append(readValue(statement, static_cast<int>(i), wanted[i]->type));
        }
        rows.append(row);
    }
    if (result != SQLITE_DONE) {
        m_database->fail(error, "read");
        return std::nullopt;
    }
    return rows;
}

std::optional<StoredRow> SQLitePersistentStore::readRowWithKey(const NSManagedObjectID &objectID, NSError *error)
{
    const auto *root = objectID.entity()->rootEntity();
    const ColumnPlan plan = planFor(root, {});
    SQLiteStatement statement = m_database->prepare(
        "SELECT " + plan.columns + " FROM " + SQLNames::table(root) + " t0 WHERE t0._pk = ?", error);
    if (!statement) {
        return std::nullopt;
    }
    statement.bindInteger(1, objectID.key());
    const int result = statement.step();
    if (result == SQLITE_ROW) {
        return readRow(statement, plan);
    }
    if (result != SQLITE_DONE) {
        m_database->fail(error, "read");
        return std::nullopt;
    }
    return StoredRow{objectID, {}};
}

std::optional<StoredRow> SQLitePersistentStore::row(const NSManagedObjectID &objectID, NSError *error)
{
    const std::lock_guard lock(m_mutex);
    return readRowWithKey(objectID, error);
}

std::optional<NSPersistentStore::LazyValue> SQLitePersistentStore::readLazyValue(const NSManagedObjectID &objectID,
                                                                                 int slot, NSError *error)
{
    const auto &attribute = objectID.entity()->attributes()[static_cast<size_t>(slot)];
    const auto *entity = objectID.entity();
    SQLiteStatement statement = m_database->prepare(
        "SELECT t0._version, l." + SQLNames::column(attribute.name) + " FROM " + SQLNames::table(entity) +
            " t0 LEFT JOIN " + SQLNames::lazyTable(entity, attribute.name) + " l ON l._pk = t0._pk WHERE t0._pk = ?",
        error);
    if (!statement) {
        return std::nullopt;
    }
    statement.bindInteger(1, objectID.key());
    const int result = statement.step();
    if (result == SQLITE_ROW) {
        return LazyValue{readValue(statement, 1, attribute.type), statement.integer(0), true};
    }
    if (result != SQLITE_DONE) {
        m_database->fail(error, "read");
        return std::nullopt;
    }
    return LazyValue{};
}

std::optional<NSPersistentStore::LazyValue> SQLitePersistentStore::lazyValue(const NSManagedObjectID &objectID,
                                                                             int slot, NSError *error)
{
    const std::lock_guard lock(m_mutex);
    return readLazyValue(objectID, slot, error);
}

std::optional<QList<NSManagedObjectID>> SQLitePersistentStore::targets(const NSManagedObjectID &objectID,
                                                                       const NSRelationshipDescription *relationship,
                                                                       NSError *error)
{
    const auto found = targetsForObjects({objectID}, relationship, error);
    return found ? std::optional(found->value(objectID)) : std::nullopt;
}

std::optional<QHash<NSManagedObjectID, QList<NSManagedObjectID>>>
SQLitePersistentStore::scannedTargets(const QList<NSManagedObjectID> &objectIDs,
                                      const NSRelationshipDescription *relationship, NSError *error)
{
    // A question costs some locks and looks at the folder, the more so without a journal: one for all, over the stretch
    // of keys that they lie in, and what was not asked for is passed over.
    const auto [first, last] =
        std::minmax_element(objectIDs.begin(), objectIDs.end(),
                            [](const NSManagedObjectID &a, const NSManagedObjectID &b) { return a.key() < b.key(); });
    const auto *destination = relationship->destinationEntity;
    const bool hasCode = SQLNames::hasEntityColumn(destination);
    const QByteArray code = hasCode ? ", d._entity" : ", 0";
    QByteArray sql;
    QByteArray own;
    if (relationship->isManyToMany()) {
        own = "j." + SQLNames::joinOwnColumn(relationship);
        const QByteArray other = "j." + SQLNames::joinOtherColumn(relationship);
        sql = "SELECT " + own + ", " + other + code + " FROM " + SQLNames::joinTable(relationship) + " j";
        if (hasCode) {
            sql += " JOIN " + SQLNames::table(destination) + " d ON d._pk = " + other;
        }
    } else {
        own = "d." + SQLNames::column(relationship->inverseName);
        sql = "SELECT " + own + ", d._pk" + code + " FROM " + SQLNames::table(destination) + " d";
    }
    sql += " WHERE " + own + " BETWEEN ? AND ? ORDER BY 1, 2";
    SQLiteStatement statement = m_database->prepare(sql, error);
    if (!statement) {
        return std::nullopt;
    }
    statement.bindInteger(1, first->key());
    statement.bindInteger(2, last->key());
    QHash<NSManagedObjectID, QList<NSManagedObjectID>> found;
    QHash<qint64, NSManagedObjectID> wanted; // made once there is something to look up
    int result = statement.step();
    for (; result == SQLITE_ROW; result = statement.step()) {
        if (wanted.isEmpty()) {
            wanted.reserve(objectIDs.size());
            for (const NSManagedObjectID &objectID : objectIDs) {
                wanted.insert(objectID.key(), objectID);
            }
        }
        if (const auto source = wanted.constFind(statement.integer(0)); source != wanted.cend()) {
            found[*source].append(NSManagedObjectID(
                hasCode ? entityWithCode(statement.integer(2), destination) : destination, statement.integer(1)));
        }
    }
    if (result != SQLITE_DONE) {
        m_database->fail(error, "read");
        return std::nullopt;
    }
    return found;
}

std::optional<QHash<NSManagedObjectID, QList<NSManagedObjectID>>>
SQLitePersistentStore::targetsForObjects(const QList<NSManagedObjectID> &objectIDs,
                                         const NSRelationshipDescription *relationship, NSError *error)
{
    const std::lock_guard lock(m_mutex);
    if (objectIDs.size() >= kFewestForScan) {
        return scannedTargets(objectIDs, relationship, error);
    }
    const auto *destination = relationship->destinationEntity;
    const bool hasCode = SQLNames::hasEntityColumn(destination);
    const QByteArray code = hasCode ? ", d._entity" : ", 0";
    QByteArray sql;
    if (relationship->isManyToMany()) {
        const QByteArray other = SQLNames::joinOtherColumn(relationship);
        sql = "SELECT j." + other + code + " FROM " + SQLNames::joinTable(relationship) + " j";
        if (hasCode) {
            sql += " JOIN " + SQLNames::table(destination) + " d ON d._pk = j." + other;
        }
        sql += " WHERE j." + SQLNames::joinOwnColumn(relationship) + " = ? ORDER BY 1";
    } else {
        sql = "SELECT d._pk" + code + " FROM " + SQLNames::table(destination) + " d WHERE d." +
              SQLNames::column(relationship->inverseName) + " = ? ORDER BY 1";
    }
    QHash<NSManagedObjectID, QList<NSManagedObjectID>> found;
    SQLiteStatement statement = m_database->prepare(sql, error);
    if (!statement) {
        return std::nullopt;
    }
    for (const NSManagedObjectID &objectID : objectIDs) {
        statement.bindInteger(1, objectID.key());
        QList<NSManagedObjectID> targets;
        int result = statement.step();
        for (; result == SQLITE_ROW; result = statement.step()) {
            targets.append(NSManagedObjectID(hasCode ? entityWithCode(statement.integer(1), destination) : destination,
                                             statement.integer(0)));
        }
        if (result != SQLITE_DONE) {
            m_database->fail(error, "read");
            return std::nullopt;
        }
        statement.reset();
        found.insert(objectID, targets);
    }
    return found;
}

bool SQLitePersistentStore::enumerateLazyValues(const NSEntityDescription *entity, int slot, const LazyVisitor &visit,
                                                NSError *error)
{
    constexpr int kBatch = 256;
    constexpr qint64 kBatchBytes = 16 << 20; // a batch of huge values ends early, so that memory stays bounded
    struct Row
    {
        qint64 key;
        qint64 version;
        qint64 code;
        Value value;
    };
    const auto &attribute = entity->attributes()[static_cast<size_t>(slot)];
    const bool hasCode = SQLNames::hasEntityColumn(entity);
    const QByteArray sql = "SELECT t0._pk, t0._version, " + QByteArray(hasCode ? "t0._entity" : "0") + ", l." +
                           SQLNames::column(attribute.name) + " FROM " + SQLNames::table(entity) + " t0 LEFT JOIN " +
                           SQLNames::lazyTable(entity, attribute.name) +
                           " l ON l._pk = t0._pk WHERE t0._pk > ? ORDER BY t0._pk LIMIT " + QByteArray::number(kBatch);
    qint64 last = 0;
    for (;;) {
        QList<Row> batch;
        {
            const std::lock_guard lock(m_mutex);
            SQLiteStatement statement = m_database->prepare(sql, error);
            if (!statement) {
                return false;
            }
            statement.bindInteger(1, last);
            qint64 bytes = 0;
            int result = statement.step();
            for (; result == SQLITE_ROW; result = bytes < kBatchBytes ? statement.step() : SQLITE_DONE) {
                bytes += statement.byteCount(3);
                batch.append({statement.integer(0), statement.integer(1), statement.integer(2),
                              readValue(statement, 3, attribute.type)});
            }
            if (result != SQLITE_DONE) {
                return m_database->fail(error, "read");
            }
        }
        if (batch.isEmpty()) {
            // The pages of all values went through the cache, and nobody reads them again.
            const std::lock_guard lock(m_mutex);
            static_cast<void>(m_database->execute("PRAGMA shrink_memory", nullptr));
            return true;
        }
        last = batch.constLast().key;
        for (const Row &row : std::as_const(batch)) {
            const NSManagedObjectID objectID(hasCode ? entityWithCode(row.code, entity) : entity, row.key);
            if (!visit(objectID, row.version, row.value)) {
                return true;
            }
        }
    }
}

bool SQLitePersistentStore::enumerateRows(const NSEntityDescription *entity, const QStringList &attributes,
                                          const RowVisitor &visit, NSError *error)
{
    constexpr qsizetype kBatch = 1024; // whoever else wants the store waits for a millisecond or two
    const ColumnPlan plan = planFor(entity, attributes);
    QByteArray sql = "SELECT " + plan.columns + " FROM " + SQLNames::table(entity) + " t0 WHERE t0._pk > ?";
    if (plan.hasEntityColumn) {
        QByteArray codes;
        for (const auto *candidate : entity->withSubentities()) {
            codes += (codes.isEmpty() ? "" : ", ") + QByteArray::number(candidate->code());
        }
        sql += " AND t0._entity IN (" + codes + ')';
    }
    sql += " ORDER BY t0._pk LIMIT " + QByteArray::number(kBatch);
    qint64 last = 0;
    for (;;) {
        QList<StoredRow> batch;
        {
            const std::lock_guard lock(m_mutex);
            SQLiteStatement statement = m_database->prepare(sql, error);
            if (!statement) {
                return false;
            }
            statement.bindInteger(1, last);
            int result = statement.step();
            for (; result == SQLITE_ROW; result = statement.step()) {
                batch.append(readRow(statement, plan));
            }
            if (result != SQLITE_DONE) {
                return m_database->fail(error, "read");
            }
        }
        for (const StoredRow &row : std::as_const(batch)) {
            if (!visit(row)) {
                return true;
            }
        }
        if (batch.size() < kBatch) {
            return true;
        }
        last = batch.constLast().objectID.key();
    }
}

std::optional<qint64> SQLitePersistentStore::changeCounter(NSError *error)
{
    const std::lock_guard lock(m_mutex);
    const auto version = m_database->scalar("PRAGMA data_version", error);
    if (!version) {
        return std::nullopt;
    }
    // data_version moves with the commits of others only; save() counts our own.
    const qint64 number = valueOr<QString>(*version).toLongLong();
    if (m_lastDataVersion != -1 && number != m_lastDataVersion) {
        ++m_changeCounter;
    }
    m_lastDataVersion = number;
    return m_changeCounter;
}

std::optional<QStringList> SQLitePersistentStore::integrityProblems(NSError *error)
{
    const std::lock_guard lock(m_mutex);
    SQLiteStatement statement = m_database->prepare("PRAGMA integrity_check(100)", error);
    if (!statement) {
        return std::nullopt;
    }
    QStringList problems;
    int result = statement.step();
    for (; result == SQLITE_ROW; result = statement.step()) {
        const QString line = statement.text(0);
        if (line != u"ok"_s) {
            problems.append(line);
        }
    }
    if (result != SQLITE_DONE) {
        m_database->fail(error, "check");
        return std::nullopt;
    }
    return problems;
}

} // namespace quib
