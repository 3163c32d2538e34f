#pragma once

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

#include <cstdint>

#include "Vantrel/Backends/X11/Keymap.hpp"

namespace vantrel::qt {

/// The modifiers that the key, pressed alone in that layout, holds, latches or locks: a mask by the keymap's numbers.
std::uint32_t modifiersOfKey(xkb_keymap& keymap, xkb_keycode_t keycode, xkb_layout_index_t layout);

/// The keys that are modifiers on a keyboard by what they do: pressed alone, in any of its layouts, they hold, latch or
/// lock a modifier. The core protocol's modifier map lacks many of them, such as the AltGr of most layouts.
x11::KeySet modifierKeysOf(xkb_keymap& keymap);

/// The same of the live keymap of the core keyboard: a few blocking round trips. None when it cannot be read. The
/// connection uses the X keyboard extension already.
x11::KeySet readModifierKeys(xcb_connection_t* connection);

}  // namespace vantrel::qt
