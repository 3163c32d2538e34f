#pragma once

#include <xcb/xcb.h>

#include <cstdint>

// A field of libxcb's header has the name of a C++ keyword.
#pragma GCC diagnostic push
#ifdef __clang__
#pragma GCC diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicitComponents
#include <xcb/xkb.h>
#undef explicit
#pragma GCC diagnostic pop

namespace vantrel::x11 {

/// The first event number of the X keyboard extension; 0 when the server lacks it.
inline std::uint8_t xkbFirstEvent(xcb_connection_t* connection) {
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection, &xcb_xkb_id);
    return extension != nullptr && extension->present != 0 ? extension->first_event : std::uint8_t{0};
}

/// Whether a held key sends presses only, and its release when it is really let go. Waits for nothing.
inline void setDetectableAutoRepeat(xcb_connection_t* connection, bool isWanted) {
    constexpr std::uint32_t flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto cookie =
        xcb_xkb_per_client_flags(connection, XCB_XKB_ID_USE_CORE_KBD, flag, isWanted ? flag : 0, 0, 0, 0);
    xcb_discard_reply(connection, cookie.sequence);
}

}  // namespace vantrel::x11
