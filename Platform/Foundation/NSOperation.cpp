#include "NSOperation.h"

#include "Assert.h"

#include <condition_variable>

void NSOperation::addDependency(std::shared_ptr<NSOperation> operation)
{
    QUIB_ASSERT(operation && operation.get() != this);
    const std::lock_guard lock(m_mutex);
    QUIB_ASSERT(!m_queueCompletion);
    m_dependencies.push_back(std::move(operation));
}

void NSOperation::setCompletionBlock(std::function<void()> block)
{
    const std::lock_guard lock(m_mutex);
    m_completionBlock = std::move(block);
}

void NSOperation::cancel()
{
    if (!m_isCancelled.exchange(true)) {
        didCancel();
    }
}

void NSOperation::start()
{
    State expected = State::Waiting;
    if (!m_state.compare_exchange_strong(expected, State::Executing)) {
        return;
    }
    if (isCancelled()) {
        finish();
        return;
    }
    main();
    if (!isAsynchronous()) {
        finish();
    }
}

void NSOperation::finish()
{
    const auto self = shared_from_this(); // the queue lets go below
    std::function<void()> completion;
    std::function<void()> queueCompletion;
    std::vector<std::function<void()>> observers;
    {
        const std::lock_guard lock(m_mutex);
        if (m_state.exchange(State::Finished) == State::Finished) {
            return;
        }
        completion = std::exchange(m_completionBlock, nullptr);
        queueCompletion = std::exchange(m_queueCompletion, nullptr);
        observers = std::exchange(m_finishObservers, {});
        m_dependencies.clear(); // a chain of operations does not keep all before it
    }
    if (completion) {
        completion();
    }
    for (const auto &observer : observers) {
        observer();
    }
    if (queueCompletion) {
        queueCompletion();
    }
}

void NSOperation::waitUntilFinished()
{
    struct Gate
    {
        std::mutex mutex;
        std::condition_variable opened;
        bool isOpen = false;
    };
    const auto gate = std::make_shared<Gate>();
    {
        const std::lock_guard lock(m_mutex);
        if (isFinished()) {
            return;
        }
        m_finishObservers.emplace_back([gate] {
            const std::lock_guard inner(gate->mutex);
            gate->isOpen = true;
            gate->opened.notify_all();
        });
    }
    std::unique_lock lock(gate->mutex);
    gate->opened.wait(lock, [&gate] { return gate->isOpen; });
}

std::shared_ptr<NSBlockOperation> NSBlockOperation::blockOperationWithBlock(std::function<void()> block)
{
    return std::make_shared<NSBlockOperation>(std::move(block));
}

void NSBlockOperation::main()
{
    const auto block = std::exchange(m_block, nullptr); // what it holds dies with the run
    block();
}
