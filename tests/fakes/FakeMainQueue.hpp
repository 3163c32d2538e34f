#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "Vantrel/Platform/MainQueue.hpp"
#include "Vantrel/Platform/RunLoop.hpp"
#include "tests/fakes/Journal.hpp"

namespace vantrel::fake {

class FakeTimer;

/// A main loop whose clock stands still until it is cranked. Runs deferred tasks, delayed work and timers in the order
/// of their time, on the calling thread. Counts in whole nanoseconds, so that sums of durations are exact.
class FakeMainQueue final : public MainQueue, public RunLoop {
  public:
    explicit FakeMainQueue(Journal& journal);
    ~FakeMainQueue() override;
    FakeMainQueue(const FakeMainQueue&) = delete;
    FakeMainQueue& operator=(const FakeMainQueue&) = delete;

    void async(std::function<void()> task) override;
    void asyncAfter(Seconds delay, std::shared_ptr<DispatchWorkItem> item) override;
    [[nodiscard]] bool isMainThread() const override { return isOnMainThread; }
    std::shared_ptr<Timer> scheduledTimer(Seconds interval, bool repeats, std::function<void(Timer&)> action) override;

    /// Runs the tasks that wait now; those that they add run at the next turn. How many ran.
    std::size_t turn();

    /// Lets the time pass and runs what falls due, each at its time.
    void advance(Seconds duration);

    /// Lets the time pass while the loop is busy elsewhere: what fell due runs late, at the next advance().
    void stall(Seconds duration);

    [[nodiscard]] Seconds now() const { return now_; }
    [[nodiscard]] std::size_t pendingTasks() const { return tasks_.size(); }
    [[nodiscard]] std::size_t pendingItems() const { return items_.size(); }

    /// The timers that are neither invalidated nor released nor spent.
    [[nodiscard]] std::size_t runningTimers() const;

    bool isOnMainThread = true;  ///< what isMainThread() answers

  private:
    using Time = std::chrono::nanoseconds;

    struct DelayedItem {
        Time due;
        std::uint64_t number;  ///< of the call, which decides between equal times
        std::shared_ptr<DispatchWorkItem> item;
    };

    bool runNextDue(Time limit);

    Journal& journal_;
    Time now_{0};
    std::uint64_t calls_ = 0;
    std::deque<std::function<void()>> tasks_;
    std::vector<DelayedItem> items_;
    std::vector<std::weak_ptr<FakeTimer>> timers_;
};

}  // namespace vantrel::fake
