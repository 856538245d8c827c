#include "SQLiteDatabase_p.h"

#include <Text/Folding.h>

#include <QFile>

#include <cerrno>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr qsizetype kMostStatements = 400;

NSCocoaErrorCode codeFor(int result, int systemError)
{
    // A journal that cannot be made tells of no more than that.
    if (systemError == ENOSPC || systemError == EDQUOT) {
        return NSCocoaErrorCode::FileWriteOutOfSpace;
    }
    switch (result & 0xFF) {
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_FORMAT:
        return NSCocoaErrorCode::PersistentStoreCorrupt;
    case SQLITE_FULL:
        return NSCocoaErrorCode::FileWriteOutOfSpace;
    case SQLITE_READONLY:
        return NSCocoaErrorCode::FileWriteVolumeReadOnly;
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return NSCocoaErrorCode::FileReadNoPermission;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return NSCocoaErrorCode::PersistentStoreTimeout;
    default:
        return NSCocoaErrorCode::PersistentStoreSave;
    }
}

} // namespace

SQLiteStatement::~SQLiteStatement()
{
    if (m_statement != nullptr) {
        sqlite3_reset(m_statement);
        sqlite3_clear_bindings(m_statement);
        --*m_loans;
    }
}

void SQLiteStatement::bind(int index, const Value &value)
{
    struct Binder
    {
        SQLiteStatement &statement;
        int index;
        void operator()(std::monostate) const { statement.bindNull(index); }
        void operator()(bool flag) const { statement.bindInteger(index, flag ? 1 : 0); }
        void operator()(qint64 number) const { statement.bindInteger(index, number); }
        void operator()(double number) const { sqlite3_bind_double(statement.m_statement, index, number); }
        void operator()(const QString &text) const { statement.bindText(index, text); }
        void operator()(NSDate date) const
        {
            sqlite3_bind_double(statement.m_statement, index, date.timeIntervalSince1970());
        }
        void operator()(const QByteArray &bytes) const { statement.bindBytes(index, bytes); }
    };
    std::visit(Binder{*this, index}, value);
}

void SQLiteStatement::bindInteger(int index, qint64 value)
{
    sqlite3_bind_int64(m_statement, index, value);
}

void SQLiteStatement::bindText(int index, const QString &text)
{
    if (text.isNull()) {
        bindNull(index);
        return;
    }
    const QByteArray bytes = toUtf8Lossless(text);
    sqlite3_bind_text64(m_statement, index, bytes.constData(), static_cast<sqlite3_uint64>(bytes.size()),
                        SQLITE_TRANSIENT, SQLITE_UTF8);
}

void SQLiteStatement::bindBytes(int index, const QByteArray &bytes)
{
    if (bytes.isNull()) {
        bindNull(index);
        return;
    }
    sqlite3_bind_blob64(m_statement, index, bytes.constData(), static_cast<sqlite3_uint64>(bytes.size()),
                        SQLITE_TRANSIENT);
}

void SQLiteStatement::bindNull(int index)
{
    sqlite3_bind_null(m_statement, index);
}

std::string_view SQLiteStatement::view(int column) const
{
    const auto *bytes = static_cast<const char *>(sqlite3_column_blob(m_statement, column));
    return bytes == nullptr ? std::string_view("")
                            : std::string_view(bytes, static_cast<size_t>(sqlite3_column_bytes(m_statement, column)));
}

QString SQLiteStatement::text(int column) const
{
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
    return bytes == nullptr ? QString() : fromUtf8Lossless(bytes, sqlite3_column_bytes(m_statement, column));
}

QByteArray SQLiteStatement::bytes(int column) const
{
    if (isNull(column)) {
        return {};
    }
    const auto *bytes = static_cast<const char *>(sqlite3_column_blob(m_statement, column));
    return bytes == nullptr ? QByteArray("") : QByteArray(bytes, sqlite3_column_bytes(m_statement, column));
}

SQLiteDatabase::~SQLiteDatabase()
{
    for (sqlite3_stmt *statement : std::as_const(m_statements)) {
        sqlite3_finalize(statement);
    }
    sqlite3_close_v2(m_database);
}

