#pragma once

#include <optional>
#include <string>
#include <utility>

#include "Vantrel/Backends/Common/BusCall.hpp"
#include "Vantrel/Backends/Wayland/OutputLayout.hpp"

namespace vantrel::plasma {

using backend::Clock;

/// Asks KWin where the pointer is by a script that KWin runs: its answer to everybody (org.kde.kwin.Scripting), also
/// while a button is held. It takes some milliseconds.
class PointerScript {
  public:
    explicit PointerScript(GObjectPointer<GDBusConnection> bus) : bus_(std::move(bus)) {}

    /// Where the pointer is; none when KWin does not answer until the deadline. Serves one object on the bus meanwhile,
    /// to which the script tells what it sees.
    std::optional<wayland::LayoutPoint> ask(Clock::time_point deadline);

  private:
    [[nodiscard]] bool run(const std::string& file, Clock::time_point deadline);

    GObjectPointer<GDBusConnection> bus_;
    unsigned questions_ = 0;
};

}  // namespace vantrel::plasma
