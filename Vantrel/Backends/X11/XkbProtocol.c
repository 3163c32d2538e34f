#include "Vantrel/Backends/X11/XkbProtocol.h"

#include <stdlib.h>
#include <string.h>
#include <xcb/xkb.h>

void vantrelXkbPrefetch(xcb_connection_t* connection) {
    xcb_prefetch_extension_data(connection, &xcb_xkb_id);
}

uint8_t vantrelXkbFirstEvent(xcb_connection_t* connection) {
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection, &xcb_xkb_id);
    return extension != NULL && extension->present ? extension->first_event : 0;
}

unsigned vantrelXkbSendUseExtension(xcb_connection_t* connection) {
    return xcb_xkb_use_extension(connection, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION).sequence;
}

bool vantrelXkbUseExtensionReply(xcb_connection_t* connection, unsigned sequence) {
    const xcb_xkb_use_extension_cookie_t cookie = {sequence};
    xcb_xkb_use_extension_reply_t* reply = xcb_xkb_use_extension_reply(connection, cookie, NULL);
    const bool supported = reply != NULL && reply->supported;
    free(reply);
    return supported;
}

unsigned vantrelXkbSendDetectableAutoRepeat(xcb_connection_t* connection) {
    const uint32_t flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    return xcb_xkb_per_client_flags(connection, XCB_XKB_ID_USE_CORE_KBD, flag, flag, 0, 0, 0).sequence;
}

bool vantrelXkbDetectableAutoRepeatReply(xcb_connection_t* connection, unsigned sequence) {
    const xcb_xkb_per_client_flags_cookie_t cookie = {sequence};
    xcb_xkb_per_client_flags_reply_t* reply = xcb_xkb_per_client_flags_reply(connection, cookie, NULL);
    const bool detectable = reply != NULL && (reply->value & XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT) != 0;
    free(reply);
    return detectable;
}

void vantrelXkbSetDetectableAutoRepeat(xcb_connection_t* connection, bool detectable) {
    const uint32_t flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const xcb_xkb_per_client_flags_cookie_t cookie =
        xcb_xkb_per_client_flags(connection, XCB_XKB_ID_USE_CORE_KBD, flag, detectable ? flag : 0, 0, 0, 0);
    xcb_discard_reply(connection, cookie.sequence);
}

void vantrelXkbSelectKeymapEvents(xcb_connection_t* connection) {
    const uint16_t events =
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_NAMES_NOTIFY;
    const uint16_t parts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    xcb_xkb_select_events(connection, XCB_XKB_ID_USE_CORE_KBD, events, 0, events, parts, parts, NULL);
}

unsigned vantrelXkbSendGetKeyNames(xcb_connection_t* connection) {
    return xcb_xkb_get_names(connection, XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_NAME_DETAIL_KEY_NAMES).sequence;
}

bool vantrelXkbGetKeyNamesReply(xcb_connection_t* connection, unsigned sequence, struct VantrelXkbKeyName names[256]) {
    const xcb_xkb_get_names_cookie_t cookie = {sequence};
    xcb_xkb_get_names_reply_t* reply = xcb_xkb_get_names_reply(connection, cookie, NULL);
    if (reply == NULL) {
        return false;
    }
    xcb_xkb_get_names_value_list_t values;
    memset(&values, 0, sizeof values);
    const void* buffer = xcb_xkb_get_names_value_list(reply);
    xcb_xkb_get_names_value_list_unpack(buffer, reply->nTypes, reply->indicators, reply->virtualMods, reply->groupNames,
                                        reply->nKeys, reply->nKeyAliases, reply->nRadioGroups, reply->which, &values);
    memset(names, 0, 256 * sizeof names[0]);
    for (unsigned index = 0; values.keyNames != NULL && index < reply->nKeys; ++index) {
        const unsigned keycode = reply->firstKey + index;
        if (keycode < 256) {
            memcpy(names[keycode].name, values.keyNames[index].name, sizeof names[keycode].name);
        }
    }
    free(reply);
    return true;
}
