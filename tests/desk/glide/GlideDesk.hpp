#pragma once

#include <memory>
#include <ostream>
#include <vector>

#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/GlideCurve.hpp"
#include "tests/desk/support/PointerTrace.hpp"

namespace vantrel::desk {

/// Two displays side by side with a glide from one to the other that stays on them: X pulls a warp into a gap back to
/// an edge.
struct GlideLayout {
    const char* name;
    MainRect second;
    GlideTarget centre;  ///< the second display's, where a first jump goes
};

inline std::ostream& operator<<(std::ostream& out, const GlideLayout& layout) {
    return out << layout.name;
}

/// The second display on the right, in whole pixels.
inline constexpr GlideLayout toTheRight{
    .name = "toTheRight", .second = {.x = 1512, .y = 100, .width = 1024, .height = 768}, .centre = {2024, 484}};
/// On the left, where coordinates are negative, with a centre between two pixels.
inline constexpr GlideLayout toTheLeft{
    .name = "toTheLeft", .second = {.x = -1024, .y = 101, .width = 1024, .height = 767}, .centre = {-512, 484.5}};
/// Above, where only y is negative.
inline constexpr GlideLayout above{
    .name = "above", .second = {.x = 200, .y = -767, .width = 1024, .height = 767}, .centre = {712, -383.5}};

/// A desk with an agent that glides, and the pointer at the start on the main display.
class GlideDesk {
  public:
    static constexpr MainRect mainBounds{.x = 0, .y = 0, .width = 1512, .height = 982};
    static constexpr MainPoint start{.x = 700, .y = 500};

    explicit GlideDesk(const GlideLayout& layout = toTheRight);

    Desk& desk() { return desk_; }
    AgentProcess& agent() { return *agent_; }
    /// Every move since the pointer was at the start.
    PointerTrace& trace() { return *trace_; }

    /// The pixels of the glide from the start to the second display's centre.
    [[nodiscard]] std::vector<MainPoint> curve() const { return glideCurve(start, layout_.centre); }
    [[nodiscard]] MainPoint centre() const { return pixelAt(layout_.centre); }
    [[nodiscard]] GlideTarget target() const { return layout_.centre; }

    /// Jumps to the next display.
    void jump() { desk_.keyboard().type(hyper(keys::d)); }

    /// Jumps, and stops the agent (SIGSTOP) when the pointer is on its way: what comes next happens in mid-glide
    /// however slow the machine is. Starts again when a glide got to its end first; throws when that never ends.
    void stopInMidGlide();

    /// Lets the stopped agent go on.
    void goOn() { agent_->sendSignal(SIGCONT); }

    /// How many moves there were, when they went to the curve's first so many points; else -1.
    int ticksPassed();

    /// Switches the second display on or off.
    void plugSecond();
    void unplugSecond();

  private:
    void putBack();

    GlideLayout layout_;
    Desk desk_;
    std::unique_ptr<AgentProcess> agent_;
    std::unique_ptr<PointerTrace> trace_;
};

}  // namespace vantrel::desk
