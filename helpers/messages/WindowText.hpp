#pragma once

#include <xcb/xcb.h>

#include <string>

#include "helpers/messages/Screen.hpp"
#include "helpers/messages/Typesetter.hpp"

namespace vantrel::overlay {

/// Makes the item's drawing and the text the background of another program's window, if they fit into it. Returns the
/// width (pixels) that they need at the window's height; 0 when the window is gone.
int paintWindowText(const Screen& screen, const Typesetter& typesetter, xcb_window_t window, const std::string& text,
                    const Font& font);

}  // namespace vantrel::overlay
