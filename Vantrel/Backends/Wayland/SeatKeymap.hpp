#pragma once

#include <xkbcommon/xkbcommon.h>

#include <memory>

#include "Vantrel/Backends/Wayland/Seat.hpp"

namespace vantrel::wayland {

struct KeymapDeleter {
    void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
};
using KeymapPointer = std::unique_ptr<xkb_keymap, KeymapDeleter>;

/// The map of the seat's keyboard; the system's ordinary one where the seat has no keyboard at present. Null when the
/// compositor does not tell it until the deadline. Takes some milliseconds.
KeymapPointer readSeatKeymap(WaylandConnection& connection, const Seat& seat, Clock::time_point deadline);

}  // namespace vantrel::wayland
