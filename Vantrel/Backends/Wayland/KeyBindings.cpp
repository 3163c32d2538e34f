#include "Vantrel/Backends/Wayland/KeyBindings.hpp"

#include <algorithm>
#include <array>
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

bool isLayoutSwitch(xkb_keysym_t keysym) {
    constexpr std::array switches{XKB_KEY_ISO_Next_Group, XKB_KEY_ISO_Prev_Group, XKB_KEY_ISO_First_Group,
                                  XKB_KEY_ISO_Last_Group};
    return std::find(switches.begin(), switches.end(), keysym) != switches.end();
}

bool canSwitchLayout(xkb_keymap* keymap, xkb_keycode_t keycode) {
    for (xkb_layout_index_t layout = 0; layout < xkb_keymap_num_layouts_for_key(keymap, keycode); ++layout) {
        for (xkb_level_index_t level = 0; level < xkb_keymap_num_levels_for_key(keymap, keycode, layout); ++level) {
            const auto keysyms = keysymsOf(keymap, keycode, layout, level);
            if (std::any_of(keysyms.begin(), keysyms.end(), isLayoutSwitch)) {
                return true;
            }
        }
    }
    return false;
}

std::uint32_t modifierOfKeysym(xkb_keysym_t keysym) {
    switch (keysym) {
        case XKB_KEY_Control_L:
        case XKB_KEY_Control_R:
            return controlModifier;
        case XKB_KEY_Alt_L:
        case XKB_KEY_Alt_R:
            return altModifier;
        case XKB_KEY_Shift_L:
        case XKB_KEY_Shift_R:
            return shiftModifier;
        case XKB_KEY_Super_L:
        case XKB_KEY_Super_R:
            return logoModifier;
        default:
            return 0;
    }
}

}  // namespace

std::vector<HidingKey> hidingKeys(xkb_keymap* keymap) {
    std::vector<HidingKey> keys;
    for (xkb_keycode_t keycode = xkb_keymap_min_keycode(keymap); keycode <= xkb_keymap_max_keycode(keymap); ++keycode) {
        const std::uint32_t modifier = modifierOfKeysym(firstKeysymOf(keycode, keymap));
        if (modifier != 0 && canSwitchLayout(keymap, keycode)) {
            keys.push_back({keycode, modifier});
        }
    }
    return keys;
}

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
