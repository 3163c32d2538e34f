#pragma once

#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <vector>

namespace vantrel::plasma {

/// A key with modifiers as Qt numbers them (Qt::Key and Qt::KeyboardModifier in one), which KGlobalAccel goes by.
using QtKey = std::int32_t;

/// Everything that KWin may make of a press of one of these keys with Carbon's modifiers, in any layout: it looks at
/// what the press types. Empty for keys that type nothing that Qt has a number for.
std::vector<QtKey> qtKeysOf(const std::vector<xkb_keycode_t>& keycodes, std::uint32_t carbonModifiers,
                            xkb_keymap* keymap);

}  // namespace vantrel::plasma
