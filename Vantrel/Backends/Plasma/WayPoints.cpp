#include "Vantrel/Backends/Plasma/WayPoints.hpp"

#include <algorithm>
#include <cstddef>
#include <map>

namespace vantrel::plasma {

namespace {

// Found by trying layouts: that many motions get through, each time.
constexpr std::size_t motionsThroughAnEdge = 3;
constexpr std::size_t motionsRoundACorner = 24;
/// Of an edge that two displays share, in points: a shorter one is little more than a corner.
constexpr double leastEdge = 32;

struct Range {
    double from;
    double to;

    [[nodiscard]] bool isAnEdge() const { return to - from > leastEdge; }
    [[nodiscard]] double middle() const { return (from + to) / 2; }
};

Range shared(double one, double oneLength, double other, double otherLength) {
    return {.from = std::max(one, other), .to = std::min(one + oneLength, other + otherLength)};
}

bool areNeighbours(const wayland::OutputDescription& one, const wayland::OutputDescription& other) {
    const Range rows = shared(one.y, one.height, other.y, other.height);
    const Range columns = shared(one.x, one.width, other.x, other.width);
    return (rows.isAnEdge() && columns.from == columns.to) || (columns.isAnEdge() && rows.from == rows.to);
}

/// The fewest displays that lead from one to the other, each a neighbour of the next; empty where none do.
std::vector<const wayland::Output*> displaysOnTheWay(std::span<const wayland::Output> outputs,
                                                     const wayland::Output& from, const wayland::Output& to) {
    // From the end, so that each display knows which comes after it.
    std::map<const wayland::Output*, const wayland::Output*> next{{&to, nullptr}};
    std::vector<const wayland::Output*> reached{&to};
    for (std::size_t index = 0; index < reached.size(); ++index) {
        for (const wayland::Output& output : outputs) {
            if (areNeighbours(output.description, reached[index]->description) &&
                next.emplace(&output, reached[index]).second) {
                reached.push_back(&output);
            }
        }
    }
    std::vector<const wayland::Output*> way;
    for (auto step = next.find(&from); step != next.end(); step = next.find(step->second)) {
        way.push_back(step->first);
    }
    return way;
}

wayland::LayoutPoint centreOf(const wayland::OutputDescription& output) {
    return {.x = output.x + output.width / 2.0, .y = output.y + output.height / 2.0};
}

}  // namespace

std::vector<wayland::LayoutPoint> wayPoints(const wayland::OutputDescription& from,
                                            const wayland::OutputDescription& to) {
    if (from.x == to.x && from.y == to.y) {
        return {};
    }
    const Range rows = shared(from.y, from.height, to.y, to.height);
    const Range columns = shared(from.x, from.width, to.x, to.width);
    wayland::LayoutPoint entry = centreOf(to);
    if (rows.isAnEdge()) {
        entry.y = rows.middle();
    } else if (columns.isAnEdge()) {
        entry.x = columns.middle();
    } else {
        return wayPointsFromAnywhere(to);
    }
    std::vector<wayland::LayoutPoint> points(motionsThroughAnEdge, entry);
    points.push_back(centreOf(to));
    return points;
}

std::vector<wayland::LayoutPoint> wayPointsThrough(std::span<const wayland::Output> outputs,
                                                   const wayland::Output& from, const wayland::Output& to) {
    const auto displays = displaysOnTheWay(outputs, from, to);
    if (displays.empty()) {
        return wayPoints(from.description, to.description);
    }
    std::vector<wayland::LayoutPoint> points;
    for (std::size_t index = 1; index < displays.size(); ++index) {
        const auto more = wayPoints(displays[index - 1]->description, displays[index]->description);
        points.insert(points.end(), more.begin(), more.end());
    }
    return points;
}

std::vector<wayland::LayoutPoint> wayPointsFromAnywhere(const wayland::OutputDescription& to) {
    return std::vector<wayland::LayoutPoint>(motionsRoundACorner, centreOf(to));
}

}  // namespace vantrel::plasma
