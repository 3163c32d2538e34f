#include "helpers/settings/ModifierKeys.hpp"

#include <xkbcommon/xkbcommon-x11.h>

#include <memory>

namespace vantrel::qt {

namespace {

template <auto unreference>
struct Unreference {
    template <typename Object>
    void operator()(Object* object) const {
        unreference(object);
    }
};

using Context = std::unique_ptr<xkb_context, Unreference<xkb_context_unref>>;
using KeymapPointer = std::unique_ptr<xkb_keymap, Unreference<xkb_keymap_unref>>;
using State = std::unique_ptr<xkb_state, Unreference<xkb_state_unref>>;

}  // namespace

std::uint32_t modifiersOfKey(xkb_keymap& keymap, xkb_keycode_t keycode, xkb_layout_index_t layout) {
    const State state(xkb_state_new(&keymap));
    xkb_state_update_mask(state.get(), 0, 0, 0, 0, 0, layout);
    xkb_state_update_key(state.get(), keycode, XKB_KEY_DOWN);
    return xkb_state_serialize_mods(state.get(), XKB_STATE_MODS_EFFECTIVE);
}

x11::KeySet modifierKeysOf(xkb_keymap& keymap) {
    x11::KeySet keys;
    for (std::size_t keycode = xkb_keymap_min_keycode(&keymap); keycode < keys.size(); ++keycode) {
        const auto key = static_cast<xkb_keycode_t>(keycode);
        for (xkb_layout_index_t layout = 0; layout < xkb_keymap_num_layouts_for_key(&keymap, key); ++layout) {
            if (modifiersOfKey(keymap, key, layout) != 0) {
                keys.set(keycode);
            }
        }
    }
    return keys;
}

x11::KeySet readModifierKeys(xcb_connection_t* connection) {
    const Context context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
    const KeymapPointer keymap(context ? xkb_x11_keymap_new_from_device(context.get(), connection,
                                                                        xkb_x11_get_core_keyboard_device_id(connection),
                                                                        XKB_KEYMAP_COMPILE_NO_FLAGS)
                                       : nullptr);
    return keymap ? modifierKeysOf(*keymap) : x11::KeySet();
}

}  // namespace vantrel::qt
