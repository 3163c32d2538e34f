#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "tests/desk/support/Desk.hpp"

namespace vantrel::desk {

/// What a press did to the pointer, as a client that keeps asking the server saw it.
struct PressOutcome {
    MainPoint from;
    MainPoint to;
    /// From the last moment when the key was certainly not yet down to the first when the pointer was elsewhere; none
    /// when the pointer did not move.
    std::optional<std::chrono::duration<double, std::milli>> latency;
};

/// Lets xdotool press a chord on the desk and watches the key and the pointer the while.
class PressTimer {
  public:
    explicit PressTimer(Desk& desk) : desk_(desk), connection_(desk.server().displayName()) {}

    /// `keys` is the chord in xdotool's writing, `lastKey` the name of the place of its last key.
    PressOutcome press(const std::string& keys, std::string_view lastKey);

  private:
    Desk& desk_;
    XConnection connection_;
};

}  // namespace vantrel::desk
