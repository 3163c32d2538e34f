#pragma once

#include <chrono>
#include <vector>

#include "tests/desk/support/Desk.hpp"

namespace vantrel::bench {

using Microseconds = std::chrono::duration<double, std::micro>;

/// What a series of presses gave.
struct PressTimes {
    std::vector<Microseconds> times;  ///< from the key going down to the pointer seen at its target
    int lost = 0;                     ///< presses whose pointer never came

    /// The time that the given share (0 to 1) of the presses did not exceed.
    [[nodiscard]] Microseconds percentile(double share) const;

    void add(const PressTimes& other);
};

/// Presses Hyper + D so many times, with the pointer moved a little before each press, as a hand does, and times each
/// press as a client sees it that keeps asking for the pointer. The first press finds the pointer at `first` and must
/// send it to `second`; from then on each must send it to where it last was on the other display. The modifiers are
/// held all the while. A few presses before those are not counted: they meet cold caches.
PressTimes timePresses(desk::Desk& desk, desk::MainPoint first, desk::MainPoint second, int presses);

}  // namespace vantrel::bench
