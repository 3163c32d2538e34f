#pragma once

#include <functional>
#include <memory>

#include "Vantrel/Platform/MainQueue.hpp"

namespace vantrel {

/// A timer on the main loop.
class Timer {
  public:
    virtual ~Timer() = default;

    /// Stops the timer for good. May be called from its own action.
    virtual void invalidate() = 0;

    [[nodiscard]] virtual bool isValid() const = 0;
};

/// Makes timers on the main loop.
class RunLoop {
  public:
    virtual ~RunLoop() = default;

    /// Calls the action every `interval` seconds, on a schedule anchored at this moment: a firing that the loop delayed
    /// does not move the later ones, and firings missed altogether are not made up for in a bunch. The interval is kept
    /// to the microsecond. The timer stops when it is invalidated or released.
    virtual std::shared_ptr<Timer> scheduledTimer(Seconds interval, bool repeats,
                                                  std::function<void(Timer&)> action) = 0;
};

}  // namespace vantrel
