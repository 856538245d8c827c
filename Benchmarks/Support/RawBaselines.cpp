#include "RawBaselines.h"

#include "Measure.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

namespace quib::benchmarks {

namespace {

constexpr size_t kPageSize = 4096;

[[noreturn]] void giveUp(const char *doing, const char *why)
{
    std::fprintf(stderr, "%s: %s\n", doing, why);
    std::exit(1);
}

} // namespace

SyncedPageFile::SyncedPageFile(const QString &folder)
    : m_path((folder + u"/synced-page").toUtf8())
    , m_descriptor(open(m_path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600))
{
    if (m_descriptor < 0) {
        giveUp("opening the page file", m_path.constData());
    }
    // The file has its size before the first write counts: fdatasync then writes no metadata.
    write();
}

SyncedPageFile::~SyncedPageFile()
{
    close(m_descriptor);
    unlink(m_path.constData());
}

void SyncedPageFile::write()
{
    const std::vector<char> page(kPageSize, ++m_fill);
    if (pwrite(m_descriptor, page.data(), kPageSize, 0) != static_cast<ssize_t>(kPageSize) ||
        fdatasync(m_descriptor) != 0) {
        giveUp("writing the page file", m_path.constData());
    }
}

RawDatabase::RawDatabase(const QString &path)
{
    require(
        sqlite3_open_v2(path.toUtf8().constData(), &m_database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr),
        "opening");
}

RawDatabase::~RawDatabase()
{
    sqlite3_close_v2(m_database);
}

void RawDatabase::require(int result, const char *doing)
{
    if (result != SQLITE_OK && result != SQLITE_DONE) {
        giveUp(doing, sqlite3_errmsg(m_database));
    }
}

void RawDatabase::execute(const char *sql)
{
    require(sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr), sql);
}

qint64 RawDatabase::readAll(const char *sql)
{
    sqlite3_stmt *statement = nullptr;
    require(sqlite3_prepare_v2(m_database, sql, -1, &statement, nullptr), sql);
    const int columns = sqlite3_column_count(statement);
    qint64 rows = 0;
    int result = SQLITE_ROW;
    while ((result = sqlite3_step(statement)) == SQLITE_ROW) {
        for (int column = 0; column < columns; ++column) {
            switch (sqlite3_column_type(statement, column)) {
            case SQLITE_INTEGER:
                keep(sqlite3_column_int64(statement, column));
                break;
            case SQLITE_FLOAT:
                keep(sqlite3_column_double(statement, column));
                break;
            case SQLITE_NULL:
                break;
            default:
                keep(sqlite3_column_blob(statement, column));
                keep(sqlite3_column_bytes(statement, column));
                break;
            }
        }
        ++rows;
    }
    require(result, sql);
    sqlite3_finalize(statement);
    return rows;
}

void RawDatabase::insert(const char *sql, qint64 count, const std::function<void(void *statement, qint64 row)> &bind)
{
    execute("BEGIN IMMEDIATE");
    sqlite3_stmt *statement = nullptr;
    require(sqlite3_prepare_v2(m_database, sql, -1, &statement, nullptr), sql);
    for (qint64 row = 0; row < count; ++row) {
        bind(statement, row);
        require(sqlite3_step(statement), sql);
        require(sqlite3_reset(statement), sql);
    }
    sqlite3_finalize(statement);
    execute("COMMIT");
}

} // namespace quib::benchmarks
