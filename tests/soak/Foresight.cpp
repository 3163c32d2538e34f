#include "tests/soak/Foresight.hpp"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "tests/soak/RandomDisplays.hpp"

namespace vantrel::soak {

namespace {

using desk::LayoutPoint;
using desk::MainPoint;
using desk::MainRect;
using desk::PlacedDisplay;

double effectiveMargin(const MainRect& display) {
    constexpr double margin = 24;
    return std::min({margin, display.width / 2.0, display.height / 2.0});
}

LayoutPoint centreOf(const MainRect& display) {
    return {.x = display.x + display.width / 2.0, .y = display.y + display.height / 2.0};
}

/// The point nearest to the wanted one that keeps the margin.
LayoutPoint pulledIn(LayoutPoint wanted, const MainRect& display) {
    const double margin = effectiveMargin(display);
    return {.x = std::clamp(wanted.x, display.x + margin, display.x + display.width - margin),
            .y = std::clamp(wanted.y, display.y + margin, display.y + display.height - margin)};
}

double distanceToCentre(LayoutPoint point, const MainRect& display) {
    const LayoutPoint centre = centreOf(display);
    return std::hypot(point.x - centre.x, point.y - centre.y);
}

}  // namespace

void Foresight::see(const std::vector<PlacedDisplay>& displays) {
    displays_.clear();
    for (const PlacedDisplay& display : displays) {
        const bool isMirror = std::any_of(displays.begin(), displays.end(), [&](const PlacedDisplay& other) {
            return other.output != display.output && isInside(display.bounds, other.bounds);
        });
        if (!isMirror) {
            displays_.push_back(display);
        }
    }
    std::sort(displays_.begin(), displays_.end(), [](const PlacedDisplay& one, const PlacedDisplay& other) {
        return std::tie(one.bounds.x, one.bounds.y) < std::tie(other.bounds.x, other.bounds.y);
    });
}

const PlacedDisplay& Foresight::displayAt(LayoutPoint point) const {
    const auto showing = std::find_if(displays_.begin(), displays_.end(),
                                      [&](const PlacedDisplay& display) { return holds(display.bounds, point); });
    if (showing != displays_.end()) {
        return *showing;
    }
    return *std::min_element(displays_.begin(), displays_.end(),
                             [&](const PlacedDisplay& one, const PlacedDisplay& other) {
                                 return distanceToCentre(point, one.bounds) < distanceToCentre(point, other.bounds);
                             });
}

Landing Foresight::landingOf(LayoutPoint from, Side side) const {
    const PlacedDisplay& left = displayAt(from);
    const auto index = static_cast<std::size_t>(&left - displays_.data());
    const std::size_t step = side == Side::next ? 1 : displays_.size() - 1;
    const PlacedDisplay& target = displays_[(index + step) % displays_.size()];
    const MainRect& bounds = target.bounds;
    if (target.output == left.output) {
        return {.point = pulledIn(from, bounds), .display = bounds};
    }
    const auto remembered = remembered_.find(target.output);
    const LayoutPoint wanted = remembered == remembered_.end() ? centreOf(bounds) : remembered->second;
    return {.point = pulledIn(wanted, bounds), .display = bounds};
}

Landing Foresight::jump(LayoutPoint from, Side side) {
    const Landing landing = landingOf(from, side);
    remembered_.insert_or_assign(displayAt(from).output, from);
    return landing;
}

bool isInsideMargin(MainPoint point, const MainRect& display) {
    // The server rounds down what stands between two pixels.
    constexpr double pixel = 1;
    const double margin = effectiveMargin(display);
    return point.x > display.x + margin - pixel && point.x <= display.x + display.width - margin &&
           point.y > display.y + margin - pixel && point.y <= display.y + display.height - margin;
}

}  // namespace vantrel::soak
