#include "tests/desk/wayland/support/TypingWindow.hpp"

#include <pointer-constraints-unstable-v1.h>
#include <unistd.h>
#include <xdg-shell.h>

#include <algorithm>
#include <span>
#include <stdexcept>

#include "tests/desk/support/Wait.hpp"

namespace vantrel::desk {

struct TypingWindow::Callbacks {
    static TypingWindow& self(void* data) { return *static_cast<TypingWindow*>(data); }

    static void keymap(void* /*data*/, wl_keyboard* /*keyboard*/, std::uint32_t /*format*/, std::int32_t file,
                       std::uint32_t /*size*/) {
        close(file);
    }
    static void enter(void* data, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/, wl_surface* /*surface*/,
                      wl_array* /*keys*/) {
        self(data).hasKeyboard_ = true;
    }
    static void leave(void* data, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/, wl_surface* /*surface*/) {
        self(data).hasKeyboard_ = false;
    }
    static void key(void* data, wl_keyboard* /*keyboard*/, std::uint32_t serial, std::uint32_t /*time*/,
                    std::uint32_t /*key*/, std::uint32_t state) {
        if (state == WL_KEYBOARD_KEY_STATE_PRESSED) {
            ++self(data).presses_;
            self(data).pressSerial_ = serial;
        }
    }
    static void locked(void* data, zwp_locked_pointer_v1* /*lock*/) { self(data).isPointerLocked_ = true; }
    static void unlocked(void* data, zwp_locked_pointer_v1* /*lock*/) { self(data).isPointerLocked_ = false; }
    static void confined(void* data, zwp_confined_pointer_v1* /*confinement*/) { self(data).isPointerConfined_ = true; }
    static void unconfined(void* data, zwp_confined_pointer_v1* /*confinement*/) {
        self(data).isPointerConfined_ = false;
    }
    static void pointerEnter(void* data, wl_pointer* /*pointer*/, std::uint32_t /*serial*/, wl_surface* /*surface*/,
                             wl_fixed_t x, wl_fixed_t y) {
        self(data).toldPointer_ = {.x = wl_fixed_to_double(x), .y = wl_fixed_to_double(y)};
    }
    static void pointerMotion(void* data, wl_pointer* pointer, std::uint32_t serial, wl_fixed_t x, wl_fixed_t y) {
        pointerEnter(data, pointer, serial, nullptr, x, y);
    }
    static void ping(void* /*data*/, xdg_wm_base* base, std::uint32_t serial) { xdg_wm_base_pong(base, serial); }
    static void configured(void* data, xdg_surface* window, std::uint32_t serial) {
        xdg_surface_ack_configure(window, serial);
        TypingWindow& typing = self(data);
        if (typing.viewport_ && typing.isFullScreen_) {
            wp_viewport_set_destination(typing.viewport_.get(), typing.width_, typing.height_);
            typing.fillsScreen_ = true;
        }
        typing.paint(*typing.surface_);
    }
    static void sized(void* data, xdg_toplevel* /*toplevel*/, std::int32_t width, std::int32_t height,
                      wl_array* states) {
        self(data).width_ = width;
        self(data).height_ = height;
        const std::span<const std::uint32_t> known(static_cast<const std::uint32_t*>(states->data),
                                                   states->size / sizeof(std::uint32_t));
        self(data).isFullScreen_ = std::find(known.begin(), known.end(), XDG_TOPLEVEL_STATE_FULLSCREEN) != known.end();
    }
    static void menuConfigured(void* data, xdg_surface* window, std::uint32_t serial) {
        xdg_surface_ack_configure(window, serial);
        self(data).paint(*self(data).menuSurface_);
        self(data).isMenuOpen_ = true;
    }

    template <typename... Arguments>
    static void unused(void* /*data*/, Arguments... /*arguments*/) {}

