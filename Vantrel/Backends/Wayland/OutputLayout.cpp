#include "Vantrel/Backends/Wayland/OutputLayout.hpp"

#include <algorithm>
#include <limits>

namespace vantrel::wayland {

namespace {

bool isKnown(const OutputDescription& output) {
    return output.width > 0 && output.height > 0;
}

/// How far it is from the coordinate to the range; 0 within.
double distance(double coordinate, std::int32_t from, std::int32_t length) {
    return std::max({from - coordinate, coordinate - (from + length), 0.0});
}

}  // namespace

backend::DisplayLayout layoutOfOutputs(std::vector<OutputDescription> outputs) {
    std::erase_if(outputs, [](const OutputDescription& output) { return !isKnown(output); });
    std::stable_sort(outputs.begin(), outputs.end(), [](const OutputDescription& one, const OutputDescription& other) {
        return one.name < other.name;
    });
    auto main = std::find_if(outputs.begin(), outputs.end(), [](const auto& output) { return output.isMain; });
    if (main == outputs.end()) {
        main = std::find_if(outputs.begin(), outputs.end(),
                            [](const auto& output) { return output.x == 0 && output.y == 0; });
    }
    if (main == outputs.end()) {
        main = outputs.begin();
    }

    std::vector<backend::Monitor> monitors;
    monitors.reserve(outputs.size());
    for (auto output = outputs.begin(); output != outputs.end(); ++output) {
        monitors.push_back({.name = output->name,
                            .isPrimary = output == main,
                            .isAutomatic = true,
                            .x = output->x,
                            .y = output->y,
                            .width = output->width,
                            .height = output->height,
                            .outputs = {{.connector = output->name, .edid = output->edid}}});
    }
    return backend::layoutOfMonitors(monitors);
}

LayoutPoint cornerOfOutputs(const std::vector<OutputDescription>& outputs) {
    constexpr double farAway = std::numeric_limits<std::int32_t>::max();
    LayoutPoint corner{farAway, farAway};
    for (const OutputDescription& output : outputs) {
        if (isKnown(output)) {
            corner.x = std::min(corner.x, static_cast<double>(output.x));
            corner.y = std::min(corner.y, static_cast<double>(output.y));
        }
    }
    return corner.x == farAway ? LayoutPoint{} : corner;
}

std::optional<LayoutPoint> placeOfPixel(const OutputDescription& output, LayoutPoint pixel) {
    const bool isTurned = output.transform % 2 == 1;
    const std::int32_t wide = isTurned ? output.pixelsHigh : output.pixelsWide;
    const std::int32_t high = isTurned ? output.pixelsWide : output.pixelsHigh;
    if (wide <= 0 || high <= 0) {
        return std::nullopt;
    }
    return LayoutPoint{output.x + pixel.x * output.width / wide, output.y + pixel.y * output.height / high};
}

std::size_t outputAt(const std::vector<OutputDescription>& outputs, LayoutPoint point) {
    std::size_t nearest = 0;
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t index = 0; index < outputs.size(); ++index) {
        const OutputDescription& output = outputs[index];
        // The right and the lower edge belong to the neighbour.
        const bool holds = point.x >= output.x && point.x < output.x + output.width && point.y >= output.y &&
                           point.y < output.y + output.height;
        const double x = distance(point.x, output.x, output.width);
        const double y = distance(point.y, output.y, output.height);
        const double away = holds ? -1 : x * x + y * y;
        if (isKnown(output) && away < least) {
            least = away;
            nearest = index;
        }
    }
    return nearest;
}

}  // namespace vantrel::wayland
