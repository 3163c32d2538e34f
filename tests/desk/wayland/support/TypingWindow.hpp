#pragma once

#include <vector>

#include "tests/desk/wayland/support/SeatClient.hpp"
#include "tests/desk/wayland/support/WaylandClient.hpp"

struct xdg_popup;
struct xdg_surface;
struct xdg_toplevel;
struct xdg_wm_base;
struct zwp_confined_pointer_v1;
struct zwp_locked_pointer_v1;
struct zwp_pointer_constraints_v1;

namespace vantrel::desk {

/// A program's small window that a person types into, or a game's; its name is "typing".
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

    /// Opens a menu, as programs do when a key was pressed; waits until it is there.
    void openMenu();

    /// Holds the pointer where it is in a window that fills the screen, as games do, whenever the compositor lets it;
    /// waits until it does so.
    void lockPointer();
    /// Whether it holds it now.
    bool isPointerLocked();

    /// Fills the main display, which stands at the layout's origin.
    void fillScreen();
    /// Where the pointer is, as a window that fills the screen is told.
    LayoutPoint pointer();
    /// Keeps the pointer in a window that fills the screen, as games of strategy do; waits until it does so.
    void confinePointer();

  private:
    struct Callbacks;

    void offered(std::uint32_t name, std::string_view interface);
    void showItself();
    void paint(wl_surface& surface) const;

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
    wayland::WaylandPointer<wp_viewporter> viewporter_;
    wayland::WaylandPointer<wp_viewport> viewport_;  ///< of a window that fills the screen
    int width_ = 0;                                  ///< what the compositor wants; 0 while it does not care
    int height_ = 0;
    bool isFullScreen_ = false;  ///< as the compositor has it
    bool fillsScreen_ = false;
    wayland::WaylandPointer<wl_surface> menuSurface_;
    xdg_surface* menuWindow_ = nullptr;
    xdg_popup* menu_ = nullptr;
    bool isMenuOpen_ = false;
    std::uint32_t pressSerial_ = 0;
    wayland::WaylandPointer<wl_pointer> pointer_;  ///< of a window that fills the screen
    zwp_pointer_constraints_v1* constraints_ = nullptr;
    zwp_locked_pointer_v1* lock_ = nullptr;
    bool isPointerLocked_ = false;
    zwp_confined_pointer_v1* confinement_ = nullptr;
    bool isPointerConfined_ = false;
    LayoutPoint toldPointer_;
    bool hasKeyboard_ = false;
    std::size_t presses_ = 0;
};

}  // namespace vantrel::desk
