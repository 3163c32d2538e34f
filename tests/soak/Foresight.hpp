#pragma once

#include <map>
#include <vector>

#include "tests/desk/support/DisplayLayout.hpp"
#include "tests/desk/wayland/support/LayoutPoint.hpp"

namespace vantrel::soak {

enum class Side { previous, next };

/// Where a jump must land, before a display server cuts that down to what it can show.
struct Landing {
    desk::LayoutPoint point;
    desk::MainRect display;
};

/// Knows before each jump where the pointer must land, from what a person has seen so far. Told by the rules in the
/// program's documentation and not by its code, which it is to check. All points are the agent's: from the main
/// display's corner on.
class Foresight {
  public:
    /// From now on these displays are there. The first is the main one; a display wholly inside another mirrors it.
    void see(const std::vector<desk::PlacedDisplay>& displays);

    /// A jump from the point: the display that is left remembers it.
    Landing jump(desk::LayoutPoint from, Side side);

    /// The same without remembering anything.
    [[nodiscard]] Landing landingOf(desk::LayoutPoint from, Side side) const;

    /// The displays that count, from left to right.
    [[nodiscard]] const std::vector<desk::PlacedDisplay>& displays() const { return displays_; }

    /// The display that shows the point, or else the one whose centre is nearest.
    [[nodiscard]] const desk::PlacedDisplay& displayAt(desk::LayoutPoint point) const;

    /// On how many displays the pointer was left since the start, whether or not they are there now.
    [[nodiscard]] std::size_t rememberedCount() const { return remembered_.size(); }

  private:
    std::vector<desk::PlacedDisplay> displays_;
    std::map<int, desk::LayoutPoint> remembered_;  ///< by output
};

/// Whether the point lies in the display and 24 points from its edges, or on its middle line where it is narrower.
bool isInsideMargin(desk::MainPoint point, const desk::MainRect& display);

}  // namespace vantrel::soak
