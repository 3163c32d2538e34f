#pragma once

#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <string>
#include <vector>

#include "Vantrel/Backends/Common/HotKeyBinder.hpp"

namespace vantrel::wayland {

// Bits of a binding's modifiers: XKB's real modifiers, with what they are on an ordinary keyboard.
inline constexpr std::uint32_t shiftModifier = 1U << 0U;
inline constexpr std::uint32_t capsModifier = 1U << 1U;
inline constexpr std::uint32_t controlModifier = 1U << 2U;
inline constexpr std::uint32_t altModifier = 1U << 3U;
inline constexpr std::uint32_t numModifier = 1U << 4U;
inline constexpr std::uint32_t mod3Modifier = 1U << 5U;
inline constexpr std::uint32_t logoModifier = 1U << 6U;
inline constexpr std::uint32_t mod5Modifier = 1U << 7U;

/// A key with modifiers that a person's configuration binds.
struct ConfiguredBinding {
    std::string mode;             ///< the compositor's, in which it counts
    std::uint32_t modifiers = 0;  ///< without the locks
    /// By place (bindcode), or by symbol (bindsym) where it is 0.
    xkb_keycode_t keycode = 0;
    xkb_keysym_t keysym = XKB_KEY_NoSymbol;

    bool operator==(const ConfiguredBinding&) const = default;
};

/// Carbon's four modifiers as these bits.
std::uint32_t realModifiers(std::uint32_t carbonModifiers);

/// The keycodes of a place on that keyboard; empty when it has no such key.
std::vector<xkb_keycode_t> keycodesAt(std::uint32_t virtualKeyCode, xkb_keymap* keymap);

/// A modifier key that, pressed after another one, switches the layout instead of setting its modifier, as with the
/// option grp:alt_shift_toggle.
struct HidingKey {
    xkb_keycode_t keycode = 0;
    std::uint32_t modifier = 0;
};
std::vector<HidingKey> hidingKeys(xkb_keymap* keymap);

/// What the key types in the first layout, without modifiers; XKB_KEY_NoSymbol for nothing.
xkb_keysym_t firstKeysymOf(xkb_keycode_t keycode, xkb_keymap* keymap);

/// Whether the binding is meant when that key is pressed with these modifiers, in any of the keyboard's layouts.
bool isMeantBy(const ConfiguredBinding& binding, std::uint32_t modifiers, xkb_keycode_t keycode, xkb_keymap* keymap);

}  // namespace vantrel::wayland
