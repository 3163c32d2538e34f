#pragma once

#include <xkbcommon/xkbcommon.h>

#include <string>
#include <vector>

#include "Vantrel/Backends/Common/HotKeyBinder.hpp"

namespace vantrel::gnome {

/// What GNOME Shell has to catch for the combination, as it reads accelerators: by keycodes, which are places, so that
/// no layout matters. Where a modifier key switches the layouts when it is pressed after another one, the press may
/// lack its modifier: then the same without that one, too. Empty when the keyboard has no such key.
std::vector<std::string> acceleratorsOf(const backend::KeyCombination& combination, xkb_keymap* keymap);

}  // namespace vantrel::gnome
