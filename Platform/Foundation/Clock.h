#pragma once

#include <Foundation/NSDate.h>

#include <functional>
#include <memory>

namespace quib {

/// A scheduled call; destroying it, or invalidate(), cancels the call. Lives on the queue that scheduled it.
class TimerToken
{
public:
    virtual ~TimerToken() = default;
    virtual void invalidate() = 0;
    [[nodiscard]] virtual bool isValid() const = 0;
};

/// Where time comes from: the present instant, and calls made later. Tests install one that they drive by hand.
class Clock
{
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual NSDate now() = 0;
    /// Calls callback once, seconds from now (0: at the next turn of the event loop), on the calling thread's loop.
    [[nodiscard]] virtual std::unique_ptr<TimerToken> schedule(double seconds, std::function<void()> callback) = 0;

    /// The installed clock; the system's where none was installed.
    [[nodiscard]] static Clock &shared();
    /// Installs a clock that the caller keeps alive; null goes back to the system's.
    static void setShared(Clock *clock);
};

} // namespace quib
