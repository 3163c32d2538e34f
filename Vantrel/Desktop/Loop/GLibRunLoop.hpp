#pragma once

#include <glib.h>

#include "Vantrel/Platform/RunLoop.hpp"

namespace vantrel::desktop {

/// Timers on a GLib main context, kept by the kernel: GLib's own waits are whole milliseconds, which would stretch a
/// tick of 8.889 ms to 9. Main thread only.
class GLibRunLoop final : public RunLoop {
  public:
    /// Null means the default context.
    explicit GLibRunLoop(GMainContext* context = nullptr) : context_(context) {}

    /// Intervals below 0.1 ms count as 0.1 ms.
    std::shared_ptr<Timer> scheduledTimer(Seconds interval, bool repeats, std::function<void(Timer&)> action) override;

  private:
    GMainContext* context_;
};

}  // namespace vantrel::desktop
