#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "benchmarks/support/Course.hpp"
#include "tests/desk/support/Desk.hpp"

namespace vantrel::bench {

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
/// Another build of Vantrel, to compare a change with.
Candidate otherBuildCandidate(const std::string& program);
/// sxhkd with an xdotool script.
Candidate daemonCandidate();

/// The stops of the candidate on the course.
std::vector<desk::MainPoint> stopsOf(const Candidate& candidate, const Course& course);

}  // namespace vantrel::bench
