#include "FaultVfs.h"

#include <QByteArray>

#include <algorithm>
#include <cstring>

namespace quib::tests {

namespace {

/// What a disk writes whole or not at all.
constexpr size_t kSector = 512;

bool isHeads(std::mt19937 &coins)
{
    return (coins() & 1U) != 0;
}

} // namespace

struct FaultVfs::File
{
    sqlite3_file base;
    FaultVfs *vfs;
    std::shared_ptr<Node> *node;
    int lock;
};

const sqlite3_io_methods FaultVfs::kMethods = {
    .iVersion = 1,
    .xClose = closeFile,
    .xRead = readFile,
    .xWrite = writeFile,
    .xTruncate = truncateFile,
    .xSync = syncFile,
    .xFileSize =
        [](sqlite3_file *file, sqlite3_int64 *size) {
            *size = static_cast<sqlite3_int64>((*reinterpret_cast<File *>(file)->node)->live.size());
            return SQLITE_OK;
        },
    .xLock = lockFile,
    .xUnlock = unlockFile,
    .xCheckReservedLock = isReserved,
    .xFileControl = [](sqlite3_file *, int, void *) { return SQLITE_NOTFOUND; },
    .xSectorSize = [](sqlite3_file *) { return static_cast<int>(kSector); },
    .xDeviceCharacteristics = [](sqlite3_file *) { return SQLITE_IOCAP_POWERSAFE_OVERWRITE; },
    .xShmMap = nullptr,
    .xShmLock = nullptr,
    .xShmBarrier = nullptr,
    .xShmUnmap = nullptr,
    .xFetch = nullptr,
    .xUnfetch = nullptr,
};

FaultVfs::FaultVfs()
    : m_name(QByteArray("fault-").append(QByteArray::number(reinterpret_cast<quintptr>(this), 16)))
{
    sqlite3_initialize();
    m_vfs = *sqlite3_vfs_find(nullptr); // time, chance and sleep are the system's
    m_vfs.iVersion = 1;
    m_vfs.szOsFile = static_cast<int>(sizeof(File));
    m_vfs.pNext = nullptr;
    m_vfs.zName = m_name.constData();
    m_vfs.pAppData = this;
    m_vfs.xOpen = openFile;
    m_vfs.xDelete = deleteFile;
    m_vfs.xAccess = access;
    m_vfs.xFullPathname = fullPathname;
    sqlite3_vfs_register(&m_vfs, 0);
}

FaultVfs::~FaultVfs()
{
    sqlite3_vfs_unregister(&m_vfs);
}

void FaultVfs::arm(int call, Fault fault)
{
    m_callsLeft = call;
    m_fault = fault;
    m_isStuck = false;
    m_hasStruck = false;
}

bool FaultVfs::strikes()
{
    if (m_isStuck) {
        return true;
    }
    if (m_callsLeft < 0 || m_callsLeft-- > 0) {
        return false;
    }
    m_hasStruck = true;
    m_isStuck = m_fault == Fault::PowerLoss || m_fault == Fault::FullDisk;
    return true;
}

void FaultVfs::cutPower(std::mt19937 &coins)
{
    for (const auto &[path, node] : m_names) {
        if (!m_syncedNames.contains(path) && isHeads(coins)) {
            m_syncedNames[path] = node;
        }
    }
    std::erase_if(m_syncedNames, [&](const auto &entry) {
        const auto live = m_names.find(entry.first);
        return (live == m_names.end() || live->second != entry.second) && isHeads(coins);
    });
    m_names = m_syncedNames;
    for (const auto &[path, node] : m_names) {
        std::string kept = node->synced;
        if (node->live.size() != kept.size() && isHeads(coins)) {
            kept.resize(node->live.size(), '\0');
        }
        for (size_t start = 0; start < std::min(kept.size(), node->live.size()); start += kSector) {
            if (isHeads(coins)) {
                const size_t count = std::min(kSector, std::min(kept.size(), node->live.size()) - start);
                kept.replace(start, count, node->live, start, count);
            }
        }
        node->live = node->synced = kept;
    }
    disarm();
}

FaultVfs::Names FaultVfs::contents() const
{
    Names copy;
    for (const auto &[path, node] : m_names) {
        copy[path] = std::make_shared<Node>(*node);
    }
    return copy;
}

void FaultVfs::setContents(const Names &contents)
{
    m_names.clear();
    for (const auto &[path, node] : contents) {
        m_names[path] = std::make_shared<Node>(Node{node->live, node->live, false});
    }
    m_syncedNames = m_names;
    disarm();
    m_hasStruck = false;
}

FaultVfs &FaultVfs::of(sqlite3_file *file)
{
    return *reinterpret_cast<File *>(file)->vfs;
}

int FaultVfs::openFile(sqlite3_vfs *vfs, const char *path, sqlite3_file *file, int flags, int *outFlags)
{
    auto &self = *static_cast<FaultVfs *>(vfs->pAppData);
    file->pMethods = nullptr;
    std::shared_ptr<Node> node;
    if (const auto found = path != nullptr ? self.m_names.find(path) : self.m_names.end();
        found != self.m_names.end()) {
        node = found->second;
    } else if ((flags & SQLITE_OPEN_CREATE) == 0 || (self.strikes() && self.m_fault != Fault::FullDisk)) {
        return SQLITE_CANTOPEN;
    } else {
        node = std::make_shared<Node>();
        node->isFolderSyncDue = true;
        if (path != nullptr) {
            self.m_names[path] = node;
        }
    }
    auto *opened = reinterpret_cast<File *>(file);
    opened->base.pMethods = &kMethods;
    opened->vfs = &self;
    opened->node = new std::shared_ptr<Node>(std::move(node));
    opened->lock = SQLITE_LOCK_NONE;
    self.m_open.push_back(opened);
    if (outFlags != nullptr) {
        *outFlags = flags;
    }
    return SQLITE_OK;
}

int FaultVfs::closeFile(sqlite3_file *file)
{
    auto *closed = reinterpret_cast<File *>(file);
    std::erase(closed->vfs->m_open, closed);
    delete closed->node;
    return SQLITE_OK;
}

int FaultVfs::deleteFile(sqlite3_vfs *vfs, const char *path, int syncFolder)
{
    auto &self = *static_cast<FaultVfs *>(vfs->pAppData);
    if (!self.m_names.contains(path)) {
        return SQLITE_IOERR_DELETE_NOENT;
    }
    if (self.strikes()) {
        return SQLITE_IOERR_DELETE;
    }
    self.m_names.erase(path);
    if (syncFolder != 0) {
        if (self.strikes()) {
            return SQLITE_IOERR_DIR_FSYNC;
        }
        self.m_syncedNames = self.m_names;
    }
    return SQLITE_OK;
}

int FaultVfs::access(sqlite3_vfs *vfs, const char *path, int /*flags*/, int *result)
{
    *result = static_cast<FaultVfs *>(vfs->pAppData)->m_names.contains(path) ? 1 : 0;
    return SQLITE_OK;
}

int FaultVfs::fullPathname(sqlite3_vfs * /*vfs*/, const char *path, int size, char *out)
{
    sqlite3_snprintf(size, out, "%s", path);
    return SQLITE_OK;
}

int FaultVfs::readFile(sqlite3_file *file, void *bytes, int count, sqlite3_int64 offset)
{
    const std::string &live = (*reinterpret_cast<File *>(file)->node)->live;
    const auto start = std::min(static_cast<size_t>(offset), live.size());
    const size_t there = std::min(static_cast<size_t>(count), live.size() - start);
    std::memcpy(bytes, live.data() + start, there);
    if (there < static_cast<size_t>(count)) {
        std::memset(static_cast<char *>(bytes) + there, 0, static_cast<size_t>(count) - there);
        return SQLITE_IOERR_SHORT_READ;
    }
    return SQLITE_OK;
}

int FaultVfs::writeFile(sqlite3_file *file, const void *bytes, int count, sqlite3_int64 offset)
{
    FaultVfs &self = of(file);
    std::string &live = (*reinterpret_cast<File *>(file)->node)->live;
    auto size = static_cast<size_t>(count);
    int result = SQLITE_OK;
    if (self.strikes()) {
        if (self.m_fault == Fault::IoError || self.m_fault == Fault::PowerLoss) {
            return SQLITE_IOERR_WRITE;
        }
        size /= 2;
        result = SQLITE_FULL;
    }
    const auto start = static_cast<size_t>(offset);
    if (live.size() < start + size) {
        live.resize(start + size, '\0');
    }
    std::memcpy(live.data() + start, bytes, size);
    return result;
}

int FaultVfs::truncateFile(sqlite3_file *file, sqlite3_int64 size)
{
    if (of(file).strikes()) {
        return SQLITE_IOERR_TRUNCATE;
    }
    (*reinterpret_cast<File *>(file)->node)->live.resize(static_cast<size_t>(size), '\0');
    return SQLITE_OK;
}

int FaultVfs::syncFile(sqlite3_file *file, int /*flags*/)
{
    FaultVfs &self = of(file);
    if (self.strikes()) {
        return SQLITE_IOERR_FSYNC;
    }
    Node &node = **reinterpret_cast<File *>(file)->node;
    node.synced = node.live;
    if (node.isFolderSyncDue) {
        self.m_syncedNames = self.m_names;
        node.isFolderSyncDue = false;
    }
    return SQLITE_OK;
}

int FaultVfs::lockFile(sqlite3_file *file, int level)
{
    auto *mine = reinterpret_cast<File *>(file);
    for (const File *other : mine->vfs->m_open) {
        if (other == mine || *other->node != *mine->node) {
            continue;
        }
        const bool mayRead = other->lock < SQLITE_LOCK_PENDING;
        const bool mayReserve = other->lock < SQLITE_LOCK_RESERVED;
        if (level == SQLITE_LOCK_SHARED ? !mayRead : !mayReserve) {
            return SQLITE_BUSY;
        }
        if (level == SQLITE_LOCK_EXCLUSIVE && other->lock != SQLITE_LOCK_NONE) {
            mine->lock = SQLITE_LOCK_PENDING;
            return SQLITE_BUSY;
        }
    }
    mine->lock = std::max(mine->lock, level);
    return SQLITE_OK;
}

int FaultVfs::unlockFile(sqlite3_file *file, int level)
{
    auto *mine = reinterpret_cast<File *>(file);
    mine->lock = std::min(mine->lock, level);
    return SQLITE_OK;
}

int FaultVfs::isReserved(sqlite3_file *file, int *result)
{
    const auto *mine = reinterpret_cast<File *>(file);
    *result = 0;
    for (const File *other : mine->vfs->m_open) {
        if (*other->node == *mine->node && other->lock >= SQLITE_LOCK_RESERVED) {
            *result = 1;
        }
    }
    return SQLITE_OK;
}

} // namespace quib::tests
