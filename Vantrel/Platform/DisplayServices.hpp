#pragma once

#include <cstdint>
#include <span>

#include "VantrelCore/PlatformGeometry.hpp"

namespace vantrel {

using CGDirectDisplayID = std::uint32_t;
using CGError = std::int32_t;  ///< 0 is success

/// The displays that are active at this moment.
class DisplayServices {
  public:
    virtual ~DisplayServices() = default;

    /// With an empty span reports the number of active displays; otherwise fills the span with their identifiers, in
    /// the platform's order and as many as fit, and reports how many it filled. An identifier is never 0, is unique
    /// within a layout and stays the same across restarts and replugging. Returns 0 on success.
    virtual CGError CGGetActiveDisplayList(std::span<CGDirectDisplayID> activeDisplays,
                                           std::uint32_t& displayCount) = 0;

    /// The bounds of the display in the global display space (points, origin at the main display's top-left corner, y
    /// downwards); an empty rectangle for an identifier that is not active.
    virtual CGRect CGDisplayBounds(CGDirectDisplayID display) = 0;
};

}  // namespace vantrel
