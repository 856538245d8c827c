#include "SQLitePersistentStore.h"

#include "SQLFunctions.h"
#include "SQLNames.h"
#include "SQLiteDatabase_p.h"
#include "StoreObserver.h"

#include <Foundation/Identifiers.h>

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr char kMetadataTable[] = "_metadata";

/// Makes an empty file that only its owner can read, before SQLite would make one that others can.
bool makePrivateFile(const QString &path)
{
    const int file = ::open(QFile::encodeName(path).constData(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0600);
    if (file < 0) {
        return errno == EEXIST;
    }
    ::close(file);
    return true;
}

QByteArray typeName(NSAttributeType type)
{
    switch (type) {
    case NSAttributeType::Boolean:
    case NSAttributeType::Int16:
    case NSAttributeType::Int64:
        return " INTEGER NOT NULL DEFAULT 0";
    case NSAttributeType::Double:
        return " REAL NOT NULL DEFAULT 0";
    case NSAttributeType::Date:
        return " REAL";
    case NSAttributeType::String:
        return " TEXT";
    case NSAttributeType::Binary:
        return " BLOB";
    }
    return {};
}

QByteArray indexName(const NSEntityDescription *entity, const QString &what)
{
    return SQLNames::column(QString(u"_index_" % entity->name() % u'_' % what));
}

/// The statements that make the tables of one root entity, and the indexes on single columns.
QList<QByteArray> tableStatements(const NSEntityDescription *root)
{
    QList<QByteArray> statements;
    QByteArray columns = "_pk INTEGER PRIMARY KEY AUTOINCREMENT, _version INTEGER NOT NULL";
    if (SQLNames::hasEntityColumn(root)) {
        columns += ", _entity INTEGER NOT NULL";
    }
    const QByteArray table = SQLNames::table(root);
    QStringList seen;
    for (const auto *entity : root->withSubentities()) {
        for (const NSAttributeDescription &attribute : entity->attributes()) {
            if (seen.contains(attribute.name)) {
                continue;
            }
            seen.append(attribute.name);
            if (attribute.isLazy) {
                statements.append("CREATE TABLE " + SQLNames::lazyTable(root, attribute.name) +
                                  " (_pk INTEGER PRIMARY KEY, " + SQLNames::column(attribute.name) +
                                  typeName(attribute.type) + ')');
                continue;
            }
            columns += ", " + SQLNames::column(attribute.name) + typeName(attribute.type);
            if (attribute.isIndexed) {
                statements.append("CREATE INDEX " + indexName(root, attribute.name) + " ON " + table + " (" +
                                  SQLNames::column(attribute.name) + ')');
            }
            if (attribute.isFoldIndexed) {
                columns += ", " + SQLNames::foldedColumn(attribute.name) + " BLOB";
                statements.append("CREATE INDEX " + indexName(root, attribute.name + u"_cd"_s) + " ON " + table + " (" +
                                  SQLNames::foldedColumn(attribute.name) + ')');
            }
        }
        for (const NSRelationshipDescription &relationship : entity->relationships()) {
            if (seen.contains(relationship.name)) {
                continue;
            }
            seen.append(relationship.name);
            if (!relationship.isToMany) {
                columns += ", " + SQLNames::column(relationship.name) + " INTEGER";
                statements.append("CREATE INDEX " + indexName(root, relationship.name) + " ON " + table + " (" +
                                  SQLNames::column(relationship.name) + ") WHERE " +
                                  SQLNames::column(relationship.name) + " IS NOT NULL");
            } else if (relationship.isManyToMany() && relationship.ownsJoinTable) {
                const QByteArray join = SQLNames::joinTable(&relationship);
                statements.append("CREATE TABLE " + join +
                                  " (source INTEGER NOT NULL, target INTEGER NOT NULL, PRIMARY KEY (source, target)) "
                                  "WITHOUT ROWID");
                statements.append("CREATE INDEX " + indexName(root, relationship.name + u"_reverse"_s) + " ON " + join +
                                  " (target, source)");
            }
        }
    }
    statements.prepend("CREATE TABLE " + table + " (" + columns + ')');
    return statements;
}

} // namespace

SQLitePersistentStore::SQLitePersistentStore(std::shared_ptr<const NSManagedObjectModel> model)
    : m_model(std::move(model))
    , m_database(std::make_unique<SQLiteDatabase>())
{
}

SQLitePersistentStore::~SQLitePersistentStore() = default;

