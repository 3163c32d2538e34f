#pragma once

#include <span>
#include <vector>

#include "Vantrel/Backends/Wayland/Outputs.hpp"

namespace vantrel::plasma {

/// Where to send the pointer on its way between two displays, in order, before its target: KWin 6.3 holds it up at the
/// edges between displays, by some distance for each motion that runs against one. Empty within a display.
std::vector<wayland::LayoutPoint> wayPoints(const wayland::OutputDescription& from,
                                            const wayland::OutputDescription& to);

/// The same on a way that may lead through other displays, as that from one end of a row to the other does. `from` and
/// `to` are among the outputs.
std::vector<wayland::LayoutPoint> wayPointsThrough(std::span<const wayland::Output> outputs,
                                                   const wayland::Output& from, const wayland::Output& to);

/// The same for a way that begins anywhere.
std::vector<wayland::LayoutPoint> wayPointsFromAnywhere(const wayland::OutputDescription& to);

}  // namespace vantrel::plasma
