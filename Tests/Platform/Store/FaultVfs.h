#pragma once

#include <QByteArray>

#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <sqlite3.h>

namespace quib::tests {

/// A disk in memory, offered to SQLite as a file layer of its own name, that fails when told to and can lose its power.
/// What is written is on the platter only after a sync; a name is made or gone for good only after a sync of the
/// folder. One thread.
class FaultVfs
{
public:
    enum class Fault : quint8
    {
        /// The call does nothing and reports an input/output error.
        IoError,
        /// Half of a write arrives, then the disk is full; other calls report an input/output error.
        ShortWrite,
        /// As ShortWrite, and the disk stays full. A file without contents still finds room.
        FullDisk,
        /// This call and all after it fail, until cutPower.
        PowerLoss
    };

    FaultVfs();
    ~FaultVfs();
    FaultVfs(const FaultVfs &) = delete;
    FaultVfs &operator=(const FaultVfs &) = delete;

    [[nodiscard]] QByteArray name() const { return m_name; }
    /// Lets the call number `call` from now fail; calls that write, sync, truncate, delete or make a file count.
    void arm(int call, Fault fault);
    void disarm()
    {
        m_callsLeft = -1;
        m_isStuck = false;
    }
    /// True once the armed fault has struck.
    [[nodiscard]] bool hasStruck() const { return m_hasStruck; }
    /// Drops what was not synced; of each sector and each name left unsynced a coin decides whether it arrived. No file
    /// may be open.
    void cutPower(std::mt19937 &coins);
    [[nodiscard]] bool contains(const QByteArray &path) const { return m_names.contains(path.toStdString()); }

    struct Node
    {
        std::string live;
        std::string synced;
        bool isFolderSyncDue = false;
    };
    using Names = std::map<std::string, std::shared_ptr<Node>>;
    /// A copy of the disk as it stands, and back to it.
    [[nodiscard]] Names contents() const;
    void setContents(const Names &contents);

private:
    struct File;
    /// True when the call must fail.
    bool strikes();
    static FaultVfs &of(sqlite3_file *file);
    static int openFile(sqlite3_vfs *, const char *path, sqlite3_file *file, int flags, int *outFlags);
    static int deleteFile(sqlite3_vfs *, const char *path, int syncFolder);
    static int access(sqlite3_vfs *, const char *path, int flags, int *result);
    static int fullPathname(sqlite3_vfs *, const char *path, int size, char *out);
    static int closeFile(sqlite3_file *file);
    static int readFile(sqlite3_file *file, void *bytes, int count, sqlite3_int64 offset);
    static int writeFile(sqlite3_file *file, const void *bytes, int count, sqlite3_int64 offset);
    static int truncateFile(sqlite3_file *file, sqlite3_int64 size);
    static int syncFile(sqlite3_file *file, int flags);
    static int lockFile(sqlite3_file *file, int level);
    static int unlockFile(sqlite3_file *file, int level);
    static int isReserved(sqlite3_file *file, int *result);
    static const sqlite3_io_methods kMethods;

    QByteArray m_name;
    sqlite3_vfs m_vfs = {};
    Names m_names;
    Names m_syncedNames;
    std::vector<File *> m_open;
    int m_callsLeft = -1;
    Fault m_fault = Fault::IoError;
    bool m_isStuck = false;
    bool m_hasStruck = false;
};

} // namespace quib::tests
