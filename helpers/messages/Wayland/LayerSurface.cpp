#include "helpers/messages/Wayland/LayerSurface.hpp"

#include <utility>

namespace vantrel::overlay {

namespace {

constexpr std::uint32_t allEdges = ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
                                   ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;

}  // namespace

struct LayerSurface::Callbacks {
    static void configured(void* data, zwlr_layer_surface_v1* layer, std::uint32_t serial, std::uint32_t width,
                           std::uint32_t height) {
        zwlr_layer_surface_v1_ack_configure(layer, serial);
        static_cast<LayerSurface*>(data)->configured_(
            {.width = static_cast<int>(width), .height = static_cast<int>(height)});
    }
    static void closed(void* data, zwlr_layer_surface_v1* /*layer*/) {
        static_cast<LayerSurface*>(data)->isClosed_ = true;
    }

    static constexpr zwlr_layer_surface_v1_listener listener{.configure = configured, .closed = closed};
};

LayerSurface::LayerSurface(const Compositor& compositor, wl_output* output, Keyboard keyboard,
                           std::function<void(Size)> configured)
    : configured_(std::move(configured)),
      surface_(compositor),
      layer_(zwlr_layer_shell_v1_get_layer_surface(compositor.layerShell(), surface_.get(), output,
                                                   ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, "vantrel")) {
    zwlr_layer_surface_v1_add_listener(layer_.get(), &Callbacks::listener, this);
    // As if there were no panels.
    zwlr_layer_surface_v1_set_exclusive_zone(layer_.get(), -1);
    zwlr_layer_surface_v1_set_keyboard_interactivity(layer_.get(), keyboard == Keyboard::exclusive ? 1 : 0);
}

void LayerSurface::coverTheOutput() {
    zwlr_layer_surface_v1_set_anchor(layer_.get(), allEdges);
}

void LayerSurface::standAt(const Rect& bounds) {
    zwlr_layer_surface_v1_set_anchor(layer_.get(),
                                     ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT);
    zwlr_layer_surface_v1_set_margin(layer_.get(), bounds.y, 0, 0, bounds.x);
    askFor({.width = bounds.width, .height = bounds.height});
}

void LayerSurface::askFor(Size size) {
    zwlr_layer_surface_v1_set_size(layer_.get(), static_cast<std::uint32_t>(size.width),
                                   static_cast<std::uint32_t>(size.height));
}

}  // namespace vantrel::overlay
