#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <string>

#include "Vantrel/Backends/X11/XcbHandles.hpp"
#include "helpers/sound/XSettings.hpp"

namespace vantrel::desktop {
namespace {

struct Disconnector {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using Connection = std::unique_ptr<xcb_connection_t, Disconnector>;

xcb_atom_t atom(xcb_connection_t* connection, const std::string& name) {
    const auto cookie = xcb_intern_atom(connection, 1, static_cast<std::uint16_t>(name.size()), name.c_str());
    const auto reply = x11::adopt(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// The bytes of the property that the settings manager keeps; empty when there is none.
std::string publishedSettings(xcb_connection_t* connection, int screen) {
    constexpr std::uint32_t longest = 1U << 20U;  // in units of four bytes
    const xcb_atom_t selection = atom(connection, "_XSETTINGS_S" + std::to_string(screen));
    const xcb_atom_t property = atom(connection, "_XSETTINGS_SETTINGS");
    if (selection == XCB_ATOM_NONE || property == XCB_ATOM_NONE) {
        return {};
    }
    const auto owner =
        x11::adopt(xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, selection), nullptr));
    if (!owner || owner->owner == XCB_NONE) {
        return {};
    }
    const auto cookie = xcb_get_property(connection, 0, owner->owner, property, XCB_ATOM_ANY, 0, longest);
    const auto reply = x11::adopt(xcb_get_property_reply(connection, cookie, nullptr));
    if (!reply || reply->format != 8) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

}  // namespace

EventSoundSettings currentEventSoundSettings() {
    int screen = 0;
    const Connection connection(xcb_connect(nullptr, &screen));
    if (xcb_connection_has_error(connection.get()) != 0) {
        return {};
    }
    return eventSoundSettings(publishedSettings(connection.get(), screen));
}

}  // namespace vantrel::desktop
