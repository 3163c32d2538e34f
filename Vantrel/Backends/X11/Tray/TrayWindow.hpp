#pragma once

#include <xcb/xcb.h>

#include <cstdint>

#include "Vantrel/Backends/X11/Tray/TrayIconImage.hpp"
#include "Vantrel/Backends/X11/X11Connection.hpp"

namespace vantrel::x11 {

/// The window that is embedded in a system tray.
class TrayWindow {
  public:
    enum class Change { none, pressed, embedded, resized, released };

    /// Makes the window and asks the tray's manager to embed it.
    TrayWindow(X11Connection& connection, xcb_window_t manager);
    ~TrayWindow();
    TrayWindow(const TrayWindow&) = delete;
    TrayWindow& operator=(const TrayWindow&) = delete;

    [[nodiscard]] bool isEmbedded() const { return parent_ != XCB_NONE; }

    /// Shows the item's drawing in the middle of what can be seen of the window.
    void paintIcon();

    /// What the event means for this window.
    Change handleEvent(const xcb_generic_event_t& event);

  private:
    static constexpr int firstSize = 24;

    [[nodiscard]] int visibleWidth() const;
    void createWindow(xcb_window_t manager);
    void askForSquare();
    void askToDock(xcb_window_t manager);
    Change reparented(xcb_window_t parent);
    Change configured(const xcb_configure_notify_event_t& event);
    TrayImage background();
    void setBackground(const TrayImage& image);

    X11Connection& connection_;
    xcb_window_t window_;
    xcb_colormap_t colormap_ = XCB_NONE;
    std::uint8_t depth_ = 0;
    xcb_window_t parent_ = XCB_NONE;
    int width_ = firstSize;
    int height_ = firstSize;
    int parentWidth_ = 0;
};

}  // namespace vantrel::x11
