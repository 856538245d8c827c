#pragma once

#include "NSOperation.h"

#include <QString>

#include <memory>
#include <vector>

/// Runs operations on threads of its own, as many at once as its width, in the order of adding among those whose
/// dependencies have finished. Any thread. Destroying it cancels nothing: operations given to it still run.
class NSOperationQueue
{
public:
    /// A width that only the machine bounds.
    static constexpr int kDefaultMaxConcurrentOperationCount = -1;

    explicit NSOperationQueue(const QString &name = QString());
    ~NSOperationQueue();
    NSOperationQueue(const NSOperationQueue &) = delete;
    NSOperationQueue &operator=(const NSOperationQueue &) = delete;

    [[nodiscard]] QString name() const;
    /// How many operations run at once; 1 makes a serial queue.
    void setMaxConcurrentOperationCount(int count);
    [[nodiscard]] int maxConcurrentOperationCount() const;
    /// Begins no operation while suspended; those that run go on.
    void setSuspended(bool suspended);
    [[nodiscard]] bool isSuspended() const;

    /// Requires: the operation was given to no queue before.
    void addOperation(std::shared_ptr<NSOperation> operation);
    void addOperationWithBlock(std::function<void()> block);
    /// The operations that have not finished, in the order of adding.
    [[nodiscard]] std::vector<std::shared_ptr<NSOperation>> operations() const;
    [[nodiscard]] size_t operationCount() const { return operations().size(); }
    void cancelAllOperations();
    /// Waits until all operations have finished that are on the queue now or come meanwhile. Not from one of them.
    void waitUntilAllOperationsAreFinished();

private:
    struct State;
    std::shared_ptr<State> m_state; ///< shared with the operations under way
};
