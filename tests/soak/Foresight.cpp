#include "tests/soak/Foresight.hpp"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "tests/soak/RandomDisplays.hpp"

namespace vantrel::soak {

namespace {

using desk::MainPoint;
using desk::MainRect;
using desk::PlacedDisplay;

double effectiveMargin(const MainRect& display) {
    constexpr double margin = 24;
    return std::min({margin, display.width / 2.0, display.height / 2.0});
}

/// The pixel that shows the point nearest to the wanted one that keeps the margin.
MainPoint pulledIn(double x, double y, const MainRect& display) {
    const double margin = effectiveMargin(display);
    const double insideX = std::clamp(x, display.x + margin, display.x + display.width - margin);
    const double insideY = std::clamp(y, display.y + margin, display.y + display.height - margin);
    return {.x = static_cast<int>(std::floor(insideX)), .y = static_cast<int>(std::floor(insideY))};
}

double distanceToCentre(MainPoint point, const MainRect& display) {
    return std::hypot(point.x - (display.x + display.width / 2.0), point.y - (display.y + display.height / 2.0));
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

const PlacedDisplay& Foresight::displayAt(MainPoint point) const {
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

Landing Foresight::landingOf(MainPoint from, Side side) const {
    const PlacedDisplay& left = displayAt(from);
    const auto index = static_cast<std::size_t>(&left - displays_.data());
    const std::size_t step = side == Side::next ? 1 : displays_.size() - 1;
    const PlacedDisplay& target = displays_[(index + step) % displays_.size()];
    const MainRect& bounds = target.bounds;
    if (target.output == left.output) {
        return {.point = pulledIn(from.x, from.y, bounds), .display = bounds};
    }
    const auto remembered = remembered_.find(target.output);
    if (remembered != remembered_.end()) {
        return {.point = pulledIn(remembered->second.x, remembered->second.y, bounds), .display = bounds};
    }
    return {.point = pulledIn(bounds.x + bounds.width / 2.0, bounds.y + bounds.height / 2.0, bounds),
            .display = bounds};
}

Landing Foresight::jump(MainPoint from, Side side) {
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
