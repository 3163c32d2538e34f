#pragma once

#include <vector>

#include "tests/desk/messages/support/WaylandClient.hpp"

struct xdg_surface;
struct xdg_toplevel;
struct xdg_wm_base;

namespace vantrel::desk {

/// A program's small window that a person types into; its name is "typing".
class TypingWindow {
  public:
    static constexpr std::uint32_t color = 0x336699;

    /// Shows itself, and waits until it has the keyboard; it may be seen a little later.
    explicit TypingWindow(const std::filesystem::path& socket);
    ~TypingWindow();
    TypingWindow(const TypingWindow&) = delete;
    TypingWindow& operator=(const TypingWindow&) = delete;

    /// Whether what is typed comes here.
    bool hasKeyboard();
    /// How many keys were pressed here up to now.
    std::size_t presses();

  private:
    struct Callbacks;

    void offered(std::uint32_t name, std::string_view interface);
    void showItself();

    WaylandClient client_;
    wayland::WaylandPointer<wl_compositor> compositor_;
    wayland::WaylandPointer<wl_shm> shm_;
    wayland::WaylandPointer<wl_seat> seat_;
    wayland::WaylandPointer<wl_keyboard> keyboard_;
    wayland::WaylandPointer<wl_surface> surface_;
    wayland::WaylandPointer<wl_buffer> content_;
    xdg_wm_base* base_ = nullptr;
    xdg_surface* window_ = nullptr;
    xdg_toplevel* toplevel_ = nullptr;
    bool hasKeyboard_ = false;
    std::size_t presses_ = 0;
};

}  // namespace vantrel::desk
