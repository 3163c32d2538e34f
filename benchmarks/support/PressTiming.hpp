#pragma once

#include <chrono>
#include <functional>
#include <vector>

#include "tests/desk/support/Desk.hpp"

namespace vantrel::bench {

/// What a series of presses gave.
struct PressTimes {
    std::vector<double> times;  ///< from the key going down to the pointer seen at its target, in microseconds
    int lost = 0;               ///< presses whose pointer never came
    /// Where the pointer has left each display: the stops of a series that goes on after one of whole rounds.
    std::vector<desk::MainPoint> stops;

    [[nodiscard]] int presses() const { return static_cast<int>(times.size()) + lost; }
    /// The time that the given share (0 to 1) of the presses did not exceed.
    [[nodiscard]] double percentile(double share) const;
};

/// A series of presses of Hyper + D.
struct PressSeries {
    /// The pointer starts at the first stop; each press must take it to the next, and from the last to the first. A
    /// stop is where the pointer was on that display when it left it.
    std::vector<desk::MainPoint> stops;
    int presses = 0;
    /// After each press. The usual one is shorter than any hand's, and whatever a press leaves to be done is done by
    /// then.
    std::chrono::microseconds pause{1500};
    /// A few presses before the counted ones: they meet cold caches.
    int uncountedPresses = 20;
    /// Told when each counted press began, if anyone wants to know.
    std::function<void(std::chrono::steady_clock::time_point)> pressed{};
};

/// Carries out the series, with the pointer moved a little before each press, as a hand does, and times each press as a
/// client sees it that keeps asking for the pointer. The modifiers are held all the while.
PressTimes timePresses(desk::Desk& desk, PressSeries series);

}  // namespace vantrel::bench
