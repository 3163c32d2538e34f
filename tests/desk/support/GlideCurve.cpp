#include "tests/desk/support/GlideCurve.hpp"

#include <cmath>

namespace vantrel::desk {

MainPoint pixelAt(GlideTarget target) {
    return {.x = static_cast<int>(std::floor(target.x)), .y = static_cast<int>(std::floor(target.y))};
}

double glideProgress(int ticks) {
    return 1 - std::pow(1 - static_cast<double>(ticks) / glideTicks, 3.0);
}

std::vector<MainPoint> glideCurve(MainPoint start, GlideTarget target) {
    std::vector<MainPoint> points;
    for (int ticks = 1; ticks < glideTicks; ++ticks) {
        const double progress = glideProgress(ticks);
        points.push_back(
            pixelAt({.x = start.x + (target.x - start.x) * progress, .y = start.y + (target.y - start.y) * progress}));
    }
    points.push_back(pixelAt(target));
    return points;
}

}  // namespace vantrel::desk
