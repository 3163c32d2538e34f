#include "tests/desk/wayland/support/SeatClient.hpp"

#include <poll.h>
#include <sys/mman.h>
#include <unistd.h>
#include <viewporter.h>
#include <virtual-keyboard-unstable-v1.h>
#include <wlr-layer-shell-unstable-v1.h>
#include <wlr-virtual-pointer-unstable-v1.h>
#include <xdg-output-unstable-v1.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <stdexcept>

#include "Vantrel/Handles/FileDescriptor.hpp"
#include "tests/desk/support/TemporaryDirectory.hpp"

namespace vantrel::desk {

struct SeatClient::Output {
    std::uint32_t name = 0;
    wl_output* output = nullptr;
    zxdg_output_v1* geometry = nullptr;
    wl_surface* surface = nullptr;
    wp_viewport* viewport = nullptr;
    zwlr_layer_surface_v1* layerSurface = nullptr;
    wl_buffer* content = nullptr;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool isWatched = false;  ///< by the window behind everything
};

namespace {

constexpr std::uint32_t leftButton = 0x110;
constexpr unsigned evdevToXkb = 8;

FileDescriptor memoryFile(std::string_view content) {
    FileDescriptor file(memfd_create("vantrel-test", MFD_CLOEXEC));
    if (!file.isOpen() || write(file.get(), content.data(), content.size()) != static_cast<ssize_t>(content.size())) {
        throw std::runtime_error("no memory file");
    }
    return file;
}

}  // namespace

/// The callbacks of the protocols.
struct SeatClient::Events {
    static SeatClient& client(void* data) { return *static_cast<SeatClient*>(data); }
    static Output& output(void* data) { return *static_cast<Output*>(data); }

    static void global(void* data, wl_registry*, std::uint32_t name, const char* interface, std::uint32_t version) {
        client(data).bind(name, interface, version);
    }
    static void globalRemove(void* data, wl_registry*, std::uint32_t name) {
        auto& outputs = client(data).outputs_;
        const auto gone =
            std::find_if(outputs.begin(), outputs.end(), [name](const auto& each) { return each->name == name; });
        if (gone == outputs.end()) {
            return;
        }
        if (client(data).pointed_ == (*gone)->surface) {
            client(data).pointed_ = nullptr;
        }
        zwlr_layer_surface_v1_destroy((*gone)->layerSurface);
        wp_viewport_destroy((*gone)->viewport);
        wl_surface_destroy((*gone)->surface);
        zxdg_output_v1_destroy((*gone)->geometry);
        wl_output_release((*gone)->output);
        outputs.erase(gone);
    }
    static void enter(void* data, wl_pointer*, std::uint32_t, wl_surface* surface, wl_fixed_t x, wl_fixed_t y) {
        client(data).pointed_ = surface;
        motion(data, nullptr, 0, x, y);
    }
    static void leave(void* data, wl_pointer*, std::uint32_t, wl_surface*) { client(data).pointed_ = nullptr; }
    static void motion(void* data, wl_pointer*, std::uint32_t, wl_fixed_t x, wl_fixed_t y) {
        client(data).onSurface_ = {.x = wl_fixed_to_double(x), .y = wl_fixed_to_double(y)};
    }
    static void button(void* data, wl_pointer*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t state) {
        client(data).clicks_ += state == WL_POINTER_BUTTON_STATE_PRESSED ? 1 : 0;
    }
    static void position(void* data, zxdg_output_v1*, std::int32_t x, std::int32_t y) {
        output(data).x = x;
        output(data).y = y;
    }
    static void size(void* data, zxdg_output_v1*, std::int32_t width, std::int32_t height) {
        output(data).width = width;
        output(data).height = height;
    }
    static void configure(void* data, zwlr_layer_surface_v1* surface, std::uint32_t serial, std::uint32_t width,
                          std::uint32_t height) {
        zwlr_layer_surface_v1_ack_configure(surface, serial);
        if (width == 0 || height == 0) {
            return;
        }
        wp_viewport_set_destination(output(data).viewport, static_cast<int>(width), static_cast<int>(height));
        wl_surface_attach(output(data).surface, output(data).content, 0, 0);
        wl_surface_damage(output(data).surface, 0, 0, static_cast<int>(width), static_cast<int>(height));
        wl_surface_commit(output(data).surface);
        output(data).isWatched = true;
    }
    static void capabilities(void* data, wl_seat* handle, std::uint32_t available) {
        if ((available & WL_SEAT_CAPABILITY_POINTER) != 0 && client(data).pointerDevice_ == nullptr) {
            client(data).pointerDevice_ = wl_seat_get_pointer(handle);
            wl_pointer_add_listener(client(data).pointerDevice_, &pointer, data);
        }
    }

