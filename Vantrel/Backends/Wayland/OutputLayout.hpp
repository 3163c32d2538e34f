#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Vantrel/Backends/Common/MonitorLayout.hpp"

namespace vantrel::wayland {

/// A point of the compositor's layout, in points.
struct LayoutPoint {
    double x = 0;
    double y = 0;

    bool operator==(const LayoutPoint&) const = default;
};

/// An output as the compositor describes it, in the layout's coordinates.
struct OutputDescription {
    std::string name;  ///< its connector, such as "HDMI-A-1"
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;  ///< in points; 0 until it is known
    std::int32_t height = 0;
    std::int32_t transform = 0;   ///< wl_output.transform
    std::int32_t pixelsWide = 0;  ///< before the transform; 0 until it is known
    std::int32_t pixelsHigh = 0;
    bool isMain = false;  ///< where the compositor says so
    std::string edid;     ///< what backend::edidIdentity() made of its EDID; empty where there is none

    bool operator==(const OutputDescription&) const = default;
};

/// The displays of these outputs. The main one is the output that the compositor calls so, else the one whose corner is
/// the layout's origin, else the first by name.
backend::DisplayLayout layoutOfOutputs(std::vector<OutputDescription> outputs);

/// The corner of the rectangle around all outputs; the origin where there are none.
LayoutPoint cornerOfOutputs(const std::vector<OutputDescription>& outputs);

/// Where a pixel of what the output shows is in the layout; none until the output's size in pixels is known.
std::optional<LayoutPoint> placeOfPixel(const OutputDescription& output, LayoutPoint pixel);

}  // namespace vantrel::wayland
