#include "Vantrel/Backends/Wayland/KeyBindings.hpp"

#include <algorithm>
#include <span>

#include "Vantrel/Backends/Common/KeyPlaces.hpp"

namespace vantrel::wayland {

namespace {

std::span<const xkb_keysym_t> keysymsOf(xkb_keymap* keymap, xkb_keycode_t keycode, xkb_layout_index_t layout,
                                        xkb_level_index_t level) {
    const xkb_keysym_t* keysyms = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(keymap, keycode, layout, level, &keysyms);
    return {keysyms, static_cast<std::size_t>(std::max(count, 0))};
}

}  // namespace

std::uint32_t realModifiers(std::uint32_t carbonModifiers) {
    std::uint32_t modifiers = 0;
    modifiers |= (carbonModifiers & controlKey) != 0 ? controlModifier : 0;
    modifiers |= (carbonModifiers & optionKey) != 0 ? altModifier : 0;
    modifiers |= (carbonModifiers & shiftKey) != 0 ? shiftModifier : 0;
    modifiers |= (carbonModifiers & cmdKey) != 0 ? logoModifier : 0;
    return modifiers;
}

std::vector<xkb_keycode_t> keycodesAt(std::uint32_t virtualKeyCode, xkb_keymap* keymap) {
    std::vector<xkb_keycode_t> keycodes;
    for (const std::string_view name : backend::xkbNamesForVirtualKey(virtualKeyCode)) {
        const xkb_keycode_t keycode = xkb_keymap_key_by_name(keymap, std::string(name).c_str());
        if (keycode != XKB_KEYCODE_INVALID && std::find(keycodes.begin(), keycodes.end(), keycode) == keycodes.end()) {
            keycodes.push_back(keycode);
        }
    }
    return keycodes;
}

xkb_keysym_t firstKeysymOf(xkb_keycode_t keycode, xkb_keymap* keymap) {
    const auto keysyms = keysymsOf(keymap, keycode, 0, 0);
    return keysyms.empty() ? XKB_KEY_NoSymbol : keysyms.front();
}

bool isMeantBy(const ConfiguredBinding& binding, std::uint32_t modifiers, xkb_keycode_t keycode, xkb_keymap* keymap) {
    if (binding.keycode != 0) {
        return binding.keycode == keycode && binding.modifiers == modifiers;
    }
    // A symbol of a higher level has used up the Shift that leads to it.
    const std::uint32_t withoutShift = modifiers & ~shiftModifier;
    for (xkb_layout_index_t layout = 0; layout < xkb_keymap_num_layouts_for_key(keymap, keycode); ++layout) {
        for (xkb_level_index_t level = 0; level < xkb_keymap_num_levels_for_key(keymap, keycode, layout); ++level) {
            const auto keysyms = keysymsOf(keymap, keycode, layout, level);
            const bool fits = binding.modifiers == modifiers || (level > 0 && binding.modifiers == withoutShift);
            if (fits && std::find(keysyms.begin(), keysyms.end(), binding.keysym) != keysyms.end()) {
                return true;
            }
        }
    }
    return false;
}

}  // namespace vantrel::wayland