    template <typename... Arguments>
    static void none(void*, Arguments...) {}

    static constexpr wl_registry_listener registryListener{.global = global, .global_remove = globalRemove};
    // Newer libraries know of more events, which a device of this version never sends.
    static constexpr wl_pointer_listener pointer = [] {
        wl_pointer_listener listener{};
        listener.enter = enter;
        listener.leave = leave;
        listener.motion = motion;
        listener.button = button;
        listener.axis = none;
        listener.frame = none;
        listener.axis_source = none;
        listener.axis_stop = none;
        listener.axis_discrete = none;
        return listener;
    }();
    static constexpr zxdg_output_v1_listener geometry{
        .logical_position = position, .logical_size = size, .done = none, .name = none, .description = none};
    static constexpr zwlr_layer_surface_v1_listener layerSurface{.configure = configure, .closed = none};
    static constexpr wl_seat_listener seat{.capabilities = capabilities, .name = none};
};

SeatClient::SeatClient(const std::filesystem::path& socket, const std::string& layouts, const std::string& options)
    : display_(wl_display_connect(socket.c_str())), xkb_(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES)) {
    if (!display_) {
        throw std::runtime_error("cannot connect to " + socket.native());
    }
    registry_ = wl_display_get_registry(display_.get());
    wl_registry_add_listener(registry_, &Events::registryListener, this);
    synchronise();
    if (compositor_ == nullptr || shm_ == nullptr || seat_ == nullptr || viewporter_ == nullptr ||
        outputManager_ == nullptr || layerShell_ == nullptr || pointerManager_ == nullptr ||
        keyboardManager_ == nullptr) {
        throw std::runtime_error("the compositor lacks what the tests need");
    }
    const FileDescriptor pixel = memoryFile(std::string_view("\0\0\0\0", 4));
    wl_shm_pool* pool = wl_shm_create_pool(shm_, pixel.get(), 4);
    nothing_ = wl_shm_pool_create_buffer(pool, 0, 1, 1, 4, WL_SHM_FORMAT_ARGB8888);
    wl_shm_pool_destroy(pool);

    const TemporaryDirectory data("xkb");
    if (options.empty()) {
        xkb_context_include_path_append_default(xkb_.get());
    } else {
        // The system's data with ours, as if that were in the person's own folder. One folder has all of it, because
        // libxkbcommon 1.5 leaks the names of files that it does not find in the first of several.
        constexpr auto into =
            std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing;
        std::filesystem::copy("/usr/share/X11/xkb", data.path(), into);
        std::filesystem::copy(VANTREL_XKB_DATA, data.path(), into);
        xkb_context_include_path_append(xkb_.get(), data.path().c_str());
    }
    const xkb_rule_names names{
        .rules = "evdev", .model = "pc105", .layout = layouts.c_str(), .variant = "", .options = options.c_str()};
    keymap_.reset(xkb_keymap_new_from_names(xkb_.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap_) {
        throw std::runtime_error("no keymap for " + layouts);
    }
    state_.reset(xkb_state_new(keymap_.get()));
    keyboard_ = zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(keyboardManager_, seat_);
    const std::unique_ptr<char, FreeDeleter> text(xkb_keymap_get_as_string(keymap_.get(), XKB_KEYMAP_FORMAT_TEXT_V1));
    const std::string_view terminated(text.get(), std::string_view(text.get()).size() + 1);
    zwp_virtual_keyboard_v1_keymap(keyboard_, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, memoryFile(terminated).get(),
                                   static_cast<std::uint32_t>(terminated.size()));

    mouse_ = zwlr_virtual_pointer_manager_v1_create_virtual_pointer(pointerManager_, seat_);
    for (const auto& output : outputs_) {
        watch(*output);
    }
    wl_seat_add_listener(seat_, &Events::seat, this);
    if (!waitUntil([this] {
            synchronise();
            return pointerDevice_ != nullptr;
        })) {
        throw std::runtime_error("the seat has no pointer");
    }
    synchronise();
}

SeatClient::~SeatClient() {
    letGo();
    wl_display_roundtrip(display_.get());
    // For the compositor they end with the connection.
    const auto forget = [](auto*... objects) {
        for (auto* const object : {reinterpret_cast<wl_proxy*>(objects)...}) {
            if (object != nullptr) {
                wl_proxy_destroy(object);
            }
        }
    };
    for (const auto& output : outputs_) {
        forget(output->layerSurface, output->viewport, output->surface, output->geometry, output->output);
    }
    forget(keyboard_, keyboardManager_, mouse_, pointerManager_, layerShell_, outputManager_, viewporter_, nothing_,
           pointerDevice_, seat_, shm_, compositor_, registry_);
}

void SeatClient::bind(std::uint32_t name, std::string_view interface, std::uint32_t version) {
    const auto take = [&](const wl_interface& wanted, std::uint32_t wantedVersion) -> void* {
        return interface == wanted.name ? wl_registry_bind(registry_, name, &wanted, std::min(version, wantedVersion))
                                        : nullptr;
    };
    const auto keep = [&]<typename Object>(Object*& object, const wl_interface& wanted, std::uint32_t wantedVersion) {
        if (object == nullptr) {
            object = static_cast<Object*>(take(wanted, wantedVersion));
        }
    };
    tellsRecorders_ |= interface == "ext_image_copy_capture_manager_v1";
    keep(compositor_, wl_compositor_interface, 4);
    keep(shm_, wl_shm_interface, 1);
    keep(seat_, wl_seat_interface, 5);
    keep(viewporter_, wp_viewporter_interface, 1);
    keep(outputManager_, zxdg_output_manager_v1_interface, 3);
    keep(layerShell_, zwlr_layer_shell_v1_interface, 4);
    keep(pointerManager_, zwlr_virtual_pointer_manager_v1_interface, 2);
    keep(keyboardManager_, zwp_virtual_keyboard_manager_v1_interface, 1);
    if (auto* const output = static_cast<wl_output*>(take(wl_output_interface, 3))) {
        outputs_.push_back(std::make_unique<Output>());
        outputs_.back()->name = name;
        outputs_.back()->output = output;
        if (nothing_ != nullptr) {
            watch(*outputs_.back());
        }
    }
}

void SeatClient::watch(Output& output) {
    output.content = nothing_;
    output.geometry = zxdg_output_manager_v1_get_xdg_output(outputManager_, output.output);
    zxdg_output_v1_add_listener(output.geometry, &Events::geometry, &output);
    output.surface = wl_compositor_create_surface(compositor_);
    output.viewport = wp_viewporter_get_viewport(viewporter_, output.surface);
    output.layerSurface = zwlr_layer_shell_v1_get_layer_surface(layerShell_, output.surface, output.output,
                                                                ZWLR_LAYER_SHELL_V1_LAYER_BACKGROUND, "vantrel-test");
    zwlr_layer_surface_v1_add_listener(output.layerSurface, &Events::layerSurface, &output);
    zwlr_layer_surface_v1_set_anchor(output.layerSurface,
                                     ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
                                         ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT);
    zwlr_layer_surface_v1_set_exclusive_zone(output.layerSurface, -1);
    wl_surface_commit(output.surface);
}

void SeatClient::synchronise() {
    if (wl_display_roundtrip(display_.get()) < 0) {
        throw std::runtime_error("the compositor went away");
    }
}

void SeatClient::look(Duration time) {
    wl_display_dispatch_pending(display_.get());
    wl_display_flush(display_.get());
    pollfd descriptor{.fd = wl_display_get_fd(display_.get()), .events = POLLIN, .revents = 0};
    const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
    if (poll(&descriptor, 1, static_cast<int>(milliseconds)) > 0 && wl_display_dispatch(display_.get()) < 0) {
        throw std::runtime_error("the compositor went away");
    }
}

void SeatClient::key(std::string_view name, bool isDown) {
    const xkb_keycode_t keycode = xkb_keymap_key_by_name(keymap_.get(), std::string(name).c_str());
    if (keycode == XKB_KEYCODE_INVALID) {
        throw std::runtime_error("no such key: " + std::string(name));
    }
    zwp_virtual_keyboard_v1_key(keyboard_, ++time_, keycode - evdevToXkb, isDown ? 1 : 0);
    xkb_state_update_key(state_.get(), keycode, isDown ? XKB_KEY_DOWN : XKB_KEY_UP);
    sendModifiers();
}

void SeatClient::sendModifiers() {
    zwp_virtual_keyboard_v1_modifiers(keyboard_, xkb_state_serialize_mods(state_.get(), XKB_STATE_MODS_DEPRESSED),
                                      xkb_state_serialize_mods(state_.get(), XKB_STATE_MODS_LATCHED),
                                      xkb_state_serialize_mods(state_.get(), XKB_STATE_MODS_LOCKED),
                                      xkb_state_serialize_layout(state_.get(), XKB_STATE_LAYOUT_EFFECTIVE));
}

void SeatClient::hold(const Chord& chord) {
    for (const std::string_view name : chord) {
        key(name, true);
        held_.emplace_back(name);
    }
    wl_display_flush(display_.get());
}

void SeatClient::letGo() {
    while (!held_.empty()) {
        key(held_.back(), false);
        held_.pop_back();
    }
    wl_display_flush(display_.get());
}

void SeatClient::type(const Chord& chord) {
    hold(chord);
    letGo();
}

void SeatClient::chooseLayout(unsigned number) {
    xkb_state_update_mask(state_.get(), 0, 0, xkb_state_serialize_mods(state_.get(), XKB_STATE_MODS_LOCKED), 0, 0,
                          number);
    sendModifiers();
    synchronise();
}

void SeatClient::moveTo(LayoutPoint point) {
    moveUnseenTo(point);
    if (!waitFor(point)) {
        throw std::runtime_error("the pointer does not get where the hand moves it");
    }
}

void SeatClient::moveUnseenTo(LayoutPoint point) {
    int left = outputs_.front()->x;
    int top = outputs_.front()->y;
    int right = left;
    int bottom = top;
    for (const auto& output : outputs_) {
        left = std::min(left, output->x);
        top = std::min(top, output->y);
        right = std::max(right, output->x + output->width);
        bottom = std::max(bottom, output->y + output->height);
    }
    constexpr int parts = 256;  // of a point, as many as the protocol tells of
    zwlr_virtual_pointer_v1_motion_absolute(
        mouse_, ++time_, static_cast<std::uint32_t>(std::lround((point.x - left) * parts)),
        static_cast<std::uint32_t>(std::lround((point.y - top) * parts)),
        static_cast<std::uint32_t>((right - left) * parts), static_cast<std::uint32_t>((bottom - top) * parts));
    zwlr_virtual_pointer_v1_frame(mouse_);
    synchronise();
}

void SeatClient::pressButton() {
    zwlr_virtual_pointer_v1_button(mouse_, ++time_, leftButton, WL_POINTER_BUTTON_STATE_PRESSED);
    zwlr_virtual_pointer_v1_frame(mouse_);
    synchronise();
}

void SeatClient::releaseButton() {
    zwlr_virtual_pointer_v1_button(mouse_, ++time_, leftButton, WL_POINTER_BUTTON_STATE_RELEASED);
    zwlr_virtual_pointer_v1_frame(mouse_);
    synchronise();
}

std::optional<LayoutPoint> SeatClient::pointer() {
    look(Duration::zero());
    for (const auto& output : outputs_) {
        if (output->surface == pointed_ && pointed_ != nullptr) {
            return LayoutPoint{.x = output->x + onSurface_.x, .y = output->y + onSurface_.y};
        }
    }
    return std::nullopt;
}

std::size_t SeatClient::displayCount() {
    synchronise();
    const auto count =
        std::count_if(outputs_.begin(), outputs_.end(), [](const auto& output) { return output->isWatched; });
    // What has just been told to be there has come to the compositor then.
    synchronise();
    return static_cast<std::size_t>(count);
}

bool SeatClient::waitFor(LayoutPoint point, Duration deadline) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (pointer() != point) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        look(std::chrono::milliseconds(5));
    }
    return true;
}

bool SeatClient::staysAt(LayoutPoint point, Duration time) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (std::chrono::steady_clock::now() < end) {
        const auto now = pointer();
        if (now && *now != point) {
            return false;
        }
        look(std::chrono::milliseconds(5));
    }
    return pointer() == point;
}

}  // namespace vantrel::desk
