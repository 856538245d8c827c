#include "StoreWatch.h"

#include <Foundation/NSError.h>
#include <Store/NSPersistentStore.h>

#include <QFileInfo>

namespace quib {

StoreWatch::StoreWatch(NSPersistentStore &store, const QString &path, std::function<void()> changed)
    : m_store(store)
    , m_changed(std::move(changed))
    , m_watcher(std::make_unique<FileWatcher>(
          QFileInfo(path).absolutePath(), kLatency, [this](const QStringList & /*folders*/) { look(); },
          FileWatcher::Depth::RootOnly))
{
    NSError error;
    m_counter = m_store.changeCounter(&error).value_or(-1);
    if (!m_watcher->isComplete()) {
        scheduleLook();
    }
}

void StoreWatch::look()
{
    m_timer.reset();
    NSError error;
    const auto counter = m_store.changeCounter(&error);
    if (!counter || !m_watcher->isComplete()) {
        scheduleLook();
    }
    if (counter && *counter != m_counter) {
        m_counter = *counter;
        m_changed();
    }
}

void StoreWatch::scheduleLook()
{
    m_timer = Clock::shared().schedule(kPollInterval, [this] { look(); });
}

} // namespace quib
