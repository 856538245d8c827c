#pragma once

#include <cstddef>
#include <functional>

namespace quib {

/// Runs work(0) to work(count - 1), each once, and returns when all are done: on the calling thread, and on as many
/// others as the machine has room for. Nothing waits for another thread to start, so that a busy machine is no slower
/// than one thread alone but for the last piece that another has begun. Any thread.
/// Shape:   pieces run side by side and in no order; work must not wait for one another's.
void runInChunks(size_t count, const std::function<void(size_t index)> &work);

} // namespace quib
