// The floor on sway: a program of a few lines that binds one key over sway's socket, and at each press lays a
// transparent surface over each output, waits until one is entered, takes them away, and has sway put the pointer where
// it last was on the other side of a line (x = 0). It assumes two outputs, stores nothing and knows no errors.
// Arguments: what sway counts from (the layout's corner), and the first point on the line's left.
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <viewporter.h>
#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1.h>
#include <xdg-output-unstable-v1.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

struct Output {
    wl_output* output = nullptr;
    int x = 0;
    int y = 0;
    wl_surface* surface = nullptr;
    wp_viewport* viewport = nullptr;
    zwlr_layer_surface_v1* layer = nullptr;
};

struct Floor {
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
    bool isEntered = false;
    double x = 0;
    double y = 0;
};

Floor state;

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

void readPointer() {
    state.isEntered = false;
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
    while (!state.isEntered && wl_display_dispatch(state.display) >= 0) {
    }
    for (const Output& output : state.outputs) {
        zwlr_layer_surface_v1_destroy(output.layer);
        wp_viewport_destroy(output.viewport);
        wl_surface_destroy(output.surface);
    }
    wl_display_flush(state.display);
}

int connectToSway() {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, std::getenv("SWAYSOCK"), sizeof address.sun_path - 1);
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    return connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 ? connection : -1;
}

bool say(int connection, std::uint32_t type, const std::string& text) {
    const auto length = static_cast<std::uint32_t>(text.size());
    std::string message = "i3-ipc";
    message.append(reinterpret_cast<const char*>(&length), 4).append(reinterpret_cast<const char*>(&type), 4) += text;
    return send(connection, message.data(), message.size(), 0) > 0;
}

std::string hear(int connection) {
    std::array<char, 4096> buffer{};
    const ssize_t count = recv(connection, buffer.data(), buffer.size(), 0);
    return {buffer.data(), static_cast<std::size_t>(count < 0 ? 0 : count)};
}

}  // namespace

int main(int count, char** arguments) {
    state.display = wl_display_connect(nullptr);
    const int commands = connectToSway();
    const int events = connectToSway();
    if (count != 5 || state.display == nullptr || commands < 0 || events < 0) {
        return 1;
    }
    wl_registry_add_listener(wl_display_get_registry(state.display), &registryListener, nullptr);
    wl_display_roundtrip(state.display);
    for (Output& output : state.outputs) {
        zxdg_output_v1_add_listener(zxdg_output_manager_v1_get_xdg_output(state.manager, output.output), &placeListener,
                                    &output);
    }
    wl_pointer_listener pointerListener{};
    pointerListener.enter = entered;
    pointerListener.leave = none;
    pointerListener.motion = none;
    pointerListener.frame = none;
    wl_pointer_add_listener(wl_seat_get_pointer(state.seat), &pointerListener, nullptr);
    const int memory = memfd_create("pixel", MFD_CLOEXEC);
    if (ftruncate(memory, 4) != 0) {
        return 1;
    }
    state.pixel =
        wl_shm_pool_create_buffer(wl_shm_create_pool(state.shm, memory, 4), 0, 1, 1, 4, WL_SHM_FORMAT_ARGB8888);
    wl_display_roundtrip(state.display);

    say(events, 2, R"(["binding"])");
    hear(events);
    say(commands, 0, "bindcode --no-repeat --no-warn Ctrl+Mod1+Shift+Mod4+40 nop floor");
    hear(commands);
    const double cornerX = std::atof(arguments[1]);
    const double cornerY = std::atof(arguments[2]);
    std::array<std::array<double, 2>, 2> remembered{{{std::atof(arguments[3]), std::atof(arguments[4])}, {}}};
    while (hear(events).find("nop floor") != std::string::npos) {
        readPointer();
        const std::size_t side = state.x < 0 ? 0 : 1;
        remembered[side] = {state.x, state.y};
        const auto& target = remembered[1 - side];
        say(commands, 0,
            "seat seat0 cursor set " + std::to_string(target[0] - cornerX) + " " + std::to_string(target[1] - cornerY));
        hear(commands);
    }
    return 0;
}
