#include "StoreDamage.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QFile>
#include <QList>

#include <sqlite3.h>

namespace quib::tests {

void damageRows(const QString &path)
{
    constexpr qint64 kPage = 4096;
    QList<qint64> pages;
    sqlite3 *database = nullptr;
    ASSERT_EQ(sqlite3_open(QFile::encodeName(path).constData(), &database), SQLITE_OK);
    const int result = sqlite3_exec(
        database,
        "SELECT rootpage FROM sqlite_master WHERE rootpage > 0 AND tbl_name NOT IN ('_metadata', 'sqlite_sequence')",
        [](void *found, int, char **columns, char **) {
            static_cast<QList<qint64> *>(found)->append(QByteArray(columns[0]).toLongLong());
            return 0;
        },
        &pages, nullptr);
    sqlite3_close(database);
    ASSERT_EQ(result, SQLITE_OK);
    ASSERT_FALSE(pages.isEmpty());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    for (const qint64 page : std::as_const(pages)) {
        ASSERT_TRUE(file.seek((page - 1) * kPage));
        ASSERT_EQ(file.write(QByteArray(kPage, '\xA5')), kPage);
    }
}

} // namespace quib::tests
