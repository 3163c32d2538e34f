#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "VantrelCore/PlatformGeometry.hpp"

namespace vantrel::backend {

/// What tells one output's display from another.
struct OutputIdentity {
    std::string connector;  ///< the output's name, such as "HDMI-1"
    std::string edid;       ///< what edidIdentity() made of its EDID; empty where there is none
};

/// A monitor as the windowing system lists it, in its own coordinates (on X11, as RandR 1.5 does, in root-window
/// pixels).
struct Monitor {
    std::string name;
    bool isPrimary = false;
    bool isAutomatic = true;  ///< made by the windowing system, not defined by the user
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<OutputIdentity> outputs;
};

/// A display with its bounds in the global display space.
struct ActiveDisplay {
    std::uint32_t id = 0;
    CGRect bounds;
};

/// The displays and where the global display space has its origin in the windowing system's coordinates.
struct DisplayLayout {
    std::vector<ActiveDisplay> displays;
    std::int32_t originX = 0;
    std::int32_t originY = 0;
};

/// The displays that a person would count, in the listed order. A monitor that the user defined wins over the
/// automatic one that holds it; an automatic one wholly inside another is its mirror, so of the two the larger counts,
/// the primary among equals. Identifiers are never 0, unique within the layout and the same in every session.
DisplayLayout layoutOfMonitors(const std::vector<Monitor>& listed);

}  // namespace vantrel::backend
