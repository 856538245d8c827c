#include "NSOperationQueue.h"

#include "Assert.h"
#include "WorkerThreads.h"

#include <QThread>

#include <algorithm>
#include <condition_variable>
#include <list>

/// Invariants: (1) running never exceeds the width; (2) an operation begins once, and only with all its dependencies
/// finished; (3) among those that may begin, the one that was added first does.
struct NSOperationQueue::State : std::enable_shared_from_this<NSOperationQueue::State>
{
    struct Entry
    {
        std::shared_ptr<NSOperation> operation;
        size_t unfinishedDependencies = 0;
        bool hasBegun = false;
    };

    void add(std::shared_ptr<NSOperation> operation)
    {
        std::vector<std::shared_ptr<NSOperation>> dependencies;
        std::list<Entry>::iterator entry;
        {
            const std::lock_guard lock(operation->m_mutex);
            QUIB_ASSERT(!operation->m_queueCompletion && operation->m_state.load() == NSOperation::State::Waiting);
            dependencies = operation->m_dependencies;
        }
        {
            const std::lock_guard lock(mutex);
            // One more than there are, until all is set up below.
            entries.push_back({operation, dependencies.size() + 1, false});
            entry = std::prev(entries.end());
        }
        {
            const std::lock_guard lock(operation->m_mutex);
            operation->m_queueCompletion = [self = shared_from_this(), entry] { self->didFinish(entry); };
        }
        for (const auto &dependency : dependencies) {
            const std::lock_guard lock(dependency->m_mutex);
            if (dependency->isFinished()) {
                const std::lock_guard inner(mutex);
                --entry->unfinishedDependencies;
            } else {
                // The entry lives at least until its last dependency has finished.
                dependency->m_finishObservers.emplace_back([self = shared_from_this(), entry] {
                    {
                        const std::lock_guard inner(self->mutex);
                        --entry->unfinishedDependencies;
                    }
                    self->beginWhatMay();
                });
            }
        }
        {
            const std::lock_guard lock(mutex);
            --entry->unfinishedDependencies;
        }
        beginWhatMay();
    }

    void didFinish(std::list<Entry>::iterator entry)
    {
        Entry ended;
        {
            const std::lock_guard lock(mutex);
            ended = std::move(*entry);
            entries.erase(entry);
            --running;
            if (entries.empty()) {
                emptied.notify_all();
            }
        }
        beginWhatMay();
    }

    void beginWhatMay()
    {
        const std::lock_guard lock(mutex);
        for (auto entry = entries.begin(); entry != entries.end() && !isSuspended && running < limit(); ++entry) {
            if (entry->hasBegun || entry->unfinishedDependencies > 0) {
                continue;
            }
            entry->hasBegun = true;
            ++running;
            quib::WorkerThreads::shared().start([operation = entry->operation] { operation->start(); });
        }
    }

    [[nodiscard]] int limit() const { return width > 0 ? width : std::max(2, QThread::idealThreadCount()); }

    QString name;
    std::mutex mutex; ///< guards all below; taken after an operation's
    std::condition_variable emptied;
    std::list<Entry> entries;
    int running = 0;
    int width = kDefaultMaxConcurrentOperationCount;
    bool isSuspended = false;
};

NSOperationQueue::NSOperationQueue(const QString &name)
    : m_state(std::make_shared<State>())
{
    m_state->name = name;
}

NSOperationQueue::~NSOperationQueue() = default;

QString NSOperationQueue::name() const
{
    return m_state->name;
}

void NSOperationQueue::setMaxConcurrentOperationCount(int count)
{
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->width = count;
    }
    m_state->beginWhatMay();
}

int NSOperationQueue::maxConcurrentOperationCount() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->width;
}

void NSOperationQueue::setSuspended(bool suspended)
{
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->isSuspended = suspended;
    }
    m_state->beginWhatMay();
}

bool NSOperationQueue::isSuspended() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->isSuspended;
}

void NSOperationQueue::addOperation(std::shared_ptr<NSOperation> operation)
{
    m_state->add(std::move(operation));
}

void NSOperationQueue::addOperationWithBlock(std::function<void()> block)
{
    addOperation(NSBlockOperation::blockOperationWithBlock(std::move(block)));
}

std::vector<std::shared_ptr<NSOperation>> NSOperationQueue::operations() const
{
    const std::lock_guard lock(m_state->mutex);
    std::vector<std::shared_ptr<NSOperation>> all;
    for (const auto &entry : m_state->entries) {
        all.push_back(entry.operation);
    }
    return all;
}

void NSOperationQueue::cancelAllOperations()
{
    for (const auto &operation : operations()) {
        operation->cancel();
    }
}

void NSOperationQueue::waitUntilAllOperationsAreFinished()
{
    std::unique_lock lock(m_state->mutex);
    m_state->emptied.wait(lock, [this] { return m_state->entries.empty(); });
}
