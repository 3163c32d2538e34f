#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/desk/support/Desk.hpp"

namespace vantrel::bench {

/// Where jumps go to and fro on a desk. Vantrel goes through all displays; the other candidates know two places, left
/// and right of the main display's left edge.
struct Course {
    std::vector<desk::MainPoint> stops;  ///< of Vantrel; the first is on the main display
    desk::MainPoint right;               ///< the first stop
    desk::MainPoint left;
    // What Vantrel has in its store at the start, as it is stored.
    std::string rememberedPositions = "{}";
    std::string savedPoints = "[]";
};

/// On the desk's usual two displays: a place on the main one, and the centre of the second.
Course twoDisplayCourse();

/// A way of moving the pointer by a hot key.
struct Candidate {
    std::string name;
    /// Starts it; it ends when the result goes.
    std::function<std::shared_ptr<void>(desk::Desk&, const Course&)> start;
    bool goesThroughAllDisplays = false;
    int slowness = 1;  ///< its presses are fewer by this factor, because each takes long
};

/// The least that can be done, in a few lines of C++.
Candidate floorCandidate();
Candidate vantrelCandidate();
/// sxhkd with an xdotool script.
Candidate daemonCandidate();

/// The stops of the candidate on the course.
std::vector<desk::MainPoint> stopsOf(const Candidate& candidate, const Course& course);

}  // namespace vantrel::bench
