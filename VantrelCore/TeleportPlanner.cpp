#include "VantrelCore/TeleportPlanner.hpp"

#include <algorithm>

namespace vantrel {

namespace {

bool precedes(const DisplaySnapshot& first, const DisplaySnapshot& second) {
    if (first.minX != second.minX) {
        return first.minX < second.minX;
    }
    return first.minY < second.minY;
}

double squaredDistance(const VantrelPoint& first, const VantrelPoint& second) {
    const double horizontal = first.x - second.x;
    const double vertical = first.y - second.y;
    return horizontal * horizontal + vertical * vertical;
}

/// The target's index in a list that is sorted already.
std::optional<std::size_t> targetIndexInSorted(const VantrelPoint& point, std::span<const DisplaySnapshot> sorted,
                                               TeleportDirection direction) {
    if (sorted.empty()) {
        return std::nullopt;
    }
    std::optional<std::size_t> current = TeleportPlanner::displayIndex(point, sorted);
    if (!current) {
        current = TeleportPlanner::nearestDisplayIndex(point, sorted);
    }
    const std::size_t step = direction == TeleportDirection::next ? 1 : sorted.size() - 1;
    return (current.value_or(0) + step) % sorted.size();
}

double clampedCoordinate(double value, double low, double high) {
    if (value <= low) {
        value = low;
    }
    if (value > high) {
        value = high;
    }
    return value;
}

}  // namespace

std::vector<DisplaySnapshot> TeleportPlanner::sortedDisplays(std::span<const DisplaySnapshot> displays) {
    std::vector<DisplaySnapshot> sorted(displays.begin(), displays.end());
    // An insertion sort is stable and, unlike std::stable_sort, takes no memory: for a handful of displays the
    // quickest.
    for (auto next = sorted.begin(); next != sorted.end(); ++next) {
        const auto place = std::upper_bound(sorted.begin(), next, *next, precedes);
        std::rotate(place, next, next + 1);
    }
    return sorted;
}

std::optional<std::size_t> TeleportPlanner::displayIndex(const VantrelPoint& point,
                                                         std::span<const DisplaySnapshot> displays) {
    for (std::size_t index = 0; index < displays.size(); ++index) {
        if (displays[index].contains(point)) {
            return index;
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> TeleportPlanner::nearestDisplayIndex(const VantrelPoint& point,
                                                                std::span<const DisplaySnapshot> displays) {
    if (displays.empty()) {
        return std::nullopt;
    }
    if (displays.size() == 1) {
        return 0;
    }
    std::size_t best = 0;
    double bestDistance = squaredDistance(point, displays[0].center());
    for (std::size_t index = 1; index < displays.size(); ++index) {
        const double distance = squaredDistance(point, displays[index].center());
        if (distance < bestDistance) {
            best = index;
            bestDistance = distance;
        }
    }
    return best;
}

std::optional<std::size_t> TeleportPlanner::targetIndex(const VantrelPoint& point,
                                                        std::span<const DisplaySnapshot> displays,
                                                        TeleportDirection direction) {
    return targetIndexInSorted(point, sortedDisplays(displays), direction);
}

std::optional<VantrelPoint> TeleportPlanner::targetPoint(const VantrelPoint& point,
                                                         std::span<const DisplaySnapshot> displays,
                                                         TeleportDirection direction,
                                                         const RememberedPositions& rememberedPositions) {
    const std::vector<DisplaySnapshot> sorted = sortedDisplays(displays);
    const std::optional<std::size_t> index = targetIndexInSorted(point, sorted, direction);
    if (!index) {
        return std::nullopt;
    }
    const DisplaySnapshot& target = sorted[*index];
    const auto remembered = rememberedPositions.find(target.id);
    // A remembered position may lie outside after a change of layout or resolution: clamping is what repairs it.
    const VantrelPoint candidate = remembered == rememberedPositions.end() ? target.center() : remembered->second;
    return clamped(candidate, target, edgeMargin);
}

VantrelPoint TeleportPlanner::clamped(const VantrelPoint& point, const DisplaySnapshot& display, double margin) {
    double effectiveMargin = margin;
    if (display.width * 0.5 < effectiveMargin) {
        effectiveMargin = display.width * 0.5;
    }
    if (display.height * 0.5 < effectiveMargin) {
        effectiveMargin = display.height * 0.5;
    }
    return VantrelPoint{
        clampedCoordinate(point.x, display.minX + effectiveMargin, display.minX + display.width - effectiveMargin),
        clampedCoordinate(point.y, display.minY + effectiveMargin, display.minY + display.height - effectiveMargin)};
}

}  // namespace vantrel
