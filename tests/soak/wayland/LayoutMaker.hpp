#pragma once

#include <string>
#include <vector>

#include "tests/desk/support/DisplayLayout.hpp"
#include "tests/desk/wayland/support/CompositorProcess.hpp"
#include "tests/soak/Random.hpp"

namespace vantrel::soak {

/// A display of a Wayland session that is switched on.
struct ShownDisplay {
    int number = 0;  ///< of the compositor's output, from 1 on
    /// Its place is told from the main display's corner on.
    desk::PrivateOutput output;
    int width = 0;  ///< in points, as it is turned
    int height = 0;

    [[nodiscard]] desk::MainRect bounds() const {
        return {.x = output.x, .y = output.y, .width = width, .height = height};
    }
};

/// A mode with a scale, and what it comes to in points.
struct DisplayShape {
    std::string mode;
    std::string scale;
    int width;
    int height;
};

/// A layout as people may have it: some of the outputs in any order, in a row or a column with steps, each of any of
/// the shapes and turned anyhow. The main one comes first, at (0, 0). All places are multiples of four points.
std::vector<ShownDisplay> randomLayout(Random& random, std::vector<int> outputs,
                                       const std::vector<DisplayShape>& shapes);

/// As the rules count them.
std::vector<desk::PlacedDisplay> placed(const std::vector<ShownDisplay>& displays);

}  // namespace vantrel::soak
