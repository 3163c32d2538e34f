#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "Vantrel/Handles/LoopSource.hpp"
#include "Vantrel/Platform/MainQueue.hpp"

namespace vantrel::desktop {

/// The main queue, served by a GLib main context. Made and used on the thread that runs the context; only
/// isMainThread() may be called elsewhere. What waits goes with the queue.
class GLibMainQueue final : public MainQueue {
  public:
    /// Null means the default context; another one outlives the queue.
    explicit GLibMainQueue(GMainContext* context = nullptr);
    ~GLibMainQueue() override = default;
    GLibMainQueue(const GLibMainQueue&) = delete;
    GLibMainQueue& operator=(const GLibMainQueue&) = delete;

    /// A task that is scheduled by a running task waits for the turn after this one.
    void async(std::function<void()> task) override;

    /// The delay is kept to the millisecond, never shortened. A cancelled item leaves no wake-up behind.
    void asyncAfter(Seconds delay, std::shared_ptr<DispatchWorkItem> item) override;

    [[nodiscard]] bool isMainThread() const override;

    /// Lets go of the tasks that wait, and of what they hold, without running them: the loop turns no more.
    void dropTasks();

  private:
    void runTasks();

    GMainContext* context_;
    std::thread::id mainThread_;
    std::deque<std::function<void()>> tasks_;
    LoopSource tasksSource_;
    std::vector<std::shared_ptr<LoopSource>> delayed_;  ///< also some that are done
};

}  // namespace vantrel::desktop