void SQLitePersistentStore::setObserver(const std::weak_ptr<StoreObserver> &observer)
{
    const std::lock_guard lock(m_mutex);
    m_observer = observer;
}

std::unique_ptr<SQLitePersistentStore> SQLitePersistentStore::open(const QString &path,
                                                                   std::shared_ptr<const NSManagedObjectModel> model,
                                                                   const NSPersistentStoreOptions &options,
                                                                   NSError *error)
{
    std::unique_ptr<SQLitePersistentStore> store(new SQLitePersistentStore(std::move(model)));
    SQLiteDatabase &database = *store->m_database;
    const bool mayCreate = !options.mustExist && !options.isReadOnly;
    if (options.vfsName.isEmpty() && mayCreate && !makePrivateFile(path)) {
        NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::FileReadNoPermission),
                      u"%1: cannot be made: %2"_s.arg(path, qt_error_string(errno)), errno);
        return nullptr;
    }
    const int flags =
        options.isReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | (mayCreate ? SQLITE_OPEN_CREATE : 0);
    if (!database.open(path, flags, options.vfsName, options.busyTimeout, error)) {
        return nullptr;
    }
    if (const int result = registerSQLFunctions(database.handle()); result != SQLITE_OK) {
        database.fail(error, "prepare");
        return nullptr;
    }
    // The settings of the connection, then the first read, which meets a file that is no database.
    if (!database.execute("PRAGMA page_size = 4096; PRAGMA encoding = 'UTF-8'; PRAGMA temp_store = MEMORY; "
                          "PRAGMA cache_size = -32000; PRAGMA cell_size_check = ON; PRAGMA foreign_keys = OFF; "
                          "PRAGMA synchronous = EXTRA",
                          error) ||
        (!options.isReadOnly && !database.scalar("PRAGMA journal_mode = DELETE", error))) {
        return nullptr;
    }
    const auto schemaVersion = database.scalar("PRAGMA schema_version", error);
    if (!schemaVersion) {
        return nullptr;
    }
    const bool isEmpty = valueOr<QString>(*schemaVersion) == u"0"_s;
    if (isEmpty && !mayCreate) {
        database.fail(error, NSCocoaErrorCode::FileNoSuchFile, u"holds no store"_s);
        return nullptr;
    }
    if ((isEmpty && !store->createSchema(error)) || !store->checkMetadata(error)) {
        return nullptr;
    }
    if (!options.isReadOnly) {
        store->createMissingIndexes();
    }
    database.setDidFindDamage([self = store.get()](const NSError &damage) {
        if (self->m_damage.isSet()) {
            return;
        }
        self->m_damage = damage;
        if (const auto observer = self->m_observer.lock()) {
            observer->storeDidFindDamage(damage);
        }
    });
    return store;
}

void SQLitePersistentStore::createMissingIndexes()
{
    for (const auto &entity : m_model->entities()) {
        for (qsizetype i = 0; i < entity->compoundIndexes().size(); ++i) {
            QByteArray terms;
            for (const QString &key : entity->compoundIndexes()[i]) {
                const bool isDescending = key.startsWith(u'-');
                terms += SQLNames::column(isDescending ? key.mid(1) : key) + (isDescending ? " DESC, " : ", ");
            }
            // The version makes the index cover what a row's snapshot needs. Where the index is there, this only looks
            // at the schema in memory, and takes no lock; where it cannot be made, the same answers come more slowly.
            static_cast<void>(m_database->execute("CREATE INDEX IF NOT EXISTS " +
                                                      indexName(entity.get(), u"list%1"_s.arg(i)) + " ON " +
                                                      SQLNames::table(entity.get()) + " (" + terms + "_version)",
                                                  nullptr));
        }
    }
}