    static constexpr wl_keyboard_listener keyboard{
        .keymap = keymap, .enter = enter, .leave = leave, .key = key, .modifiers = unused, .repeat_info = unused};
    static constexpr zwp_locked_pointer_v1_listener lock{.locked = locked, .unlocked = unlocked};
    static constexpr zwp_confined_pointer_v1_listener confinement{.confined = confined, .unconfined = unconfined};
    static constexpr wl_pointer_listener pointerListener = [] {
        wl_pointer_listener listener{};
        listener.enter = pointerEnter;
        listener.leave = unused;
        listener.motion = pointerMotion;
        listener.button = unused;
        listener.axis = unused;
        listener.frame = unused;
        listener.axis_source = unused;
        listener.axis_stop = unused;
        listener.axis_discrete = unused;
        return listener;
    }();
    static constexpr xdg_wm_base_listener baseListener{.ping = ping};
    static constexpr xdg_surface_listener windowListener{.configure = configured};
    static constexpr xdg_surface_listener menuListener{.configure = menuConfigured};
    static constexpr xdg_popup_listener popup = [] {
        xdg_popup_listener listener{};
        listener.configure = unused;
        listener.popup_done = unused;
        return listener;
    }();
    // Newer protocols know of more events, which a window of this version never gets.
    static constexpr xdg_toplevel_listener toplevel = [] {
        xdg_toplevel_listener listener{};
        listener.configure = sized;
        listener.close = unused;
        return listener;
    }();
};

TypingWindow::TypingWindow(const std::filesystem::path& socket)
    : client_(socket, [this](std::uint32_t name, std::string_view interface, std::uint32_t /*version*/) {
          offered(name, interface);
      }) {
    client_.synchronise();
    if (!compositor_ || !shm_ || !seat_ || base_ == nullptr) {
        throw std::runtime_error("the compositor shows no windows");
    }
    keyboard_.reset(wl_seat_get_keyboard(seat_.get()));
    wl_keyboard_add_listener(keyboard_.get(), &Callbacks::keyboard, this);
    showItself();
    if (!waitUntil([this] { return hasKeyboard(); })) {
        throw std::runtime_error("the window does not get the keyboard");
    }
}

TypingWindow::~TypingWindow() {
    if (confinement_ != nullptr) {
        zwp_confined_pointer_v1_destroy(confinement_);
    }
    if (lock_ != nullptr) {
        zwp_locked_pointer_v1_destroy(lock_);
    }
    if (constraints_ != nullptr) {
        zwp_pointer_constraints_v1_destroy(constraints_);
    }
    if (menu_ != nullptr) {
        xdg_popup_destroy(menu_);
        xdg_surface_destroy(menuWindow_);
    }
    xdg_toplevel_destroy(toplevel_);
    xdg_surface_destroy(window_);
    surface_.reset();
    xdg_wm_base_destroy(base_);
}

void TypingWindow::offered(std::uint32_t name, std::string_view interface) {
    if (interface == wl_compositor_interface.name) {
        compositor_.reset(client_.bind<wl_compositor>(name, wl_compositor_interface, 4));
    } else if (interface == wl_shm_interface.name) {
        shm_.reset(client_.bind<wl_shm>(name, wl_shm_interface, 1));
    } else if (interface == wl_seat_interface.name) {
        seat_.reset(client_.bind<wl_seat>(name, wl_seat_interface, 5));
    } else if (interface == wp_viewporter_interface.name) {
        viewporter_.reset(client_.bind<wp_viewporter>(name, wp_viewporter_interface, 1));
    } else if (interface == zwp_pointer_constraints_v1_interface.name) {
        constraints_ = client_.bind<zwp_pointer_constraints_v1>(name, zwp_pointer_constraints_v1_interface, 1);
    } else if (interface == xdg_wm_base_interface.name) {
        base_ = client_.bind<xdg_wm_base>(name, xdg_wm_base_interface, 1);
        xdg_wm_base_add_listener(base_, &Callbacks::baseListener, this);
    }
}

void TypingWindow::showItself() {
    constexpr int side = 64;
    constexpr int bytes = side * side * 4;
    const FileDescriptor file = memoryFile(bytes);
    const std::vector<std::uint32_t> pixels(std::size_t{side} * side, color);
    if (write(file.get(), pixels.data(), bytes) != bytes) {
        throw std::runtime_error("a window cannot be drawn");
    }
    const wayland::WaylandPointer<wl_shm_pool> pool(wl_shm_create_pool(shm_.get(), file.get(), bytes));
    content_.reset(wl_shm_pool_create_buffer(pool.get(), 0, side, side, side * 4, WL_SHM_FORMAT_XRGB8888));
    surface_.reset(wl_compositor_create_surface(compositor_.get()));
    window_ = xdg_wm_base_get_xdg_surface(base_, surface_.get());
    xdg_surface_add_listener(window_, &Callbacks::windowListener, this);
    toplevel_ = xdg_surface_get_toplevel(window_);
    xdg_toplevel_add_listener(toplevel_, &Callbacks::toplevel, this);
    xdg_toplevel_set_app_id(toplevel_, "typing");
    wl_surface_commit(surface_.get());
}

void TypingWindow::paint(wl_surface& surface) const {
    wl_surface_attach(&surface, content_.get(), 0, 0);
    wl_surface_commit(&surface);
}

void TypingWindow::openMenu() {
    constexpr int side = 64;
    xdg_positioner* const place = xdg_wm_base_create_positioner(base_);
    xdg_positioner_set_size(place, side, side);
    xdg_positioner_set_anchor_rect(place, 0, 0, 1, 1);
    menuSurface_.reset(wl_compositor_create_surface(compositor_.get()));
    menuWindow_ = xdg_wm_base_get_xdg_surface(base_, menuSurface_.get());
    xdg_surface_add_listener(menuWindow_, &Callbacks::menuListener, this);
    menu_ = xdg_surface_get_popup(menuWindow_, window_, place);
    xdg_popup_add_listener(menu_, &Callbacks::popup, this);
    xdg_popup_grab(menu_, seat_.get(), pressSerial_);
    xdg_positioner_destroy(place);
    wl_surface_commit(menuSurface_.get());
    const bool isOpen = waitUntil([this] {
        client_.synchronise();
        return isMenuOpen_;
    });
    if (!isOpen) {
        throw std::runtime_error("the menu does not open");
    }
}

bool TypingWindow::hasKeyboard() {
    client_.synchronise();
    return hasKeyboard_;
}

void TypingWindow::fillScreen() {
    viewport_.reset(wp_viewporter_get_viewport(viewporter_.get(), surface_.get()));
    xdg_toplevel_set_fullscreen(toplevel_, nullptr);
    const bool fillsScreen = waitUntil([this] {
        client_.synchronise();
        return fillsScreen_;
    });
    if (!fillsScreen) {
        throw std::runtime_error("the window does not fill the screen");
    }
    pointer_.reset(wl_seat_get_pointer(seat_.get()));
    wl_pointer_add_listener(pointer_.get(), &Callbacks::pointerListener, this);
}

void TypingWindow::lockPointer() {
    lock_ = zwp_pointer_constraints_v1_lock_pointer(constraints_, surface_.get(), pointer_.get(), nullptr,
                                                    ZWP_POINTER_CONSTRAINTS_V1_LIFETIME_PERSISTENT);
    zwp_locked_pointer_v1_add_listener(lock_, &Callbacks::lock, this);
    if (!waitUntil([this] { return isPointerLocked(); })) {
        throw std::runtime_error("the pointer cannot be locked");
    }
}

bool TypingWindow::isPointerLocked() {
    client_.synchronise();
    return isPointerLocked_;
}

void TypingWindow::confinePointer() {
    confinement_ = zwp_pointer_constraints_v1_confine_pointer(constraints_, surface_.get(), pointer_.get(), nullptr,
                                                              ZWP_POINTER_CONSTRAINTS_V1_LIFETIME_PERSISTENT);
    zwp_confined_pointer_v1_add_listener(confinement_, &Callbacks::confinement, this);
    const bool isConfined = waitUntil([this] {
        client_.synchronise();
        return isPointerConfined_;
    });
    if (!isConfined) {
        throw std::runtime_error("the pointer cannot be confined");
    }
}

LayoutPoint TypingWindow::pointer() {
    client_.synchronise();
    return toldPointer_;
}

std::size_t TypingWindow::presses() {
    client_.synchronise();
    return presses_;
}

}  // namespace vantrel::desk
