#include "FileWatcher.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

#include <sys/inotify.h>

namespace quib {

namespace {

// A file that is replaced in one step is moved to its place; one that is written in place is closed after it, or kept
// open. A changed date alone counts too.
constexpr uint32_t kEvents = IN_CLOSE_WRITE | IN_MODIFY | IN_ATTRIB | IN_CREATE | IN_DELETE | IN_MOVED_FROM |
                             IN_MOVED_TO | IN_ONLYDIR | IN_DONT_FOLLOW;
constexpr size_t kBufferSize = 64 * 1024;

} // namespace

FileWatcher::FileWatcher(const QString &root, double latency, Callback callback, Depth depth)
    : m_root(QDir::cleanPath(QDir(root).absolutePath()))
    , m_latency(latency)
    , m_depth(depth)
    , m_callback(std::move(callback))
    , m_inotify(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    if (!m_inotify.isOpen()) {
        m_isComplete = false;
        return;
    }
    watchTree(m_root, /*tellsContent=*/false);
    m_notifier = std::make_unique<QSocketNotifier>(m_inotify.number(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { readChanges(); });
}

FileWatcher::~FileWatcher() = default;

/// The watch is set before the content is read: what is made in between is found by one of the two.
void FileWatcher::watchTree(const QString &folder, bool tellsContent)
{
    QStringList waiting{folder};
    while (!waiting.isEmpty()) {
        const QString next = waiting.takeLast();
        const int watch = ::inotify_add_watch(m_inotify.number(), QFile::encodeName(next).constData(), kEvents);
        if (watch < 0) {
            // A folder that is gone by now needs no watch.
            m_isComplete = m_isComplete && (errno == ENOENT || errno == ENOTDIR);
            continue;
        }
        // The system knows a moved folder by its old watch.
        m_watches.remove(m_folders.value(watch));
        m_folders.insert(watch, next);
        m_watches.insert(next, watch);
        if (m_depth == Depth::RootOnly) {
            continue;
        }
        QDirIterator content(next, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
        while (content.hasNext()) {
            const QString path = content.next();
            const QFileInfo item = content.fileInfo();
            if (item.isDir() && !item.isSymLink()) {
                waiting.append(path);
            } else if (tellsContent) {
                changed(next);
            }
        }
    }
}

void FileWatcher::forgetTree(const QString &folder)
{
    const QString below = folder + u'/';
    for (auto entry = m_watches.begin(); entry != m_watches.end();) {
        if (entry.key() == folder || entry.key().startsWith(below)) {
            ::inotify_rm_watch(m_inotify.number(), entry.value());
            m_folders.remove(entry.value());
            entry = m_watches.erase(entry);
        } else {
            ++entry;
        }
    }
}

void FileWatcher::readChanges()
{
    alignas(inotify_event) std::array<std::byte, kBufferSize> buffer;
    for (;;) {
        const ssize_t size = ::read(m_inotify.number(), buffer.data(), buffer.size());
        if (size <= 0) {
            return; // nothing more is waiting
        }
        for (size_t offset = 0; offset < static_cast<size_t>(size);) {
            const auto *event = reinterpret_cast<const inotify_event *>(buffer.data() + offset);
            take(*event);
            offset += sizeof(inotify_event) + event->len;
        }
    }
}

void FileWatcher::take(const inotify_event &event)
{
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
        takeOverflow();
        return;
    }
    const QString folder = m_folders.value(event.wd);
    if (folder.isEmpty()) {
        return; // forgotten since
    }
    if ((event.mask & IN_IGNORED) != 0) {
        m_folders.remove(event.wd);
        m_watches.remove(folder);
        return;
    }
    if ((event.mask & IN_ISDIR) == 0) {
        changed(folder);
        return;
    }
    if (event.len == 0) {
        return; // of the folder itself; its parent tells what counts
    }
    const QString inner = folder + u'/' + QFile::decodeName(event.name);
    if (m_depth == Depth::RootOnly) {
        return;
    }
    if ((event.mask & (IN_MOVED_FROM | IN_DELETE)) != 0) {
        forgetTree(inner);
        changed(inner);
    } else if ((event.mask & (IN_MOVED_TO | IN_CREATE)) != 0) {
        watchTree(inner, /*tellsContent=*/true);
    }
}

/// The system lost events: any folder may have changed, and folders may have come.
void FileWatcher::takeOverflow()
{
    watchTree(m_root, /*tellsContent=*/false);
    for (auto entry = m_watches.cbegin(); entry != m_watches.cend(); ++entry) {
        changed(entry.key());
    }
}

void FileWatcher::changed(const QString &folder)
{
    m_changed.insert(folder);
    if (m_timer == nullptr) {
        m_timer = Clock::shared().schedule(m_latency, [this] { tell(); });
    }
}

void FileWatcher::tell()
{
    // The callback may destroy the watcher.
    const std::unique_ptr<TimerToken> timer = std::move(m_timer);
    const QSet<QString> folders = std::exchange(m_changed, {});
    QStringList sorted(folders.cbegin(), folders.cend());
    sorted.sort();
    const Callback callback = m_callback;
    callback(sorted);
}

} // namespace quib
