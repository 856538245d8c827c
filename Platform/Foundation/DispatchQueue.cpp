#include "DispatchQueue.h"

#include "HandOver_p.h"
#include "WorkerThreads.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QSemaphore>
#include <QThread>

#include <condition_variable>
#include <deque>
#include <mutex>

namespace quib {

namespace {

/// A private queue that the calling thread holds, and the one that it held before.
struct HeldQueue
{
    const DispatchQueue *queue;
    const HeldQueue *outer;
};

/// The innermost of them. A plain pointer into the thread's stack: what runs at the exit of the process, when a
/// thread's objects have been destroyed already, may still use queues.
thread_local const HeldQueue *s_held = nullptr;

class MainQueue final : public DispatchQueue
{
public:
    [[nodiscard]] QString name() const override { return QStringLiteral("main"); }
    void async(std::function<void()> block) override
    {
        auto handedOver = [block = std::move(block)] {
            takeOver();
            block();
        };
        const HandOver handOver;
        QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(handedOver), Qt::QueuedConnection);
    }
    void sync(const std::function<void()> &block) override
    {
        if (isCurrent()) {
            block();
            return;
        }
        QSemaphore done;
        async([&block, &done] {
            block();
            const HandOver handOver;
            done.release();
        });
        done.acquire();
        takeOver();
    }
    [[nodiscard]] bool isCurrent() const override
    {
        const auto *application = QCoreApplication::instance();
        return application == nullptr || QThread::currentThread() == application->thread();
    }
};

/// A queue whose blocks run on a worker thread, or on the thread that waits in sync(). Whoever runs a block holds
/// the queue; blocks take their turns by ticket.
///
/// Invariants: (1) at most one thread holds the queue; (2) blocks run in the order of their tickets; (3) at most one
/// worker works for the queue.
class SerialQueue final : public DispatchQueue, public std::enable_shared_from_this<SerialQueue>
{
public:
    explicit SerialQueue(QString name)
        : m_name(std::move(name))
    {
    }

    [[nodiscard]] QString name() const override { return m_name; }

    void async(std::function<void()> block) override
    {
        const std::lock_guard lock(m_mutex);
        m_blocks.push_back({m_nextTicket++, std::move(block)});
        if (!m_isDraining) {
            m_isDraining = true;
            WorkerThreads::shared().start([self = shared_from_this()] { self->drain(); });
        }
    }

    void sync(const std::function<void()> &block) override
    {
        if (isCurrent()) {
            block();
            return;
        }
        std::unique_lock lock(m_mutex);
        const quint64 ticket = m_nextTicket++;
        m_turn.wait(lock, [this, ticket] { return m_servedTicket == ticket; });
        lock.unlock();
        run(block);
        finish();
    }

    [[nodiscard]] bool isCurrent() const override
    {
        for (const HeldQueue *held = s_held; held != nullptr; held = held->outer) {
            if (held->queue == this) {
                return true;
            }
        }
        return false;
    }

private:
    struct Waiting
    {
        quint64 ticket = 0;
        std::function<void()> block;
    };

    void drain()
    {
        for (;;) {
            std::unique_lock lock(m_mutex);
            if (m_blocks.empty()) {
                m_isDraining = false;
                return;
            }
            Waiting oldest = std::move(m_blocks.front());
            m_blocks.pop_front();
            m_turn.wait(lock, [this, &oldest] { return m_servedTicket == oldest.ticket; });
            lock.unlock();
            run(oldest.block);
            oldest.block = nullptr; // what the block holds dies before the next one starts
            finish();
        }
    }

    void run(const std::function<void()> &block) const
    {
        const HeldQueue held{this, s_held};
        s_held = &held;
        block();
        s_held = held.outer;
    }

    void finish()
    {
        {
            const std::lock_guard lock(m_mutex);
            ++m_servedTicket;
        }
        m_turn.notify_all();
    }

    QString m_name;
    std::mutex m_mutex;
    std::condition_variable m_turn;
    quint64 m_nextTicket = 0;
    quint64 m_servedTicket = 0;
    std::deque<Waiting> m_blocks;
    bool m_isDraining = false;
};

} // namespace

std::shared_ptr<DispatchQueue> DispatchQueue::main()
{
    static const auto queue = std::make_shared<MainQueue>();
    return queue;
}

std::shared_ptr<DispatchQueue> DispatchQueue::serial(const QString &name)
{
    return std::make_shared<SerialQueue>(name);
}

} // namespace quib
