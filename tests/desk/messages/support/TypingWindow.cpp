#include "tests/desk/messages/support/TypingWindow.hpp"

#include <unistd.h>
#include <xdg-shell.h>

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
    static void key(void* data, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/, std::uint32_t /*time*/,
                    std::uint32_t /*key*/, std::uint32_t state) {
        self(data).presses_ += state == WL_KEYBOARD_KEY_STATE_PRESSED ? 1 : 0;
    }
    static void ping(void* /*data*/, xdg_wm_base* base, std::uint32_t serial) { xdg_wm_base_pong(base, serial); }
    static void configured(void* data, xdg_surface* window, std::uint32_t serial) {
        xdg_surface_ack_configure(window, serial);
        wl_surface_attach(self(data).surface_.get(), self(data).content_.get(), 0, 0);
        wl_surface_commit(self(data).surface_.get());
    }

    template <typename... Arguments>
    static void unused(void* /*data*/, Arguments... /*arguments*/) {}

    static constexpr wl_keyboard_listener keyboard{
        .keymap = keymap, .enter = enter, .leave = leave, .key = key, .modifiers = unused, .repeat_info = unused};
    static constexpr xdg_wm_base_listener baseListener{.ping = ping};
    static constexpr xdg_surface_listener windowListener{.configure = configured};
    // Newer protocols know of more events, which a window of this version never gets.
    static constexpr xdg_toplevel_listener toplevel = [] {
        xdg_toplevel_listener listener{};
        listener.configure = unused;
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

bool TypingWindow::hasKeyboard() {
    client_.synchronise();
    return hasKeyboard_;
}

std::size_t TypingWindow::presses() {
    client_.synchronise();
    return presses_;
}

}  // namespace vantrel::desk
