#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "Vantrel/Handles/FileDescriptor.hpp"
#include "Vantrel/Handles/LoopSource.hpp"
#include "Vantrel/Platform/RunLoop.hpp"

namespace vantrel::desktop {

/// A timer on a kernel timer descriptor, which keeps the schedule itself: however late the loop comes, it finds one
/// firing, and the next is due where it would have been. Invalidating or releasing the timer closes the descriptor.
class KernelTimer final : public Timer, public std::enable_shared_from_this<KernelTimer> {
  public:
    KernelTimer(bool repeats, std::function<void(Timer&)> action);
    ~KernelTimer() override = default;
    KernelTimer(const KernelTimer&) = delete;
    KernelTimer& operator=(const KernelTimer&) = delete;

    /// Starts the schedule at this moment. Call once, on a timer that a shared pointer owns.
    void start(GMainContext* context, Seconds interval);

    void invalidate() override;
    [[nodiscard]] bool isValid() const override { return source_.isSet(); }

  private:
    bool startKernelTimer(std::chrono::nanoseconds interval);
    void waitCoarsely();
    void takeFiring();
    void takeCoarseFiring();
    void fire();

    bool repeats_;
    std::function<void(Timer&)> action_;
    LoopPlace place_;
    FileDescriptor descriptor_;
    LoopSource source_;
    // For the coarse timer alone.
    std::chrono::microseconds coarseInterval_{};
    std::chrono::steady_clock::time_point coarseDue_;
};

}  // namespace vantrel::desktop
