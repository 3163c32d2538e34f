#pragma once

#include <chrono>
#include <optional>

#include "Vantrel/Backends/Wayland/OutputLayout.hpp"
#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel::plasma {

using Clock = std::chrono::steady_clock;

/// Asks KWin where the pointer is by a script that KWin runs: its answer to everybody (org.kde.kwin.Scripting), also
/// while a button is held. It takes some milliseconds.
class PointerScript {
  public:
    /// Serves one object on the bus, to which the script tells what it sees.
    explicit PointerScript(GObjectPointer<GDBusConnection> bus);
    ~PointerScript();
    PointerScript(const PointerScript&) = delete;
    PointerScript& operator=(const PointerScript&) = delete;

    /// Where the pointer is; none when KWin does not answer until the deadline.
    std::optional<wayland::LayoutPoint> ask(Clock::time_point deadline);

  private:
    struct Callbacks;
    GVariantPointer call(const char* path, const char* interface, const char* method, GVariant* arguments,
                         Clock::time_point deadline);

    GObjectPointer<GDBusConnection> bus_;
    GMainContextPointer answers_;  ///< in which the script's calls arrive, while one is waited for
    guint object_ = 0;
    unsigned questions_ = 0;
    std::optional<wayland::LayoutPoint> told_;  ///< to the last question
};

}  // namespace vantrel::plasma
