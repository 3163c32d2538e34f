#pragma once

#include <chrono>
#include <memory>
#include <vector>

#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/GlideCurve.hpp"
#include "tests/desk/support/PointerTrace.hpp"

namespace vantrel::desk {

using Milliseconds = std::chrono::duration<double, std::milli>;

/// The time between two ticks.
inline constexpr Milliseconds tickInterval{160.0 / glideTicks};

/// A glide as a client saw it.
struct RecordedGlide {
    MainPoint from;
    MainPoint to;
    std::vector<MainPoint> points;        ///< a tick each
    std::vector<Milliseconds> tickTimes;  ///< since the start of the schedule
    std::vector<Milliseconds> lateness;   ///< of each tick, against the schedule

    /// Whether all ticks were seen, on the points of the curve.
    [[nodiscard]] bool isComplete() const;
};

/// Lets the agent jump to and fro between two displays and records it.
class GlideRecorder {
  public:
    /// Starts the agent with the stored value for its animation ("glide" or "none").
    explicit GlideRecorder(const std::string& animation);

    /// Glides to the other display and waits for the end.
    RecordedGlide recordGlide();

    /// Jumps without animation and waits for the end.
    void jumpAtOnce();

    /// The agent's processor time so far.
    [[nodiscard]] std::chrono::nanoseconds agentTime() const;

  private:
    Desk desk_;
    std::unique_ptr<AgentProcess> agent_;
    PointerTrace trace_;
};

}  // namespace vantrel::desk
