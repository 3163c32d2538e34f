#include "Vantrel/Backends/X11/KeymapReader.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>

#include "Vantrel/Backends/X11/XkbProtocol.hpp"

namespace vantrel::x11 {

namespace {

using KeyNames = decltype(KeymapDescription::names);

std::optional<KeyNames> readKeyNames(xcb_connection_t* xcb, xcb_xkb_get_names_cookie_t cookie) {
    const auto reply = adopt(xcb_xkb_get_names_reply(xcb, cookie, nullptr));
    if (!reply) {
        return std::nullopt;
    }
    xcb_xkb_get_names_value_list_t values{};
    xcb_xkb_get_names_value_list_unpack(xcb_xkb_get_names_value_list(reply.get()), reply->nTypes, reply->indicators,
                                        reply->virtualMods, reply->groupNames, reply->nKeys, reply->nKeyAliases,
                                        reply->nRadioGroups, reply->which, &values);
    KeyNames names{};
    const std::size_t end = std::min<std::size_t>(names.size(), std::size_t{reply->firstKey} + reply->nKeys);
    for (std::size_t keycode = reply->firstKey; values.keyNames != nullptr && keycode < end; ++keycode) {
        const auto& name = values.keyNames[keycode - reply->firstKey].name;
        std::copy(std::begin(name), std::end(name), names[keycode].begin());
    }
    return names;
}

}  // namespace

Keymap readKeymap(xcb_connection_t* xcb) {
    const xcb_setup_t* setup = xcb_get_setup(xcb);
    const std::uint8_t firstKeycode = setup->min_keycode;
    const auto keycodeCount = static_cast<std::uint8_t>(setup->max_keycode - firstKeycode + 1);

    const auto names = xcb_xkb_get_names(xcb, XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_NAME_DETAIL_KEY_NAMES);
    const auto mapping = xcb_get_keyboard_mapping(xcb, firstKeycode, keycodeCount);
    const auto modifiers = xcb_get_modifier_mapping(xcb);

    const auto keyNames = readKeyNames(xcb, names);
    const auto mappingReply = adopt(xcb_get_keyboard_mapping_reply(xcb, mapping, nullptr));
    const auto modifierReply = adopt(xcb_get_modifier_mapping_reply(xcb, modifiers, nullptr));
    if (!keyNames || !mappingReply || !modifierReply || modifierReply->keycodes_per_modifier == 0) {
        return {};
    }
    KeymapDescription description;
    description.names = *keyNames;
    description.firstKeycode = firstKeycode;
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
