#pragma once

#include "VantrelCore/PlatformGeometry.hpp"

namespace vantrel {

/// A position in the global display space, in points: the origin is the top-left corner of the main display, x grows to
/// the right and y downwards, so displays left of or above the main one have negative coordinates.
struct VantrelPoint {
    double x = 0;
    double y = 0;

    constexpr VantrelPoint() = default;
    constexpr VantrelPoint(double horizontal, double vertical) : x(horizontal), y(vertical) {}
    explicit constexpr VantrelPoint(const CGPoint& point) : x(point.x), y(point.y) {}

    /// The same position as the platform's point type.
    [[nodiscard]] constexpr CGPoint cgPoint() const { return CGPoint{x, y}; }

    /// Floating-point equality of both coordinates: NaN equals nothing, 0.0 equals -0.0.
    constexpr bool operator==(const VantrelPoint&) const = default;
};

}  // namespace vantrel
