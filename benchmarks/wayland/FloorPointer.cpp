#include "benchmarks/wayland/FloorPointer.hpp"

#include <sys/mman.h>
#include <unistd.h>
#include <viewporter.h>
#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1.h>
#include <xdg-output-unstable-v1.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace vantrel::bench {

namespace {

struct Output {
    wl_output* output = nullptr;
    int x = 0;
    int y = 0;
    wl_surface* surface = nullptr;
    wp_viewport* viewport = nullptr;
    zwlr_layer_surface_v1* layer = nullptr;
};

struct State {
    FloorPointer::Bind bind = nullptr;
    wl_display* display = nullptr;
    wl_compositor* compositor = nullptr;
    wl_shm* shm = nullptr;
    wl_seat* seat = nullptr;
    wp_viewporter* viewporter = nullptr;
    zwlr_layer_shell_v1* shell = nullptr;
    zxdg_output_manager_v1* manager = nullptr;
    wl_buffer* pixel = nullptr;
    std::array<Output, 2> outputs;
    std::size_t outputCount = 0;
    std::size_t configuredCount = 0;
    bool isEntered = false;
    double x = 0;
    double y = 0;
};

State state;

template <typename... Arguments>
void none(void*, Arguments...) {}

void global(void*, wl_registry* registry, std::uint32_t name, const char* interface, std::uint32_t) {
    const auto bind = [&](const wl_interface& wanted, std::uint32_t version) {
        return wl_registry_bind(registry, name, &wanted, version);
    };
    const std::string offered = interface;
    if (offered == wl_compositor_interface.name) {
        state.compositor = static_cast<wl_compositor*>(bind(wl_compositor_interface, 4));
    } else if (offered == wl_shm_interface.name) {
        state.shm = static_cast<wl_shm*>(bind(wl_shm_interface, 1));
    } else if (offered == wl_seat_interface.name) {
        state.seat = static_cast<wl_seat*>(bind(wl_seat_interface, 5));
    } else if (offered == wp_viewporter_interface.name) {
        state.viewporter = static_cast<wp_viewporter*>(bind(wp_viewporter_interface, 1));
    } else if (offered == zwlr_layer_shell_v1_interface.name) {
        state.shell = static_cast<zwlr_layer_shell_v1*>(bind(zwlr_layer_shell_v1_interface, 1));
    } else if (offered == zxdg_output_manager_v1_interface.name) {
        state.manager = static_cast<zxdg_output_manager_v1*>(bind(zxdg_output_manager_v1_interface, 3));
    } else if (offered == wl_output_interface.name && state.outputCount < state.outputs.size()) {
        state.outputs[state.outputCount++].output = static_cast<wl_output*>(bind(wl_output_interface, 3));
    } else if (state.bind != nullptr) {
        state.bind(registry, name, interface);
    }
}

void placed(void* data, zxdg_output_v1*, std::int32_t x, std::int32_t y) {
    static_cast<Output*>(data)->x = x;
    static_cast<Output*>(data)->y = y;
}

void configured(void* data, zwlr_layer_surface_v1* layer, std::uint32_t serial, std::uint32_t width,
                std::uint32_t height) {
    const auto& output = *static_cast<Output*>(data);
    zwlr_layer_surface_v1_ack_configure(layer, serial);
    wp_viewport_set_destination(output.viewport, static_cast<int>(width), static_cast<int>(height));
    wl_surface_attach(output.surface, state.pixel, 0, 0);
    wl_surface_commit(output.surface);
    ++state.configuredCount;
}

void entered(void*, wl_pointer*, std::uint32_t, wl_surface* surface, wl_fixed_t x, wl_fixed_t y) {
    for (const Output& output : state.outputs) {
        if (output.surface == surface) {
            state.isEntered = true;
            state.x = output.x + wl_fixed_to_double(x);
            state.y = output.y + wl_fixed_to_double(y);
        }
    }
}

constexpr wl_registry_listener registryListener{.global = global, .global_remove = none};
constexpr zxdg_output_v1_listener placeListener{
    .logical_position = placed, .logical_size = none, .done = none, .name = none, .description = none};
constexpr zwlr_layer_surface_v1_listener layerListener{.configure = configured, .closed = none};

}  // namespace

FloorPointer::FloorPointer(Bind bindMore) {
    state.bind = bindMore;
    state.display = wl_display_connect(nullptr);
    wl_registry_add_listener(wl_display_get_registry(state.display), &registryListener, nullptr);
    wl_display_roundtrip(state.display);
    for (Output& output : state.outputs) {
        zxdg_output_v1_add_listener(zxdg_output_manager_v1_get_xdg_output(state.manager, output.output), &placeListener,
                                    &output);
    }
    static wl_pointer_listener pointerListener{};
    pointerListener.enter = entered;
    pointerListener.leave = none;
    pointerListener.motion = none;
    pointerListener.frame = none;
    wl_pointer_add_listener(wl_seat_get_pointer(state.seat), &pointerListener, nullptr);
    const int memory = memfd_create("pixel", MFD_CLOEXEC);
    if (ftruncate(memory, 4) != 0) {
        std::abort();
    }
    state.pixel =
        wl_shm_pool_create_buffer(wl_shm_create_pool(state.shm, memory, 4), 0, 1, 1, 4, WL_SHM_FORMAT_ARGB8888);
    wl_display_roundtrip(state.display);
}

wl_display* FloorPointer::display() const {
    return state.display;
}

FloorPointer::Place FloorPointer::read(const std::function<void()>& stir) {
    state.isEntered = false;
    state.configuredCount = 0;
    for (Output& output : state.outputs) {
        output.surface = wl_compositor_create_surface(state.compositor);
        output.viewport = wp_viewporter_get_viewport(state.viewporter, output.surface);
        output.layer = zwlr_layer_shell_v1_get_layer_surface(state.shell, output.surface, output.output,
                                                             ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, "floor");
        zwlr_layer_surface_v1_add_listener(output.layer, &layerListener, &output);
        zwlr_layer_surface_v1_set_anchor(output.layer, 15);
        zwlr_layer_surface_v1_set_exclusive_zone(output.layer, -1);
        wl_surface_commit(output.surface);
    }
    while (!state.isEntered && state.configuredCount < state.outputs.size() &&
           wl_display_dispatch(state.display) >= 0) {
    }
    if (!state.isEntered && wl_display_roundtrip(state.display) >= 0 && !state.isEntered) {
        stir();
    }
    while (!state.isEntered && wl_display_dispatch(state.display) >= 0) {
    }
    for (const Output& output : state.outputs) {
        zwlr_layer_surface_v1_destroy(output.layer);
        wp_viewport_destroy(output.viewport);
        wl_surface_destroy(output.surface);
    }
    wl_display_flush(state.display);
    return {state.x, state.y};
}

}  // namespace vantrel::bench
