#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/desk/support/XConnection.hpp"

namespace vantrel::desk {

/// A window as it stands on the screen, in root coordinates.
struct ScreenWindow {
    xcb_window_t identifier = XCB_NONE;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool isOverrideRedirect = false;
};

/// The windows of a class (WM_CLASS's first word) that can be seen, however deep they stand in others.
std::vector<ScreenWindow> visibleWindows(XConnection& connection, const std::string& className);

/// Whether there is a top-level window of the class, seen or not.
bool hasWindow(XConnection& connection, const std::string& className);

/// The number of rectangles in which the window takes the pointer.
int inputRectangles(XConnection& connection, xcb_window_t window);

/// Presses and releases a button of the mouse (XTEST).
void clickButton(XConnection& connection, int button);

/// Whether another client holds the keyboard, as an open menu does.
bool isKeyboardGrabbed(XConnection& connection);

/// Types the key with that keysym, for menus, which read keysyms.
void typeKeysym(XConnection& connection, std::uint32_t keysym);

}  // namespace vantrel::desk
