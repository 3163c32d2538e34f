#include "Vantrel/Backends/Wayland/OutputLayout.hpp"

#include <algorithm>
#include <limits>

namespace vantrel::wayland {

namespace {

bool isKnown(const OutputDescription& output) {
    return output.width > 0 && output.height > 0;
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

}  // namespace vantrel::wayland
