#include "Vantrel/Backends/X11/MonitorLayout.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <iterator>
#include <numeric>
#include <set>
#include <tuple>
#include <utility>

namespace vantrel::x11 {

namespace {

constexpr std::size_t edidBaseBlockSize = 128;

/// FNV-1a, 32 bits. Frozen: people's remembered positions are stored under what it gives.
std::uint32_t hashOf(const std::string& text) {
    std::uint32_t hash = 2166136261U;
    for (const char character : text) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 16777619U;
    }
    return hash;
}

/// The text of the serial-number descriptor (tag 0xFF), which many makers fill where the number is left empty.
std::string serialDescriptor(std::span<const std::uint8_t> edid) {
    for (std::size_t offset = 54; offset + 18 <= 126; offset += 18) {
        const auto descriptor = edid.subspan(offset, 18);
        if (descriptor[0] == 0 && descriptor[1] == 0 && descriptor[3] == 0xFF) {
            const auto text = descriptor.subspan(5, 13);
            const auto end = std::find(text.begin(), text.end(), '\n');
            return {text.begin(), end};
        }
    }
    return {};
}

/// A monitor without an area shows nothing and stands for nothing, wherever it is.
std::vector<Monitor> withArea(const std::vector<Monitor>& monitors) {
    std::vector<Monitor> result;
    std::copy_if(monitors.begin(), monitors.end(), std::back_inserter(result),
                 [](const Monitor& monitor) { return monitor.width > 0 && monitor.height > 0; });
    return result;
}

bool holds(const Monitor& outer, const Monitor& inner) {
    return outer.x <= inner.x && outer.y <= inner.y && inner.x + inner.width <= outer.x + outer.width &&
           inner.y + inner.height <= outer.y + outer.height;
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

/// What a monitor's identifier is made of: what it is, and where it is plugged in, to tell equals apart.
struct Identity {
    std::string what;
    std::string where;
};

Identity identityOf(const Monitor& monitor) {
    const OutputIdentity* output = namingOutput(monitor);
    if (!monitor.isAutomatic || output == nullptr) {
        return {"monitor:" + monitor.name, monitor.name};
    }
    if (output->edid.empty()) {
        return {"connector:" + output->connector, output->connector};
    }
    return {"edid:" + output->edid, output->connector};
}

/// An identifier for each monitor. Of equal displays the first by connector keeps the plain identifier, so that it does
/// not change when its twin is unplugged.
std::vector<std::uint32_t> identifiersOf(const std::vector<Monitor>& monitors) {
    std::vector<Identity> identities;
    identities.reserve(monitors.size());
    for (const Monitor& monitor : monitors) {
        identities.push_back(identityOf(monitor));
    }
    std::vector<std::size_t> order(monitors.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&identities](std::size_t first, std::size_t second) {
        return std::tie(identities[first].what, identities[first].where) <
               std::tie(identities[second].what, identities[second].where);
    });

    std::vector<std::uint32_t> identifiers(monitors.size());
    std::set<std::uint32_t> taken{0};  // 0 is no display
    for (const std::size_t index : order) {
        std::string text = identities[index].what;
        std::uint32_t identifier = hashOf(text);
        for (text += "@" + identities[index].where; !taken.insert(identifier).second; text += "+") {
            identifier = hashOf(text);
        }
        identifiers[index] = identifier;
    }
    return identifiers;
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

std::string edidIdentity(std::span<const std::uint8_t> edid) {
    constexpr std::array<std::uint8_t, 8> header{0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00};
    if (edid.size() < edidBaseBlockSize || !std::equal(header.begin(), header.end(), edid.begin())) {
        return {};
    }
    std::array<char, 40> numbers{};
    std::snprintf(numbers.data(), numbers.size(), "%02X%02X:%02X%02X:%02X%02X%02X%02X:", edid[8], edid[9], edid[11],
                  edid[10], edid[15], edid[14], edid[13], edid[12]);
    return numbers.data() + serialDescriptor(edid);
}

DisplayLayout layoutOfMonitors(const std::vector<Monitor>& listed) {
    const std::vector<Monitor> monitors = withArea(listed);
    std::vector<Monitor> counted;
    for (std::size_t index = 0; index < monitors.size(); ++index) {
        bool isCounted = true;
        for (std::size_t other = 0; isCounted && other < monitors.size(); ++other) {
            isCounted = !isCountedAs(monitors, index, other);
        }
        if (isCounted) {
            counted.push_back(monitors[index]);
        }
    }

    DisplayLayout layout;
    std::tie(layout.originX, layout.originY) = originOf(monitors, counted);
    const std::vector<std::uint32_t> identifiers = identifiersOf(counted);
    layout.displays.reserve(counted.size());
    for (std::size_t index = 0; index < counted.size(); ++index) {
        const Monitor& monitor = counted[index];
        layout.displays.push_back(
            {identifiers[index],
             CGRect{{static_cast<double>(monitor.x - layout.originX), static_cast<double>(monitor.y - layout.originY)},
                    {static_cast<double>(monitor.width), static_cast<double>(monitor.height)}}});
    }
    return layout;
}

}  // namespace vantrel::x11
