#pragma once

#include <xcb/xcb.h>

#include "Vantrel/Backends/X11/Keymap.hpp"
#include "Vantrel/Backends/X11/X11Connection.hpp"

namespace vantrel::x11 {

/// Reads the live keymap of the core keyboard: one blocking round trip. A keyboard without keys when the server is
/// gone. The connection uses the X keyboard extension already.
Keymap readKeymap(xcb_connection_t* connection);
inline Keymap readKeymap(const X11Connection& connection) {
    return readKeymap(connection.get());
}

/// The keys that are physically held at this moment: one blocking round trip.
KeySet readHeldKeys(xcb_connection_t* connection);
inline KeySet readHeldKeys(const X11Connection& connection) {
    return readHeldKeys(connection.get());
}

}  // namespace vantrel::x11
