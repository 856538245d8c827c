#pragma once

#include "Descriptor.h"

#include <Foundation/Clock.h>

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class QSocketNotifier;
struct inotify_event;

namespace quib {

/// Tells which folders below a root had files written, replaced, made, moved or removed, at any depth or in the root
/// alone, from its making on. What happens within the latency is told at once. Lives on the thread that made it, and
/// needs its event loop. Folders that are links are not followed.
class FileWatcher
{
public:
    /// Shape: the folders, absolute and sorted, each once. One may be gone by now.
    using Callback = std::function<void(const QStringList &folders)>;

    enum class Depth
    {
        Tree,
        RootOnly,
    };

    /// Units: seconds from the first change until it is told.
    FileWatcher(const QString &root, double latency, Callback callback, Depth depth = Depth::Tree);
    ~FileWatcher();
    FileWatcher(const FileWatcher &) = delete;
    FileWatcher &operator=(const FileWatcher &) = delete;

    /// False once the system refused to watch a folder, as it does beyond a number set by the administrator: changes in
    /// that folder are not told.
    [[nodiscard]] bool isComplete() const { return m_isComplete; }
    /// Readable when the system has changes to tell.
    [[nodiscard]] int descriptor() const { return m_inotify.number(); }
    /// Takes in what the system has to tell; the event loop does this by itself.
    void readChanges();

private:
    void watchTree(const QString &folder, bool tellsContent);
    void forgetTree(const QString &folder);
    void take(const inotify_event &event);
    void takeOverflow();
    void changed(const QString &folder);
    void tell();

    QString m_root;
    double m_latency;
    Depth m_depth;
    Callback m_callback;
    Descriptor m_inotify;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::unique_ptr<TimerToken> m_timer;
    QHash<int, QString> m_folders; ///< by watch
    QHash<QString, int> m_watches; ///< by folder
    QSet<QString> m_changed;       ///< waits for the timer
    bool m_isComplete = true;
};

} // namespace quib
