#pragma once

#include <functional>
#include <string>

#include "helpers/messages/CairoHandles.hpp"
#include "helpers/messages/X11/Screen.hpp"

namespace vantrel::overlay {

/// A window without a frame above all others, which the window manager leaves alone and which never gets the focus.
/// Its contents are kept by the server, so it needs no repainting.
class PopupWindow {
  public:
    enum class Input { none, pointer };

    /// `type` is the kind of window for compositors, e.g. "_NET_WM_WINDOW_TYPE_NOTIFICATION". With Input::none clicks
    /// go to what lies below.
    PopupWindow(const Screen& screen, const std::string& title, const std::string& type, Input input);
    ~PopupWindow();
    PopupWindow(const PopupWindow&) = delete;
    PopupWindow& operator=(const PopupWindow&) = delete;

    [[nodiscard]] bool hasAlpha() const { return visual_.depth == 32; }

    /// Gives the window the bounds, corners of that radius, and what `draw` draws.
    void place(const Rect& bounds, int cornerRadius, const std::function<void(cairo_t*)>& draw);
    void show();

  private:
    void setShape(const Rect& bounds, int cornerRadius);

    const Screen& screen_;
    x11::Visual visual_;
    xcb_colormap_t colormap_;
    xcb_window_t window_;
};

}  // namespace vantrel::overlay
