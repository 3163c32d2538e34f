#pragma once

#include <cstdint>

#include "VantrelCore/PlatformGeometry.hpp"
#include "VantrelCore/VantrelPoint.hpp"

namespace vantrel {

/// The bounds of one display at one moment, in points of the global display space.
struct DisplaySnapshot {
    std::uint32_t id = 0;  ///< the platform's display identifier
    double minX = 0;
    double minY = 0;
    double width = 0;
    double height = 0;

    constexpr DisplaySnapshot() = default;

    /// Stores the five values as they are given, unchecked.
    constexpr DisplaySnapshot(std::uint32_t displayID, double left, double top, double horizontalSize,
                              double verticalSize)
        : id(displayID), minX(left), minY(top), width(horizontalSize), height(verticalSize) {}

    /// Stores the standardised bounds, so the size is never negative.
    DisplaySnapshot(std::uint32_t displayID, const CGRect& bounds);

    /// The stored bounds, not standardised.
    [[nodiscard]] CGRect rect() const;

    [[nodiscard]] VantrelPoint center() const;

    /// Whether the point lies on this display; the right and bottom edges belong to the neighbours.
    [[nodiscard]] bool contains(const VantrelPoint& point) const;

    bool operator==(const DisplaySnapshot&) const = default;
};

}  // namespace vantrel
