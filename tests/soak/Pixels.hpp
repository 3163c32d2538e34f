#pragma once

#include <cmath>

#include "tests/desk/support/Points.hpp"
#include "tests/desk/wayland/support/LayoutPoint.hpp"

namespace vantrel::soak {

// An X server knows whole pixels alone, and rounds down what stands between two.

inline desk::MainPoint pixelOf(desk::LayoutPoint point) {
    return {.x = static_cast<int>(std::floor(point.x)), .y = static_cast<int>(std::floor(point.y))};
}

inline desk::LayoutPoint pointOf(desk::MainPoint pixel) {
    return {.x = static_cast<double>(pixel.x), .y = static_cast<double>(pixel.y)};
}

}  // namespace vantrel::soak
