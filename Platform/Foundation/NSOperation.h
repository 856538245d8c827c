#pragma once

#include <QString>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

class NSOperationQueue;

/// A piece of work that a queue runs once, when all operations it depends on have finished. Subclasses do the work in
/// main(), which looks at isCancelled() now and then. An operation whose work goes on after main() overrides
/// isAsynchronous() and calls finish() itself, from any thread. Held by shared pointers; the queue keeps it until it
/// has finished. State goes one way: waiting, executing, finished. A cancelled operation that has not begun finishes
/// without main().
class NSOperation : public std::enable_shared_from_this<NSOperation>
{
public:
    NSOperation() = default;
    virtual ~NSOperation() = default;
    NSOperation(const NSOperation &) = delete;
    NSOperation &operator=(const NSOperation &) = delete;

    [[nodiscard]] QString name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }

    /// Lets this operation wait for another one, on any queue. A cancelled one that has finished counts.
    /// Requires: this operation is on no queue yet; a circle of operations never begins.
    void addDependency(std::shared_ptr<NSOperation> operation);
    /// Called once, after the operation has finished, on the thread that finished it.
    void setCompletionBlock(std::function<void()> block);

    /// Asks the operation to stop. It still finishes, and its completion block is called. Any thread.
    void cancel();
    [[nodiscard]] bool isCancelled() const { return m_isCancelled.load(); }
    [[nodiscard]] bool isExecuting() const { return m_state.load() == State::Executing; }
    [[nodiscard]] bool isFinished() const { return m_state.load() == State::Finished; }
    /// Waits until the operation has finished. Not from its own work.
    void waitUntilFinished();

protected:
    /// The work. Runs on a thread of the queue.
    virtual void main() = 0;
    [[nodiscard]] virtual bool isAsynchronous() const { return false; }
    /// Told by cancel(), on its thread, so that work that waits for something can stop waiting.
    virtual void didCancel() {}
    /// Ends an asynchronous operation. More than one call is the same as one.
    void finish();

private:
    friend class NSOperationQueue;
    enum class State
    {
        Waiting,
        Executing,
        Finished,
    };

    /// Runs main(), or finishes at once where cancelled.
    void start();

    QString m_name;
    std::atomic<bool> m_isCancelled = false;
    std::atomic<State> m_state = State::Waiting;
    std::mutex m_mutex; ///< guards the three below
    std::function<void()> m_completionBlock;
    std::function<void()> m_queueCompletion; ///< set by the queue
    std::vector<std::function<void()>> m_finishObservers;
    std::vector<std::shared_ptr<NSOperation>> m_dependencies; ///< fixed once on a queue
};

/// An operation made of a block.
class NSBlockOperation final : public NSOperation
{
public:
    explicit NSBlockOperation(std::function<void()> block)
        : m_block(std::move(block))
    {
    }
    [[nodiscard]] static std::shared_ptr<NSBlockOperation> blockOperationWithBlock(std::function<void()> block);

protected:
    void main() override;

private:
    std::function<void()> m_block;
};
