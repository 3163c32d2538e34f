#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "VantrelCore/DisplaySnapshot.hpp"
#include "VantrelCore/RememberedPositions.hpp"
#include "VantrelCore/TeleportDirection.hpp"
#include "VantrelCore/VantrelPoint.hpp"

namespace vantrel {

/// Decides where a display jump sends the pointer: pure functions over the layout of the moment. Nothing is cached,
/// because the layout may change between two jumps.
struct TeleportPlanner {
    TeleportPlanner() = delete;

    /// How far from every edge a display jump lands, in points.
    static constexpr double edgeMargin = 24.0;

    /// The displays from left to right: by left edge, then by top edge, then in the order given.
    static std::vector<DisplaySnapshot> sortedDisplays(std::span<const DisplaySnapshot> displays);

    /// The index of the first display in the given order that contains the point; none if no display does.
    static std::optional<std::size_t> displayIndex(const VantrelPoint& point,
                                                   std::span<const DisplaySnapshot> displays);

    /// The index of the display whose centre is closest to the point (ties go to the earlier one); none only for an
    /// empty list. The centre counts, not the nearest edge.
    static std::optional<std::size_t> nearestDisplayIndex(const VantrelPoint& point,
                                                          std::span<const DisplaySnapshot> displays);

    /// The index, in the sorted list, of the display one step away from the one the point is on, wrapping around; none
    /// only for an empty list. The displays may come in any order.
    static std::optional<std::size_t> targetIndex(const VantrelPoint& point, std::span<const DisplaySnapshot> displays,
                                                  TeleportDirection direction);

    /// Where the pointer goes: the remembered position of the target display, else its centre, moved edgeMargin inside.
    /// None only for an empty list. The displays may come in any order.
    static std::optional<VantrelPoint> targetPoint(const VantrelPoint& point, std::span<const DisplaySnapshot> displays,
                                                   TeleportDirection direction,
                                                   const RememberedPositions& rememberedPositions);

    /// The point moved at least `margin` points inside the display, or onto its centre line where the display is
    /// narrower than twice the margin; the smaller margin then holds for both axes. NaN passes through.
    static VantrelPoint clamped(const VantrelPoint& point, const DisplaySnapshot& display, double margin);
};

}  // namespace vantrel
