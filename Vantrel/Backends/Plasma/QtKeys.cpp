#include "Vantrel/Backends/Plasma/QtKeys.hpp"

#include <glib.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <array>
#include <optional>

#include "Vantrel/Platform/HotKeyServices.hpp"

namespace vantrel::plasma {

namespace {

// Qt::KeyboardModifier
constexpr QtKey qtShift = 0x02000000;
constexpr QtKey qtControl = 0x04000000;
constexpr QtKey qtAlt = 0x08000000;
constexpr QtKey qtMeta = 0x10000000;
constexpr QtKey qtKeypad = 0x20000000;

struct NamedKey {
    xkb_keysym_t keysym;
    QtKey key;  // Qt::Key
};
constexpr std::array namedKeys{NamedKey{XKB_KEY_Escape, 0x01000000},    NamedKey{XKB_KEY_Tab, 0x01000001},
                               NamedKey{XKB_KEY_BackSpace, 0x01000003}, NamedKey{XKB_KEY_Return, 0x01000004},
                               NamedKey{XKB_KEY_KP_Enter, 0x01000005},  NamedKey{XKB_KEY_Insert, 0x01000006},
                               NamedKey{XKB_KEY_Delete, 0x01000007},    NamedKey{XKB_KEY_Print, 0x01000009},
                               NamedKey{XKB_KEY_Clear, 0x0100000b},     NamedKey{XKB_KEY_Home, 0x01000010},
                               NamedKey{XKB_KEY_End, 0x01000011},       NamedKey{XKB_KEY_Left, 0x01000012},
                               NamedKey{XKB_KEY_Up, 0x01000013},        NamedKey{XKB_KEY_Right, 0x01000014},
                               NamedKey{XKB_KEY_Down, 0x01000015},      NamedKey{XKB_KEY_Prior, 0x01000016},
                               NamedKey{XKB_KEY_Next, 0x01000017},      NamedKey{XKB_KEY_Menu, 0x01000055},
                               NamedKey{XKB_KEY_Help, 0x01000058},      NamedKey{XKB_KEY_KP_Insert, 0x01000006},
                               NamedKey{XKB_KEY_KP_Delete, 0x01000007}, NamedKey{XKB_KEY_KP_Begin, 0x0100000b},
                               NamedKey{XKB_KEY_KP_Home, 0x01000010},   NamedKey{XKB_KEY_KP_End, 0x01000011},
                               NamedKey{XKB_KEY_KP_Left, 0x01000012},   NamedKey{XKB_KEY_KP_Up, 0x01000013},
                               NamedKey{XKB_KEY_KP_Right, 0x01000014},  NamedKey{XKB_KEY_KP_Down, 0x01000015},
                               NamedKey{XKB_KEY_KP_Prior, 0x01000016},  NamedKey{XKB_KEY_KP_Next, 0x01000017}};

bool isOnKeypad(xkb_keysym_t keysym) {
    return keysym >= XKB_KEY_KP_Space && keysym <= XKB_KEY_KP_Equal;
}

/// The Qt::Key of what is typed; letters in upper case.
std::optional<QtKey> keyOf(xkb_keysym_t keysym) {
    constexpr QtKey firstFunctionKey = 0x01000030;
    if (keysym >= XKB_KEY_F1 && keysym <= XKB_KEY_F35) {
        return firstFunctionKey + static_cast<QtKey>(keysym - XKB_KEY_F1);
    }
    const auto* const named = std::find_if(namedKeys.begin(), namedKeys.end(),
                                           [&](const NamedKey& candidate) { return candidate.keysym == keysym; });
    if (named != namedKeys.end()) {
        return named->key;
    }
    constexpr gunichar firstPrintable = 0x20;
    const gunichar character = xkb_keysym_to_utf32(keysym);
    return character < firstPrintable ? std::nullopt : std::optional(static_cast<QtKey>(g_unichar_toupper(character)));
}

xkb_keysym_t keysymAt(xkb_keymap* keymap, xkb_keycode_t keycode, xkb_layout_index_t layout, xkb_level_index_t level) {
    const xkb_keysym_t* keysyms = nullptr;
    return xkb_keymap_key_get_syms_by_level(keymap, keycode, layout, level, &keysyms) == 1 ? keysyms[0]
                                                                                           : XKB_KEY_NoSymbol;
}

/// All modifiers but Shift, which typing may use up.
QtKey modifiersBesideShift(std::uint32_t carbonModifiers) {
    QtKey modifiers = 0;
    modifiers |= (carbonModifiers & controlKey) != 0 ? qtControl : 0;
    modifiers |= (carbonModifiers & optionKey) != 0 ? qtAlt : 0;
    modifiers |= (carbonModifiers & cmdKey) != 0 ? qtMeta : 0;
    return modifiers;
}

}  // namespace

std::vector<QtKey> qtKeysOf(const std::vector<xkb_keycode_t>& keycodes, std::uint32_t carbonModifiers,
                            xkb_keymap* keymap) {
    std::vector<QtKey> keys;
    const QtKey modifiers = modifiersBesideShift(carbonModifiers);
    const bool withShift = (carbonModifiers & shiftKey) != 0;
    const auto add = [&](std::optional<QtKey> key, QtKey more) {
        if (key && std::find(keys.begin(), keys.end(), *key | modifiers | more) == keys.end()) {
            keys.push_back(*key | modifiers | more);
        }
    };
    for (const xkb_keycode_t keycode : keycodes) {
        for (xkb_layout_index_t layout = 0; layout < xkb_keymap_num_layouts_for_key(keymap, keycode); ++layout) {
            const xkb_keysym_t plain = keysymAt(keymap, keycode, layout, 0);
            const xkb_keysym_t shifted = keysymAt(keymap, keycode, layout, 1);
            if (isOnKeypad(plain)) {
                // Num Lock chooses what is typed, and Shift the other.
                add(keyOf(plain), qtKeypad);
                add(keyOf(shifted), qtKeypad);
            } else if (withShift && keyOf(shifted) && keyOf(shifted) != keyOf(plain)) {
                add(keyOf(shifted), 0);
            } else {
                add(keyOf(plain), withShift ? qtShift : 0);
            }
        }
    }
    return keys;
}

}  // namespace vantrel::plasma
