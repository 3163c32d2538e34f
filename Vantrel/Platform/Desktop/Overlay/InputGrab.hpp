#pragma once

#include <xcb/xcb.h>

#include "Vantrel/Platform/Desktop/Overlay/Screen.hpp"

namespace vantrel::overlay {

/// Pointer and keyboard, taken for a menu while it is open.
class InputGrab {
  public:
    InputGrab(const Screen& screen, xcb_window_t window);
    ~InputGrab();
    InputGrab(const InputGrab&) = delete;
    InputGrab& operator=(const InputGrab&) = delete;

    /// Tries to take what is not taken yet; another program may hold it for as long as a button or a hot key is down.
    /// Returns whether both are taken.
    bool take();

  private:
    const Screen& screen_;
    xcb_window_t window_;
    xcb_font_t cursorFont_;
    xcb_cursor_t cursor_;
    bool hasPointer_ = false;
    bool hasKeyboard_ = false;
};

}  // namespace vantrel::overlay
