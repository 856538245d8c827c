#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace quib {

/// A serial executor. Blocks run one after the other, never two at once. Kept alive by whoever holds it and by its own
/// waiting blocks.
class DispatchQueue
{
public:
    virtual ~DispatchQueue() = default;

    /// The queue of the main thread: the Qt event loop.
    [[nodiscard]] static std::shared_ptr<DispatchQueue> main();
    /// A new serial queue; its blocks run on threads of its own.
    [[nodiscard]] static std::shared_ptr<DispatchQueue> serial(const QString &name);

    [[nodiscard]] virtual QString name() const = 0;
    /// Runs the block later, after all blocks given before. Never runs it at once, even on the queue itself.
    virtual void async(std::function<void()> block) = 0;
    /// Runs the block as this queue and returns when it is done. At once when already on the queue. On a private queue
    /// the block runs on the calling thread, which holds the queue meanwhile: the main thread may thus wait for a
    /// private queue whose block in turn asks for the main queue.
    virtual void sync(const std::function<void()> &block) = 0;
    /// True in a block of this queue, also while that block is inside sync() of another queue.
    [[nodiscard]] virtual bool isCurrent() const = 0;
};

} // namespace quib
