#pragma once

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
Course usualCourse();

/// Gives the desk as many displays as its server has, in a row that ends on the right with the main one. The course
/// goes from the main display to the leftmost, and on to the right.
Course layOutDisplayRow(desk::Desk& desk);

}  // namespace vantrel::bench
