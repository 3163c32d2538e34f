#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/desk/support/ChildProcess.hpp"
#include "tests/desk/support/Desk.hpp"

namespace vantrel::bench {

/// A way of moving the pointer by a hot key: started for each round of presses and ended after it.
struct Candidate {
    std::string name;
    int presses = 0;  ///< a round; fewer where each takes long
    std::function<std::shared_ptr<void>(desk::Desk&)> start;
};

/// Where the first press finds the pointer, and where it sends it: the centre of the second display.
inline constexpr desk::MainPoint firstPoint{700, 500};
inline constexpr desk::MainPoint secondPoint{-512, 484};

/// The floor, Vantrel, and sxhkd with an xdotool script.
std::vector<Candidate> candidates(int presses);

}  // namespace vantrel::bench
