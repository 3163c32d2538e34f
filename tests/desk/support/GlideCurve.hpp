#pragma once

#include <vector>

#include "tests/desk/support/Points.hpp"

namespace vantrel::desk {

/// Ticks of a glide.
inline constexpr int glideTicks = 18;

/// Where a glide ends: a point that need not be a pixel.
struct GlideTarget {
    double x = 0;
    double y = 0;
};

/// The pixel that shows the point: the display server has whole ones, and the agent rounds down.
MainPoint pixelAt(GlideTarget target);

/// How far along its way a glide is after so many ticks, 0 to 1.
double glideProgress(int ticks);

/// The pixels that a glide warps to, a tick each, the last one being the target's.
std::vector<MainPoint> glideCurve(MainPoint start, GlideTarget target);

}  // namespace vantrel::desk
