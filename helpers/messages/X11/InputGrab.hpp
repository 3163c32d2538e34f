#pragma once

#include <xcb/xcb.h>

#include "helpers/messages/X11/Screen.hpp"

namespace vantrel::overlay {

/// Pointer and keyboard, taken for a menu while it is open.
class InputGrab {
  public:
    explicit InputGrab(const Screen& screen);
    ~InputGrab();
    InputGrab(const InputGrab&) = delete;
    InputGrab& operator=(const InputGrab&) = delete;

    /// Tries to take what is not taken yet; another program may hold it for as long as a button or a hot key is down.
    /// Returns whether both are taken. From then on their events come relative to the root window, through which they
    /// are taken: a window of the menu's own could not take them before it is seen.
    bool take();

  private:
    const Screen& screen_;
    xcb_font_t cursorFont_;
    xcb_cursor_t cursor_;
    bool hasPointer_ = false;
    bool hasKeyboard_ = false;
};

}  // namespace vantrel::overlay
