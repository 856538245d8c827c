#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <shared_mutex>

namespace quib {

/// Work in pieces that give results. Shared by the threads at it, the last of which may be done later than whoever
/// asked for it; so it owns all it goes by, but for what a lock guards.
class ChunkedWork
{
public:
    ChunkedWork(size_t count, std::shared_ptr<std::shared_mutex> guard)
        : m_count(count)
        , m_guard(std::move(guard))
    {
    }
    virtual ~ChunkedWork() = default;
    ChunkedWork(const ChunkedWork &) = delete;
    ChunkedWork &operator=(const ChunkedWork &) = delete;

    [[nodiscard]] size_t count() const { return m_count; }
    [[nodiscard]] std::shared_mutex &guard() const { return *m_guard; }
    /// Works out a piece and gives what is to be called, one thread at a time, to keep the result. Called with the
    /// guard locked for reading; for pieces side by side in no order, and for a piece twice where somebody is slow at
    /// it.
    [[nodiscard]] virtual std::function<void()> workOut(size_t index) = 0;

private:
    const size_t m_count;
    const std::shared_ptr<std::shared_mutex> m_guard;
};

/// Works out all pieces, each result of which is kept once: on the calling thread, and on as many others as the machine
/// has room for. Waits for nobody: not for a thread to start, nor for one that has begun a piece and was then put off,
/// whose piece is worked out once more. So a busy machine is no slower than one thread alone. Any thread.
/// Requires: the caller holds the guard for reading, and everybody who changes or ends what it guards, for writing.
void runInChunks(const std::shared_ptr<ChunkedWork> &work);

} // namespace quib
