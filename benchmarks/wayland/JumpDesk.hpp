#pragma once

#include <sys/types.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/desk/wayland/support/LayoutPoint.hpp"

namespace vantrel::bench {

/// Who carries the pointer: Vantrel, or a program of a few lines that does so by the same means.
enum class Carrier { floor, vantrel };

/// A private session with two displays in which Hyper + D carries the pointer from one to the other and back.
class JumpDesk {
  public:
    JumpDesk() = default;
    virtual ~JumpDesk() = default;
    JumpDesk(const JumpDesk&) = delete;
    JumpDesk& operator=(const JumpDesk&) = delete;

    /// Moves the pointer as a hand does.
    virtual void moveTo(desk::LayoutPoint place) = 0;

    /// Presses the chord; the microseconds until the pointer is at the place, none when it does not get there.
    virtual std::optional<double> press(desk::LayoutPoint target) = 0;

    /// The carrier's process.
    [[nodiscard]] virtual pid_t carrier() const = 0;
};

/// A kind of session.
struct JumpDesktop {
    std::string name;
    /// Starts one in which the carrier is ready.
    std::function<std::unique_ptr<JumpDesk>(Carrier)> start;
};

/// Those with a person who is a client of the compositor: sway, KWin, Hyprland, labwc, as far as they are installed.
std::vector<JumpDesktop> seatDesktops();

/// GNOME Shell.
JumpDesktop gnomeDesktop();

}  // namespace vantrel::bench
