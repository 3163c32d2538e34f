#pragma once

#include <vector>

#include "tests/desk/support/DisplayLayout.hpp"
#include "tests/desk/wayland/support/LayoutPoint.hpp"
#include "tests/soak/Random.hpp"

namespace vantrel::soak {

/// A layout as people may have it: one to seven displays on any of the server's outputs, from vast to tiny, side by
/// side with steps, gaps and overlaps; sometimes one that mirrors a part of another. The main one comes first, at (0,
/// 0).
std::vector<desk::PlacedDisplay> randomDisplays(Random& random);

/// Whether every point of `inner` is one of `outer`.
bool isInside(const desk::MainRect& inner, const desk::MainRect& outer);

/// Whether the display shows the point.
bool holds(const desk::MainRect& display, desk::LayoutPoint point);

}  // namespace vantrel::soak
