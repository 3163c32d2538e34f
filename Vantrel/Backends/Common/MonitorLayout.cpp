#include "Vantrel/Backends/Common/MonitorLayout.hpp"

#include <algorithm>
#include <cstddef>
#include <tuple>
#include <utility>

#include "Vantrel/Backends/Common/DisplayIdentity.hpp"

namespace vantrel::backend {

namespace {

// In wider numbers: what is told may stand at the end of them.
std::int64_t rightOf(const Monitor& monitor) {
    return std::int64_t{monitor.x} + monitor.width;
}

std::int64_t lowerEndOf(const Monitor& monitor) {
    return std::int64_t{monitor.y} + monitor.height;
}

bool holds(const Monitor& outer, const Monitor& inner) {
    return outer.x <= inner.x && outer.y <= inner.y && rightOf(inner) <= rightOf(outer) &&
           lowerEndOf(inner) <= lowerEndOf(outer);
}

bool sameArea(const Monitor& first, const Monitor& second) {
    return holds(first, second) && holds(second, first);
}

/// Whether `other` stands for what `monitor` shows, so that `monitor` is not to be counted.
bool isCountedAs(const std::vector<Monitor>& monitors, std::size_t monitor, std::size_t other) {
    const Monitor& mine = monitors[monitor];
    const Monitor& its = monitors[other];
    if (monitor == other || !mine.isAutomatic) {
        return false;
    }
    if (!its.isAutomatic) {
        return holds(mine, its);
    }
    if (!sameArea(mine, its)) {
        return holds(its, mine);
    }
    if (mine.isPrimary != its.isPrimary) {
        return its.isPrimary;
    }
    return other < monitor;
}

/// The connector that names a monitor: the first in alphabetical order, since the server's order is not promised.
const OutputIdentity* namingOutput(const Monitor& monitor) {
    const auto first = std::min_element(
        monitor.outputs.begin(), monitor.outputs.end(),
        [](const OutputIdentity& one, const OutputIdentity& other) { return one.connector < other.connector; });
    return first == monitor.outputs.end() ? nullptr : &*first;
}

DisplayIdentity identityOf(const Monitor& monitor) {
    const OutputIdentity* output = namingOutput(monitor);
    if (!monitor.isAutomatic || output == nullptr) {
        return {"monitor:" + monitor.name, monitor.name};
    }
    return identityOfOutput(output->edid, output->connector);
}

/// The corner of the main display: the primary one, or the larger one that it mirrors, else the first.
std::pair<std::int32_t, std::int32_t> originOf(const std::vector<Monitor>& all, const std::vector<Monitor>& counted) {
    const auto primary = std::find_if(all.begin(), all.end(), [](const Monitor& monitor) { return monitor.isPrimary; });
    if (primary != all.end()) {
        const auto mirror = std::find_if(counted.begin(), counted.end(), [&primary](const Monitor& monitor) {
            return monitor.isAutomatic && holds(monitor, *primary);
        });
        return mirror == counted.end() ? std::pair(primary->x, primary->y) : std::pair(mirror->x, mirror->y);
    }
    return counted.empty() ? std::pair(0, 0) : std::pair(counted.front().x, counted.front().y);
}

}  // namespace

DisplayLayout layoutOfMonitors(const std::vector<Monitor>& listed) {
    std::vector<Monitor> monitors = listed;
    // Without an area one shows nothing and stands for nothing, wherever it is.
    std::erase_if(monitors, [](const Monitor& monitor) { return monitor.width <= 0 || monitor.height <= 0; });
    std::vector<Monitor> counted;
    std::vector<DisplayIdentity> identities;
    for (std::size_t index = 0; index < monitors.size(); ++index) {
        bool isCounted = true;
        for (std::size_t other = 0; isCounted && other < monitors.size(); ++other) {
            isCounted = !isCountedAs(monitors, index, other);
        }
        if (isCounted) {
            counted.push_back(monitors[index]);
            identities.push_back(identityOf(monitors[index]));
        }
    }

    DisplayLayout layout;
    std::tie(layout.originX, layout.originY) = originOf(monitors, counted);
    const std::vector<std::uint32_t> identifiers = identifiersOf(identities);
    layout.displays.reserve(counted.size());
    for (std::size_t index = 0; index < counted.size(); ++index) {
        const Monitor& monitor = counted[index];
        layout.displays.push_back(
            {identifiers[index],
             CGRect{{static_cast<double>(monitor.x) - layout.originX, static_cast<double>(monitor.y) - layout.originY},
                    {static_cast<double>(monitor.width), static_cast<double>(monitor.height)}}});
    }
    return layout;
}

}  // namespace vantrel::backend
