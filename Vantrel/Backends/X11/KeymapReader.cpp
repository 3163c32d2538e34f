#include "Vantrel/Backends/X11/KeymapReader.hpp"

#include <cstddef>

#include "Vantrel/Backends/X11/XkbProtocol.h"

namespace vantrel::x11 {

Keymap readKeymap(xcb_connection_t* xcb) {
    const xcb_setup_t* setup = xcb_get_setup(xcb);
    const std::uint8_t firstKeycode = setup->min_keycode;
    const auto keycodeCount = static_cast<std::uint8_t>(setup->max_keycode - firstKeycode + 1);

    const unsigned names = vantrelXkbSendGetKeyNames(xcb);
    const auto mapping = xcb_get_keyboard_mapping(xcb, firstKeycode, keycodeCount);
    const auto modifiers = xcb_get_modifier_mapping(xcb);

    KeymapDescription description;
    description.firstKeycode = firstKeycode;
    const bool hasNames = vantrelXkbGetKeyNamesReply(xcb, names, description.names.data());
    const auto mappingReply = adopt(xcb_get_keyboard_mapping_reply(xcb, mapping, nullptr));
    const auto modifierReply = adopt(xcb_get_modifier_mapping_reply(xcb, modifiers, nullptr));
    if (!hasNames || !mappingReply || !modifierReply || modifierReply->keycodes_per_modifier == 0) {
        return {};
    }
    const xcb_keysym_t* keysyms = xcb_get_keyboard_mapping_keysyms(mappingReply.get());
    description.keysymsPerKeycode = mappingReply->keysyms_per_keycode;
    description.keysyms.assign(keysyms, keysyms + xcb_get_keyboard_mapping_keysyms_length(mappingReply.get()));
    const xcb_keycode_t* keycodes = xcb_get_modifier_mapping_keycodes(modifierReply.get());
    description.keycodesPerModifier = modifierReply->keycodes_per_modifier;
    description.modifierKeycodes.assign(keycodes,
                                        keycodes + xcb_get_modifier_mapping_keycodes_length(modifierReply.get()));
    return Keymap(description);
}

KeySet readHeldKeys(xcb_connection_t* xcb) {
    KeySet held;
    const auto reply = adopt(xcb_query_keymap_reply(xcb, xcb_query_keymap(xcb), nullptr));
    if (reply) {
        for (std::size_t keycode = 0; keycode < held.size(); ++keycode) {
            held.set(keycode, (reply->keys[keycode / 8] & (1U << (keycode % 8))) != 0);
        }
    }
    return held;
}

}  // namespace vantrel::x11
