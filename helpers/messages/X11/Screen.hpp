#pragma once

#include <xcb/xcb.h>

#include <memory>
#include <string_view>

#include "Vantrel/Backends/X11/XcbRequests.hpp"
#include "helpers/messages/Rect.hpp"

namespace vantrel::overlay {

/// The X screen that the overlay draws on.
class Screen {
  public:
    /// Connects to the display that DISPLAY names; null when it cannot.
    static std::unique_ptr<Screen> connect();
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    [[nodiscard]] xcb_connection_t* connection() const { return connection_; }
    [[nodiscard]] xcb_window_t root() const { return screen_->root; }
    [[nodiscard]] bool isLost() const { return xcb_connection_has_error(connection_) != 0; }

    /// Where the pointer is now.
    [[nodiscard]] Point pointer() const;

    /// The bounds of the monitor that holds the point, or of the nearest one.
    [[nodiscard]] Rect monitorAt(Point point) const;

    /// The visual with an alpha channel while a compositor runs, else the root window's.
    [[nodiscard]] x11::Visual popupVisual() const;

    /// The font resolution that the desktop asks for (Xft.dpi), else 96.
    [[nodiscard]] double dotsPerInch() const { return dotsPerInch_; }

    [[nodiscard]] xcb_atom_t atom(std::string_view name) const { return x11::internAtom(connection_, name); }

  private:
    Screen(xcb_connection_t* connection, xcb_screen_t* screen, int number);

    [[nodiscard]] bool isComposited() const;

    xcb_connection_t* connection_;
    xcb_screen_t* screen_;
    int number_;
    double dotsPerInch_;
};

}  // namespace vantrel::overlay
