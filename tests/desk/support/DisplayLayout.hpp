#pragma once

#include <string>
#include <vector>

#include "tests/desk/support/Environment.hpp"
#include "tests/desk/support/Points.hpp"

namespace vantrel::desk {

/// A display that is switched on: the number of the server's output (0 to 15) and its place.
struct PlacedDisplay {
    int output = 0;
    MainRect bounds;
};

/// The displays of a private X server, changed through RandR as a person's display settings would.
class DisplayLayout {
  public:
    static constexpr int outputCount = 16;

    explicit DisplayLayout(const std::string& displayName);

    /// The layout most tests use: the main display 1512 x 982 at (0, 0) on output 0, and to its left a second one,
    /// 1024 x 768 at (-1024, 100), on output 1.
    static std::vector<PlacedDisplay> twoDisplays();

    /// Switches on exactly these displays. The first is the main one, made the primary output, and stands at (0, 0).
    /// Returns when the server has the new layout.
    void apply(const std::vector<PlacedDisplay>& displays);

    /// The main display's corner, for those who count from the root window's.
    [[nodiscard]] RootPoint mainOrigin() const { return mainOrigin_; }

    [[nodiscard]] RootPoint toRoot(MainPoint point) const {
        return {.x = point.x + mainOrigin_.x, .y = point.y + mainOrigin_.y};
    }
    [[nodiscard]] MainPoint toMain(RootPoint point) const {
        return {.x = point.x - mainOrigin_.x, .y = point.y - mainOrigin_.y};
    }

  private:
    std::string provideMode(int output, const MainRect& bounds);

    Environment environment_;
    RootPoint mainOrigin_;
    std::vector<std::string> modes_;        ///< known to the server
    std::vector<std::string> outputModes_;  ///< "output mode" pairs that were joined
};

}  // namespace vantrel::desk
