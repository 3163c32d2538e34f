#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/desk/support/XConnection.hpp"

namespace vantrel::desk {

/// What a task bar or pager of the desk would see and ask (Extended Window Manager Hints).
class WindowManagerProbe {
  public:
    explicit WindowManagerProbe(XConnection& connection) : connection_(connection) {}

    xcb_window_t activeWindow();
    std::uint32_t currentDesktop();
    std::uint32_t desktopOf(xcb_window_t window);
    std::string titleOf(xcb_window_t window);
    bool hasState(xcb_window_t window, std::string_view state);
    /// The widths of the pictures that the window brings for its title bar and the task list, in pixels. One without
    /// any gets one of 48 from the window manager.
    std::vector<std::uint32_t> iconWidths(xcb_window_t window);

    /// How light the window's pixel is at the place in it, from 0 (black) to 255.
    int lightnessAt(xcb_window_t window, std::int16_t x, std::int16_t y);

    /// x, y, width and height of the part of the root window that is free of panels.
    std::vector<std::uint32_t> workArea();

    /// Whether somebody publishes the desktop's settings (XSETTINGS protocol).
    bool hasSettingsManager();

    /// The windows at the front come last.
    std::vector<std::uint32_t> stackedWindows();

    void reserveLowerEdge(xcb_window_t window, std::uint32_t height);
    void showDesktop(std::uint32_t desktop);
    void closeWindow(xcb_window_t window);
    void activateWindow(xcb_window_t window);

    /// Where the window's content begins on the root window.
    std::pair<int, int> placeOf(xcb_window_t window);
    /// Moves it near that place, as a person would, and waits until it is there. Its place then.
    std::pair<int, int> moveWindow(xcb_window_t window, std::uint32_t x, std::uint32_t y);

  private:
    xcb_atom_t atom(std::string_view name);
    std::vector<std::uint32_t> property(xcb_window_t window, std::string_view name);
    void ask(xcb_window_t window, std::string_view message, std::uint32_t first);

    XConnection& connection_;
};

/// Another program's window, which can have the keyboard.
class OtherWindow {
  public:
    /// Shows a window and waits until it has the keyboard; throws when it does not get it.
    explicit OtherWindow(XConnection& connection);
    ~OtherWindow();
    OtherWindow(const OtherWindow&) = delete;
    OtherWindow& operator=(const OtherWindow&) = delete;

    [[nodiscard]] xcb_window_t id() const { return window_; }

    /// How many key presses arrived since it was last asked.
    int keyPresses();

  private:
    XConnection& connection_;
    xcb_window_t window_;
};

/// A panel along the lower edge of the desk, which window managers keep free of other windows.
class BottomPanel {
  public:
    /// Throws when the window manager does not make room for it.
    BottomPanel(XConnection& connection, std::uint32_t height);
    ~BottomPanel();
    BottomPanel(const BottomPanel&) = delete;
    BottomPanel& operator=(const BottomPanel&) = delete;

  private:
    XConnection& connection_;
    xcb_window_t window_;
};

/// Whether the keyboard can be grabbed, and so nobody else has it. Lets go of it at once.
bool keyboardIsFree(XConnection& connection);

}  // namespace vantrel::desk
