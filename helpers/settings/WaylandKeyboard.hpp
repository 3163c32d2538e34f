#pragma once

#include <xkbcommon/xkbcommon.h>

#include <optional>

#include "helpers/settings/RecorderKeys.hpp"

namespace vantrel::qt {

/// The keyboard that a keymap describes. Wayland's keycodes, as Qt tells them, are those of an X server with evdev's
/// rules, and a keymap's real modifiers have the core protocol's bits.
RecorderKeyboard keyboardOf(xkb_keymap& keymap);

/// The keyboard of the compositor's seat, asked for on a connection of its own: some milliseconds. None when the
/// compositor does not tell it.
std::optional<RecorderKeyboard> readWaylandKeyboard();

}  // namespace vantrel::qt
