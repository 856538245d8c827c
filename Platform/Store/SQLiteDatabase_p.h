#pragma once

#include "Value.h"

#include <Foundation/NSError.h>

#include <QByteArray>
#include <QHash>
#include <QString>

#include <functional>
#include <memory>
#include <mutex>
#include <string_view>

#include <sqlite3.h>

namespace quib {

/// A prepared statement on loan from its database's cache: reset and unbound when the loan ends, which is before the
/// database goes.
class SQLiteStatement
{
public:
    SQLiteStatement() = default;
    /// loans: the database's count of statements lent, which this one raises while it lives.
    SQLiteStatement(sqlite3_stmt *statement, int *loans)
        : m_statement(statement)
        , m_loans(loans)
    {
        ++*m_loans;
    }
    SQLiteStatement(SQLiteStatement &&other) noexcept
        : m_statement(std::exchange(other.m_statement, nullptr))
        , m_loans(std::exchange(other.m_loans, nullptr))
    {
    }
    SQLiteStatement &operator=(SQLiteStatement &&) = delete;
    ~SQLiteStatement();

    [[nodiscard]] explicit operator bool() const { return m_statement != nullptr; }
    // Indexes of parameters count from 1, those of columns from 0, as SQLite's do.
    void bind(int index, const Value &value);
    void bindInteger(int index, qint64 value);
    void bindText(int index, const QString &text);
    void bindBytes(int index, const QByteArray &bytes);
    void bindNull(int index);
    /// SQLITE_ROW, SQLITE_DONE or an error code.
    [[nodiscard]] int step() { return sqlite3_step(m_statement); }
    void reset() { sqlite3_reset(m_statement); }

    [[nodiscard]] bool isNull(int column) const { return sqlite3_column_type(m_statement, column) == SQLITE_NULL; }
    [[nodiscard]] qint64 integer(int column) const { return sqlite3_column_int64(m_statement, column); }
    [[nodiscard]] double real(int column) const { return sqlite3_column_double(m_statement, column); }
    /// The bytes of a text or blob where SQLite holds them, until the next step.
    [[nodiscard]] std::string_view view(int column) const;
    [[nodiscard]] qint64 byteCount(int column) const { return sqlite3_column_bytes(m_statement, column); }
    [[nodiscard]] QString text(int column) const;
    [[nodiscard]] QByteArray bytes(int column) const;
    /// The value itself, until the next step: looked up once for all questions about it. The connection has no mutex
    /// of its own, so such a value may be read like any other.
    [[nodiscard]] sqlite3_value *value(int column) const { return sqlite3_column_value(m_statement, column); }

private:
    sqlite3_stmt *m_statement = nullptr;
    int *m_loans = nullptr;
};

/// One connection to a file: statements, transactions, errors in our own words. Guarded by whoever owns it.
class SQLiteDatabase
{
public:
    SQLiteDatabase() = default;
    SQLiteDatabase(const SQLiteDatabase &) = delete;
    SQLiteDatabase &operator=(const SQLiteDatabase &) = delete;
    ~SQLiteDatabase();

    /// Errors: false; the message names the file.
    [[nodiscard]] bool open(const QString &path, int flags, const QByteArray &vfsName, double busyTimeout,
                            NSError *error);
    [[nodiscard]] bool execute(const QByteArray &sql, NSError *error);
    /// Errors: a statement that is false.
    [[nodiscard]] SQLiteStatement prepare(const QByteArray &sql, NSError *error);
    /// The first column of the first row; nothing where there is no row.
    [[nodiscard]] std::optional<Value> scalar(const QByteArray &sql, NSError *error);
    /// Fills error from the connection's last failure, and gives false.
    bool fail(NSError *error, const char *doing = nullptr) const;
    bool fail(NSError *error, NSCocoaErrorCode code, const QString &what) const;
    /// Called whenever a failure tells that the file is damaged.
    void setDidFindDamage(std::function<void(const NSError &damage)> didFindDamage)
    {
        m_didFindDamage = std::move(didFindDamage);
    }
    [[nodiscard]] int changes() const { return sqlite3_changes(m_database); }
    [[nodiscard]] sqlite3 *handle() const { return m_database; }
    [[nodiscard]] const QString &path() const { return m_path; }

private:
    QString m_path;
    sqlite3 *m_database = nullptr;
    QHash<QByteArray, sqlite3_stmt *> m_statements;
    int m_loans = 0;
    std::function<void(const NSError &damage)> m_didFindDamage;
};

/// BEGIN IMMEDIATE; rolled back unless commit succeeded.
class SQLiteTransaction
{
public:
    explicit SQLiteTransaction(SQLiteDatabase &database)
        : m_database(database)
    {
    }
    ~SQLiteTransaction();
    [[nodiscard]] bool begin(NSError *error);
    [[nodiscard]] bool commit(NSError *error);

private:
    SQLiteDatabase &m_database;
    bool m_isOpen = false;
};

} // namespace quib
