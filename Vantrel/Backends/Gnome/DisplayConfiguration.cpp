#include "Vantrel/Backends/Gnome/DisplayConfiguration.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <utility>

#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel::gnome {

namespace {

struct PixelSize {
    gint32 width = 0;
    gint32 height = 0;
};

std::string connectorOf(GVariant* monitor) {
    const char* connector = nullptr;
    g_variant_get_child(monitor, 0, "&s", &connector);
    return connector;
}

/// Of the mode that the monitor shows; nothing for one that is off.
PixelSize sizeOf(GVariant* modes) {
    for (gsize index = 0; index < g_variant_n_children(modes); ++index) {
        const GVariantPointer mode(g_variant_get_child_value(modes, index));
        const GVariantPointer properties(g_variant_get_child_value(mode.get(), 6));
        gboolean isCurrent = FALSE;
        if (g_variant_lookup(properties.get(), "is-current", "b", &isCurrent) != FALSE && isCurrent != FALSE) {
            PixelSize size;
            g_variant_get_child(mode.get(), 1, "i", &size.width);
            g_variant_get_child(mode.get(), 2, "i", &size.height);
            return size;
        }
    }
    return {};
}

/// A length in the layout.
std::int32_t lengthOf(gint32 pixels, double divisor) {
    constexpr double longest = 65535;  // no display is wider
    return static_cast<std::int32_t>(std::lround(std::clamp(pixels / divisor, 0.0, longest)));
}

std::map<std::string, PixelSize> sizesByConnector(GVariant* monitors) {
    std::map<std::string, PixelSize> sizes;
    for (gsize index = 0; index < g_variant_n_children(monitors); ++index) {
        const GVariantPointer monitor(g_variant_get_child_value(monitors, index));
        const GVariantPointer identity(g_variant_get_child_value(monitor.get(), 0));
        const GVariantPointer modes(g_variant_get_child_value(monitor.get(), 1));
        sizes.emplace(connectorOf(identity.get()), sizeOf(modes.get()));
    }
    return sizes;
}

}  // namespace

std::vector<wayland::OutputDescription> outputsOf(GVariant* displayState) {
    constexpr guint32 physicalLayout = 2;
    const GVariantPointer monitors(g_variant_get_child_value(displayState, 1));
    const GVariantPointer logicalMonitors(g_variant_get_child_value(displayState, 2));
    const GVariantPointer properties(g_variant_get_child_value(displayState, 3));
    guint32 layoutMode = 0;
    const bool isInPixels =
        g_variant_lookup(properties.get(), "layout-mode", "u", &layoutMode) != FALSE && layoutMode == physicalLayout;
    const auto sizes = sizesByConnector(monitors.get());

    std::vector<wayland::OutputDescription> outputs;
    for (gsize index = 0; index < g_variant_n_children(logicalMonitors.get()); ++index) {
        const GVariantPointer logical(g_variant_get_child_value(logicalMonitors.get(), index));
        wayland::OutputDescription output;
        double scale = 1;
        guint32 transform = 0;
        gboolean isPrimary = FALSE;
        g_variant_get(logical.get(), "(iidub@a(ssss)@a{sv})", &output.x, &output.y, &scale, &transform, &isPrimary,
                      nullptr, nullptr);
        output.transform = static_cast<std::int32_t>(transform);
        output.isMain = isPrimary != FALSE;
        const double divisor = isInPixels || !(scale > 0) ? 1 : scale;
        const GVariantPointer shown(g_variant_get_child_value(logical.get(), 5));
        for (gsize number = 0; number < g_variant_n_children(shown.get()); ++number) {
            const GVariantPointer identity(g_variant_get_child_value(shown.get(), number));
            output.name = connectorOf(identity.get());
            const auto size = sizes.find(output.name);
            if (size == sizes.end()) {
                continue;
            }
            output.width = lengthOf(size->second.width, divisor);
            output.height = lengthOf(size->second.height, divisor);
            if (transform % 2 == 1) {
                std::swap(output.width, output.height);
            }
            outputs.push_back(output);
        }
    }
    return outputs;
}

}  // namespace vantrel::gnome
