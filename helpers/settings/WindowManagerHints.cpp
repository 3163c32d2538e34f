#include "helpers/settings/WindowManagerHints.hpp"

#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>
#include <thread>

#include "Vantrel/Backends/X11/XcbRequests.hpp"
#include "helpers/settings/ServerConnection.hpp"

namespace vantrel::qt {

namespace {

constexpr std::uint32_t sourceIsPager = 2;

xcb_window_t root(xcb_connection_t* server) {
    return xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
}

/// The first value of a property of 32-bit values; none when there is no such property.
std::optional<std::uint32_t> property(xcb_connection_t* server, xcb_window_t window, xcb_atom_t name) {
    const auto cookie = xcb_get_property(server, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, 1);
    const auto reply = x11::adopt(xcb_get_property_reply(server, cookie, nullptr));
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) != sizeof(std::uint32_t)) {
        return std::nullopt;
    }
    return *static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
}

void askWindowManager(xcb_connection_t* server, xcb_window_t window, std::string_view message,
                      const std::array<std::uint32_t, 5>& data) {
    x11::sendClientMessage(server, root(server),
                           XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT, window,
                           x11::internAtom(server, message), data);
}

}  // namespace

void WindowManagerHints::waitUntilWithdrawn(QWidget& window) {
    xcb_connection_t* const server = serverConnection();
    if (server == nullptr || !window.testAttribute(Qt::WA_WState_Created)) {
        return;
    }
    constexpr std::uint32_t withdrawnState = 0;
    const auto id = static_cast<xcb_window_t>(window.winId());
    const xcb_atom_t state = x11::internAtom(server, "WM_STATE");
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(100);
    while (property(server, id, state).value_or(withdrawnState) != withdrawnState &&
           std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

void WindowManagerHints::skipTaskBar(QWidget& window) {
    xcb_connection_t* const server = serverConnection();
    if (server == nullptr) {
        return;
    }
    // Qt keeps what it finds in this property when it shows the window.
    const std::array<xcb_atom_t, 2> states{x11::internAtom(server, "_NET_WM_STATE_SKIP_TASKBAR"),
                                           x11::internAtom(server, "_NET_WM_STATE_SKIP_PAGER")};
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                        x11::internAtom(server, "_NET_WM_STATE"), XCB_ATOM_ATOM, 32, states.size(), states.data());
}

void WindowManagerHints::bringToFront(QWidget& window) {
    window.raise();
    window.activateWindow();
    xcb_connection_t* const server = serverConnection();
    if (server == nullptr) {
        return;
    }
    const auto id = static_cast<xcb_window_t>(window.winId());
    if (const auto desktop = property(server, root(server), x11::internAtom(server, "_NET_CURRENT_DESKTOP"))) {
        askWindowManager(server, id, "_NET_WM_DESKTOP", {*desktop, sourceIsPager});
    }
    askWindowManager(server, id, "_NET_ACTIVE_WINDOW", {sourceIsPager, XCB_CURRENT_TIME, XCB_NONE});
    xcb_flush(server);
}

}  // namespace vantrel::qt
