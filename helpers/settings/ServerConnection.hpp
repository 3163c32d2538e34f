#pragma once

#include <xcb/xcb.h>

namespace vantrel::qt {

/// Qt's own connection to the X server; null on other windowing systems.
xcb_connection_t* serverConnection();

}  // namespace vantrel::qt
