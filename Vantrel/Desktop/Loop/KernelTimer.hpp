#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "Vantrel/Desktop/Loop/SourceHandles.hpp"
#include "Vantrel/Handles/FileDescriptor.hpp"
#include "Vantrel/Platform/RunLoop.hpp"

namespace vantrel::desktop {

/// A timer on a kernel timer descriptor, which keeps the schedule itself: however late the loop comes, it finds one
/// firing, and the next is due where it would have been. Invalidating or releasing the timer closes the descriptor.
class KernelTimer final : public Timer, public std::enable_shared_from_this<KernelTimer> {
  public:
    KernelTimer(bool repeats, std::function<void(Timer&)> action);
    ~KernelTimer() override;
    KernelTimer(const KernelTimer&) = delete;
    KernelTimer& operator=(const KernelTimer&) = delete;

    /// Starts the schedule at this moment. Call once, on a timer that a shared pointer owns.
    void start(GMainContext* context, Seconds interval);

    void invalidate() override;
    [[nodiscard]] bool isValid() const override { return source_ != nullptr; }

  private:
    struct Source;
    static gboolean dispatch(GSource* source, GSourceFunc callback, gpointer data);

    bool startKernelTimer(std::chrono::nanoseconds interval);
    void startCoarseTimer(std::chrono::nanoseconds interval);
    bool takeFiring();
    void fire();

    bool repeats_;
    std::function<void(Timer&)> action_;
    FileDescriptor descriptor_;
    SourceHandle source_;
    // Microseconds, for the coarse timer alone.
    gint64 coarseInterval_ = 0;
    gint64 coarseDue_ = 0;
};

}  // namespace vantrel::desktop
