#pragma once

#include <span>
#include <vector>

#include "Vantrel/Backends/Wayland/Outputs.hpp"

namespace vantrel::plasma {

/// Where to send the pointer on its way between two displays, in order, before its target: KWin 6.3 holds it up at the
/// edges between displays, by some distance for each motion that runs against one. Empty within a display.
std::vector<wayland::LayoutPoint> wayPoints(const wayland::OutputDescription& from,
                                            const wayland::OutputDescription& to);

/// The same for a way that begins anywhere.
std::vector<wayland::LayoutPoint> wayPointsFromAnywhere(const wayland::OutputDescription& to);

}  // namespace vantrel::plasma
