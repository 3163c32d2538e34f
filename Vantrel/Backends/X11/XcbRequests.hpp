#pragma once

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "Vantrel/Backends/X11/XcbHandles.hpp"

// What the agent and its helpers ask an X server for, each over a connection of its own. All but sendClientMessage()
// wait for the answer.
namespace vantrel::x11 {

/// The number of a named atom, made where it does not exist yet; XCB_ATOM_NONE when the connection is lost.
inline xcb_atom_t internAtom(xcb_connection_t* connection, std::string_view name) {
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const auto reply = adopt(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// The window that owns the selection; XCB_NONE when there is none.
inline xcb_window_t selectionOwner(xcb_connection_t* connection, xcb_atom_t selection) {
    const auto cookie = xcb_get_selection_owner(connection, selection);
    const auto reply = adopt(xcb_get_selection_owner_reply(connection, cookie, nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_NONE};
}

/// Sends a message about a window to the clients that have selected `events` of the destination; without events, to the
/// one that made it.
inline void sendClientMessage(xcb_connection_t* connection, xcb_window_t destination, std::uint32_t events,
                              xcb_window_t window, xcb_atom_t type, const std::array<std::uint32_t, 5>& data) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = type;
    std::copy(data.begin(), data.end(), std::begin(message.data.data32));
    xcb_send_event(connection, 0, destination, events, reinterpret_cast<const char*>(&message));
}

/// The screen of that number, else the last one; null when the server has none.
inline xcb_screen_t* screenOfNumber(xcb_connection_t* connection, int number) {
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; number > 0 && screens.rem > 1; --number) {
        xcb_screen_next(&screens);
    }
    return screens.rem > 0 ? screens.data : nullptr;
}

/// A visual of a screen, with its depth.
struct Visual {
    xcb_visualtype_t* type = nullptr;
    std::uint8_t depth = 0;
};

/// The first of the screen's visuals that is wanted; one without a type when none is. Waits for nothing.
template <typename IsWanted>
Visual findVisual(const xcb_screen_t& screen, IsWanted isWanted) {
    for (auto depths = xcb_screen_allowed_depths_iterator(&screen); depths.rem > 0; xcb_depth_next(&depths)) {
        for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem > 0; xcb_visualtype_next(&visuals)) {
            const Visual visual{.type = visuals.data, .depth = depths.data->depth};
            if (isWanted(visual)) {
                return visual;
            }
        }
    }
    return {};
}

}  // namespace vantrel::x11
