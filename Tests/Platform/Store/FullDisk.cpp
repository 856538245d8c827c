#include "FullDisk.h"

#include <atomic>

#include <sqlite3.h>

namespace quib::tests {

namespace {

constexpr char kName[] = "full-disk";
std::atomic<bool> s_isFull = false;

/// The system's layer, and what files of it can do with one call replaced.
struct Layer
{
    sqlite3_vfs *system = sqlite3_vfs_find(nullptr);
    sqlite3_vfs vfs = *system;
    decltype(sqlite3_io_methods::xWrite) write = nullptr;
    sqlite3_io_methods methods = {};

    Layer()
    {
        vfs.zName = kName;
        vfs.pNext = nullptr;
        vfs.xOpen = open;
        sqlite3_vfs_register(&vfs, 0);
        // All files of the layer have the same calls: those of a file that needs no name tell them.
        const QByteArray memory(system->szOsFile, '\0');
        auto *file = reinterpret_cast<sqlite3_file *>(const_cast<char *>(memory.constData()));
        if (system->xOpen(system, nullptr, file,
                          SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_DELETEONCLOSE |
                              SQLITE_OPEN_EXCLUSIVE | SQLITE_OPEN_TEMP_DB,
                          nullptr) == SQLITE_OK) {
            methods = *file->pMethods;
            write = methods.xWrite;
            methods.xWrite = writeIfThereIsRoom;
            file->pMethods->xClose(file);
        }
    }
    static Layer &shared()
    {
        static auto *layer = new Layer; // as long as the process: SQLite keeps it
        return *layer;
    }
    static int open(sqlite3_vfs * /*vfs*/, const char *path, sqlite3_file *file, int flags, int *outFlags)
    {
        Layer &layer = shared();
        const int result = layer.system->xOpen(layer.system, path, file, flags, outFlags);
        if (file->pMethods != nullptr && file->pMethods->xWrite == layer.write) {
            // The calls are those of a file that nobody shares, so there are no locks between connections here.
            file->pMethods = &layer.methods;
        }
        return result;
    }
    static int writeIfThereIsRoom(sqlite3_file *file, const void *bytes, int count, sqlite3_int64 offset)
    {
        return s_isFull ? SQLITE_FULL : shared().write(file, bytes, count, offset);
    }
};

} // namespace

QByteArray FullDisk::name()
{
    static_cast<void>(Layer::shared());
    return kName;
}

void FullDisk::setFull(bool isFull)
{
    s_isFull = isFull;
}

} // namespace quib::tests
