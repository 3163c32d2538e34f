#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "Vantrel/Platform/DispatchWorkItem.hpp"

namespace vantrel {

using Seconds = std::chrono::duration<double>;

/// Work that runs later on the main thread, by the main loop.
class MainQueue {
  public:
    virtual ~MainQueue() = default;

    /// Runs the task on a later turn of the loop, in the order of the calls, before lower-priority work.
    virtual void async(std::function<void()> task) = 0;

    /// Runs the item once after the delay (seconds, from now), unless it is cancelled before.
    virtual void asyncAfter(Seconds delay, std::shared_ptr<DispatchWorkItem> item) = 0;

    /// Whether the caller is on the thread that runs the loop.
    [[nodiscard]] virtual bool isMainThread() const = 0;
};

}  // namespace vantrel