bool SQLiteDatabase::open(const QString &path, int flags, const QByteArray &vfsName, double busyTimeout, NSError *error)
{
    m_path = path;
    const int result = sqlite3_open_v2(QFile::encodeName(path).constData(), &m_database,
                                       flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE,
                                       vfsName.isEmpty() ? nullptr : vfsName.constData());
    if (result != SQLITE_OK) {
        return fail(error, "open");
    }
    sqlite3_extended_result_codes(m_database, 1);
    sqlite3_busy_timeout(m_database, static_cast<int>(std::min(busyTimeout * 1000, 1e9)));
    // A file from elsewhere must not run anything of its own.
    sqlite3_db_config(m_database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(m_database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    return true;
}

bool SQLiteDatabase::execute(const QByteArray &sql, NSError *error)
{
    return sqlite3_exec(m_database, sql.constData(), nullptr, nullptr, nullptr) == SQLITE_OK || fail(error);
}

SQLiteStatement SQLiteDatabase::prepare(const QByteArray &sql, NSError *error)
{
    // Conditions and column sets are few; lists of many lengths are not. A statement on loan must outlive its loan, so
    // the cache is emptied only while none is lent.
    if (m_statements.size() >= kMostStatements && m_loans == 0) {
        for (sqlite3_stmt *statement : std::as_const(m_statements)) {
            sqlite3_finalize(statement);
        }
        m_statements.clear();
    }
    // A cached statement that is on loan already cannot be lent twice; nobody here runs one inside itself.
    sqlite3_stmt *&cached = m_statements[sql];
    if (cached == nullptr && sqlite3_prepare_v3(m_database, sql.constData(), static_cast<int>(sql.size()),
                                                SQLITE_PREPARE_PERSISTENT, &cached, nullptr) != SQLITE_OK) {
        fail(error);
        m_statements.remove(sql);
        return {};
    }
    return SQLiteStatement(cached, &m_loans);
}

std::optional<Value> SQLiteDatabase::scalar(const QByteArray &sql, NSError *error)
{
    SQLiteStatement statement = prepare(sql, error);
    if (!statement) {
        return std::nullopt;
    }
    const int result = statement.step();
    if (result == SQLITE_DONE) {
        return Value();
    }
    if (result != SQLITE_ROW) {
        fail(error);
        return std::nullopt;
    }
    return statement.isNull(0) ? Value() : Value(statement.text(0));
}

bool SQLiteDatabase::fail(NSError *error, const char *doing) const
{
    const int result = m_database != nullptr ? sqlite3_extended_errcode(m_database) : SQLITE_NOMEM;
    QString message = QString::fromUtf8(m_database != nullptr ? sqlite3_errmsg(m_database) : "out of memory");
    if (doing != nullptr) {
        message = u"cannot %1: "_s.arg(QLatin1StringView(doing)) + message;
    }
    const bool isOfSystem = (result & 0xFF) == SQLITE_CANTOPEN || (result & 0xFF) == SQLITE_IOERR;
    const NSCocoaErrorCode code = codeFor(result, isOfSystem ? sqlite3_system_errno(m_database) : 0);
    const NSError failure(kNSCocoaErrorDomain, static_cast<qint64>(code), u"%1: %2"_s.arg(m_path, message), result);
    if (code == NSCocoaErrorCode::PersistentStoreCorrupt && m_didFindDamage) {
        m_didFindDamage(failure);
    }
    if (error != nullptr) {
        *error = failure;
    }
    return false;
}

bool SQLiteDatabase::fail(NSError *error, NSCocoaErrorCode code, const QString &what) const
{
    return NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(code), u"%1: %2"_s.arg(m_path, what));
}

SQLiteTransaction::~SQLiteTransaction()
{
    if (m_isOpen) {
        NSError ignored;
        static_cast<void>(m_database.execute("ROLLBACK", &ignored));
    }
}

bool SQLiteTransaction::begin(NSError *error)
{
    m_isOpen = m_database.execute("BEGIN IMMEDIATE", error);
    return m_isOpen;
}

bool SQLiteTransaction::commit(NSError *error)
{
    if (!m_database.execute("COMMIT", error)) {
        return false; // still open: the destructor rolls back
    }
    m_isOpen = false;
    return true;
}

} // namespace quib