bool SQLitePersistentStore::createSchema(NSError *error)
{
    SQLiteTransaction transaction(*m_database);
    if (!transaction.begin(error)) {
        return false;
    }
    // Another process may have made the tables since.
    const auto existing = m_database->scalar("SELECT COUNT(*) FROM sqlite_master", error);
    if (!existing) {
        return false;
    }
    if (valueOr<QString>(*existing) != u"0"_s) {
        return true;
    }
    QList<QByteArray> statements{QByteArray("CREATE TABLE ") + kMetadataTable +
                                 " (key TEXT PRIMARY KEY, value TEXT) WITHOUT ROWID"};
    for (const auto &entity : m_model->entities()) {
        if (entity->superentity() == nullptr) {
            statements += tableStatements(entity.get());
        }
    }
    for (const QByteArray &statement : statements) {
        if (!m_database->execute(statement, error)) {
            return false;
        }
    }
    const QList<std::pair<QString, QString>> metadata{{u"modelVersion"_s, m_model->versionIdentifier()},
                                                      {u"modelHash"_s, QString::fromLatin1(m_model->versionHash())},
                                                      {u"uuid"_s, uuidString()}};
    for (const auto &[key, value] : metadata) {
        SQLiteStatement insert =
            m_database->prepare(QByteArray("INSERT INTO ") + kMetadataTable + " VALUES (?, ?)", error);
        if (!insert) {
            return false;
        }
        insert.bindText(1, key);
        insert.bindText(2, value);
        if (insert.step() != SQLITE_DONE) {
            return m_database->fail(error, "make the tables");
        }
    }
    // Every table has its place in the key counter from the start, so that keys can be reserved in one way only.
    for (const auto &entity : m_model->entities()) {
        if (entity->superentity() != nullptr) {
            continue;
        }
        SQLiteStatement counter = m_database->prepare("INSERT INTO sqlite_sequence (name, seq) VALUES (?, 0)", error);
        if (!counter) {
            return false;
        }
        counter.bindText(1, entity->name());
        if (counter.step() != SQLITE_DONE) {
            return m_database->fail(error, "make the tables");
        }
    }
    return transaction.commit(error);
}

namespace {

std::optional<NSStoreMetadata> metadataOf(SQLiteDatabase &database, NSError *error)
{
    const auto table = database.scalar(
        QByteArray("SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND name = '") + kMetadataTable + '\'',
        error);
    if (!table) {
        return std::nullopt;
    }
    if (valueOr<QString>(*table) != u"1"_s) {
        database.fail(error, NSCocoaErrorCode::PersistentStoreCorrupt, u"is a database, but no store of notes"_s);
        return std::nullopt;
    }
    NSStoreMetadata metadata;
    SQLiteStatement rows = database.prepare(QByteArray("SELECT key, value FROM ") + kMetadataTable, error);
    if (!rows) {
        return std::nullopt;
    }
    int result = rows.step();
    for (; result == SQLITE_ROW; result = rows.step()) {
        const QString key = rows.text(0);
        if (key == u"modelVersion"_s) {
            metadata.versionIdentifier = rows.text(1);
        } else if (key == u"modelHash"_s) {
            metadata.versionHash = rows.text(1).toLatin1();
        } else if (key == u"uuid"_s) {
            metadata.storeUUID = rows.text(1);
        }
    }
    if (result != SQLITE_DONE) {
        database.fail(error);
        return std::nullopt;
    }
    if (metadata.versionHash.isEmpty() || metadata.storeUUID.isEmpty()) {
        database.fail(error, NSCocoaErrorCode::PersistentStoreCorrupt, u"its description is missing"_s);
        return std::nullopt;
    }
    return metadata;
}

} // namespace

bool SQLitePersistentStore::checkMetadata(NSError *error)
{
    const auto metadata = metadataOf(*m_database, error);
    if (!metadata) {
        return false;
    }
    m_metadata = *metadata;
    if (m_metadata.versionHash != m_model->versionHash()) {
        return m_database->fail(error, NSCocoaErrorCode::PersistentStoreIncompatibleVersion,
                                u"holds notes of version %1, and version %2 is needed"_s.arg(
                                    m_metadata.versionIdentifier, m_model->versionIdentifier()));
    }
    return true;
}

std::optional<NSStoreMetadata> SQLitePersistentStore::readMetadata(const QString &path, NSError *error)
{
    if (!QFileInfo::exists(path)) {
        NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::FileNoSuchFile),
                      u"%1: no such file"_s.arg(path));
        return std::nullopt;
    }
    SQLiteDatabase database;
    // Read and write where that is allowed: a journal left by a killed process is then rolled back first.
    NSError readWriteError;
    if (!database.open(path, SQLITE_OPEN_READWRITE, {}, 10, &readWriteError)) {
        NSError::fill(error, readWriteError.domain(), readWriteError.code(), readWriteError.localizedDescription(),
                      readWriteError.causeCode());
        return std::nullopt;
    }
    return metadataOf(database, error);
}

const NSEntityDescription *SQLitePersistentStore::entityWithCode(qint64 code, const NSEntityDescription *fallback) const
{
    const auto &entities = m_model->entities();
    return code >= 1 && static_cast<size_t>(code) <= entities.size() ? entities[static_cast<size_t>(code) - 1].get()
                                                                     : fallback;
}

} // namespace quib
