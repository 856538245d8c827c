#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

struct sqlite3;

namespace quib::benchmarks {

/// The least that a save can cost on this disk: a file into whose beginning one 4 KB page is written and synced.
class SyncedPageFile
{
public:
    /// Makes the file in folder; it is removed again at the end.
    explicit SyncedPageFile(const QString &folder);
    ~SyncedPageFile();
    Q_DISABLE_COPY_MOVE(SyncedPageFile)

    /// One pwrite of 4 KB and one fdatasync.
    void write();

private:
    QByteArray m_path;
    int m_descriptor;
    char m_fill = 0;
};

/// A database spoken to through SQLite's C interface with nothing in between: what a store is measured against.
/// A failing statement ends the program with its message, since a baseline of half the work would be a lie.
class RawDatabase
{
public:
    explicit RawDatabase(const QString &path);
    ~RawDatabase();
    Q_DISABLE_COPY_MOVE(RawDatabase)

    void execute(const char *sql);
    /// Steps through all rows and touches every column, text and blobs by address and size. Gives the rows' number.
    qint64 readAll(const char *sql);
    /// One transaction of count prepared inserts. bind is given the statement, as an sqlite3_stmt, and the row's
    /// number.
    void insert(const char *sql, qint64 count, const std::function<void(void *statement, qint64 row)> &bind);

private:
    void require(int result, const char *doing);

    sqlite3 *m_database = nullptr;
};

} // namespace quib::benchmarks
