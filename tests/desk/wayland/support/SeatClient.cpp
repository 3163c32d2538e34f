#include "tests/desk/wayland/support/SeatClient.hpp"

#include <fake-input.h>
#include <kde-output-order-v1.h>
#include <poll.h>
#include <viewporter.h>
#include <virtual-keyboard-unstable-v1.h>
#include <wlr-layer-shell-unstable-v1.h>
#include <wlr-virtual-pointer-unstable-v1.h>
#include <xdg-output-unstable-v1.h>

#include <algorithm>
#include <stdexcept>

#include "tests/desk/wayland/support/FakeInputHands.hpp"
#include "tests/desk/wayland/support/WaylandClient.hpp"
#include "tests/desk/wayland/support/WlrootsHands.hpp"

namespace vantrel::desk {

struct SeatClient::Output {
    std::uint32_t name = 0;
    std::string connector;
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
        client(data).lastSeen_ = client(data).place().value_or(client(data).lastSeen_);
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
    static void named(void* data, zxdg_output_v1*, const char* name) { output(data).connector = name; }
    static void ordered(void* data, kde_output_order_v1*, const char* name) {
        client(data).toldOrder_.emplace_back(name);
    }
    static void orderDone(void* data, kde_output_order_v1*) {
        auto& told = client(data).toldOrder_;
        client(data).mainDisplay_ = told.empty() ? "" : told.front();
        told.clear();
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
        .logical_position = position, .logical_size = size, .done = none, .name = named, .description = none};
    static constexpr kde_output_order_v1_listener order{.output = ordered, .done = orderDone};
    static constexpr zwlr_layer_surface_v1_listener layerSurface{.configure = configure, .closed = none};
    static constexpr wl_seat_listener seat{.capabilities = capabilities, .name = none};
};

SeatClient::SeatClient(const std::filesystem::path& socket, const std::string& layouts, const std::string& options)
    : display_(wl_display_connect(socket.c_str())), map_(layouts, options) {
    if (!display_) {
        throw std::runtime_error("cannot connect to " + socket.native());
    }
    registry_ = wl_display_get_registry(display_.get());
    wl_registry_add_listener(registry_, &Events::registryListener, this);
    synchronise();
    if (compositor_ == nullptr || shm_ == nullptr || seat_ == nullptr || viewporter_ == nullptr ||
        outputManager_ == nullptr || layerShell_ == nullptr || !hasHands()) {
        throw std::runtime_error("the compositor lacks what the tests need");
    }
    const FileDescriptor pixel = memoryFile(std::string_view("\0\0\0\0", 4));
    wl_shm_pool* pool = wl_shm_create_pool(shm_, pixel.get(), 4);
    nothing_ = wl_shm_pool_create_buffer(pool, 0, 1, 1, 4, WL_SHM_FORMAT_ARGB8888);
    wl_shm_pool_destroy(pool);

    growHands();
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
    hands_.reset();
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
    forget(order_, fakeInput_, keyboardManager_, pointerManager_, layerShell_, outputManager_, viewporter_, nothing_,
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
    keep(fakeInput_, org_kde_kwin_fake_input_interface, 4);
    if (interface == kde_output_order_v1_interface.name) {
        keep(order_, kde_output_order_v1_interface, 1);
        kde_output_order_v1_add_listener(order_, &Events::order, this);
    }
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

bool SeatClient::hasHands() const {
    return fakeInput_ != nullptr || (pointerManager_ != nullptr && keyboardManager_ != nullptr);
}

void SeatClient::growHands() {
    if (pointerManager_ != nullptr && keyboardManager_ != nullptr) {
        hands_ = std::make_unique<WlrootsHands>(*pointerManager_, *keyboardManager_, *seat_, map_);
    } else {
        hands_ = std::make_unique<FakeInputHands>(*fakeInput_, map_);
    }
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

void SeatClient::hold(const Chord& chord) {
    for (const std::string_view name : chord) {
        hands_->key(name, true);
        held_.emplace_back(name);
    }
    wl_display_flush(display_.get());
}

void SeatClient::letGo() {
    while (!held_.empty()) {
        hands_->key(held_.back(), false);
        held_.pop_back();
    }
    wl_display_flush(display_.get());
}

void SeatClient::type(const Chord& chord) {
    hold(chord);
    letGo();
}

void SeatClient::chooseLayout(unsigned number) {
    hands_->chooseLayout(number);
    synchronise();
}

void SeatClient::moveTo(LayoutPoint point) {
    // Again where displays have moved meanwhile, of which this client has yet to be told, or a late jump has come.
    constexpr auto attempt = std::chrono::seconds(2);
    const bool isThere = waitUntil([&] {
        moveUnseenTo(point);
        return waitFor(point, attempt);
    });
    if (!isThere) {
        throw std::runtime_error("the pointer does not get where the hand moves it");
    }
}

void SeatClient::moveUnseenTo(LayoutPoint point) {
    hands_->moveTo({.x = point.x + origin().x, .y = point.y + origin().y}, displays());
    synchronise();
}

void SeatClient::pressButton() {
    hands_->button(true);
    synchronise();
}

void SeatClient::releaseButton() {
    hands_->button(false);
    synchronise();
}

std::vector<LayoutArea> SeatClient::displays() const {
    std::vector<LayoutArea> areas;
    for (const auto& output : outputs_) {
        areas.push_back({.x = output->x, .y = output->y, .width = output->width, .height = output->height});
    }
    return areas;
}

LayoutPoint SeatClient::origin() const {
    const auto main = std::find_if(outputs_.begin(), outputs_.end(),
                                   [this](const auto& output) { return output->connector == mainDisplay_; });
    return mainDisplay_.empty() || main == outputs_.end()
               ? LayoutPoint{}
               : LayoutPoint{.x = static_cast<double>((*main)->x), .y = static_cast<double>((*main)->y)};
}

std::optional<LayoutPoint> SeatClient::place() const {
    for (const auto& output : outputs_) {
        if (output->surface == pointed_ && pointed_ != nullptr) {
            return LayoutPoint{.x = output->x + onSurface_.x - origin().x, .y = output->y + onSurface_.y - origin().y};
        }
    }
    return std::nullopt;
}

std::optional<LayoutPoint> SeatClient::pointer() {
    look(Duration::zero());
    return place();
}

LayoutPoint SeatClient::lastSeen() {
    look(Duration::zero());
    return lastSeen_;
}

bool SeatClient::waitForClicks(int count) {
    return waitUntil([&] {
        synchronise();
        return clicks_ == count;
    });
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
    // Who has read where it is may have just covered it.
    return waitFor(point);
}

}  // namespace vantrel::desk
