#include "Vantrel/Backends/Plasma/WayPoints.hpp"

#include <algorithm>
#include <cstddef>

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

std::vector<wayland::LayoutPoint> wayPointsFromAnywhere(const wayland::OutputDescription& to) {
    return std::vector<wayland::LayoutPoint>(motionsRoundACorner, centreOf(to));
}

}  // namespace vantrel::plasma
