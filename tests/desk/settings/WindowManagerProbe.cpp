#include "tests/desk/settings/WindowManagerProbe.hpp"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "tests/desk/support/Wait.hpp"

namespace vantrel::desk {

namespace {

constexpr std::uint32_t sourceIsPager = 2;

}  // namespace

std::pair<int, int> WindowManagerProbe::placeOf(xcb_window_t window) {
    const XReply<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
        connection_.get(), xcb_translate_coordinates(connection_.get(), window, connection_.root(), 0, 0), nullptr));
    return place ? std::pair<int, int>(place->dst_x, place->dst_y) : std::pair(-1, -1);
}

std::pair<int, int> WindowManagerProbe::moveWindow(xcb_window_t window, std::uint32_t x, std::uint32_t y) {
    const auto before = placeOf(window);
    const std::array<std::uint32_t, 2> place{x, y};
    xcb_configure_window(connection_.get(), window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, place.data());
    connection_.synchronise();
    if (!waitUntil([&] { return placeOf(window) != before; })) {
        throw std::runtime_error("the window manager does not move the window");
    }
    return placeOf(window);
}

xcb_atom_t WindowManagerProbe::atom(std::string_view name) {
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection_.get(), xcb_intern_atom(connection_.get(), 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply->atom;
}

std::vector<std::uint32_t> WindowManagerProbe::property(xcb_window_t window, std::string_view name) {
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection_.get(),
        xcb_get_property(connection_.get(), 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 1 << 20), nullptr));
    if (!reply || reply->format != 32) {
        return {};
    }
    const auto* const values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {values, values + reply->value_len};
}

void WindowManagerProbe::ask(xcb_window_t window, std::string_view message, std::uint32_t first) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(message);
    event.data.data32[0] = first;
    event.data.data32[1] = message == "_NET_CLOSE_WINDOW" ? sourceIsPager : 0;
    xcb_send_event(connection_.get(), 0, connection_.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&event));
    connection_.synchronise();
}

xcb_window_t WindowManagerProbe::activeWindow() {
    const auto values = property(connection_.root(), "_NET_ACTIVE_WINDOW");
    return values.empty() ? xcb_window_t{XCB_NONE} : values.front();
}

std::uint32_t WindowManagerProbe::currentDesktop() {
    const auto values = property(connection_.root(), "_NET_CURRENT_DESKTOP");
    return values.empty() ? 0 : values.front();
}

std::uint32_t WindowManagerProbe::desktopOf(xcb_window_t window) {
    const auto values = property(window, "_NET_WM_DESKTOP");
    return values.empty() ? 0 : values.front();
}

std::string WindowManagerProbe::titleOf(xcb_window_t window) {
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection_.get(),
        xcb_get_property(connection_.get(), 0, window, atom("_NET_WM_NAME"), atom("UTF8_STRING"), 0, 1024), nullptr));
    if (!reply) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
}

bool WindowManagerProbe::hasState(xcb_window_t window, std::string_view state) {
    const auto states = property(window, "_NET_WM_STATE");
    return std::find(states.begin(), states.end(), atom(state)) != states.end();
}

std::vector<std::uint32_t> WindowManagerProbe::iconWidths(xcb_window_t window) {
    const auto pictures = property(window, "_NET_WM_ICON");
    std::vector<std::uint32_t> widths;
    for (std::size_t start = 0; start + 1 < pictures.size(); start += 2 + pictures[start] * pictures[start + 1]) {
        widths.push_back(pictures[start]);
    }
    return widths;
}

std::vector<std::uint32_t> WindowManagerProbe::stackedWindows() {
    return property(connection_.root(), "_NET_CLIENT_LIST_STACKING");
}

int WindowManagerProbe::lightnessAt(xcb_window_t window, std::int16_t x, std::int16_t y) {
    const XReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(
        connection_.get(),
        xcb_get_image(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, x, y, 1, 1, ~std::uint32_t{0}), nullptr));
    if (!reply || xcb_get_image_data_length(reply.get()) < 3) {
        throw std::runtime_error("the window has no such pixel");
    }
    const std::uint8_t* const channels = xcb_get_image_data(reply.get());
    return (channels[0] + channels[1] + channels[2]) / 3;
}

std::vector<std::uint32_t> WindowManagerProbe::workArea() {
    auto areas = property(connection_.root(), "_NET_WORKAREA");
    // One for each workspace.
    areas.resize(std::min<std::size_t>(areas.size(), 4));
    return areas;
}

bool WindowManagerProbe::hasSettingsManager() {
    const XReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection_.get(), xcb_get_selection_owner(connection_.get(), atom("_XSETTINGS_S0")), nullptr));
    return reply && reply->owner != XCB_NONE;
}

void WindowManagerProbe::reserveLowerEdge(xcb_window_t window, std::uint32_t height) {
    const std::array<xcb_atom_t, 1> type{atom("_NET_WM_WINDOW_TYPE_DOCK")};
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window, atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM,
                        32, type.size(), type.data());
    const std::array<std::uint32_t, 4> leftRightTopBottom{0, 0, 0, height};
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window, atom("_NET_WM_STRUT"), XCB_ATOM_CARDINAL, 32,
                        leftRightTopBottom.size(), leftRightTopBottom.data());
}

void WindowManagerProbe::showDesktop(std::uint32_t desktop) {
    ask(connection_.root(), "_NET_CURRENT_DESKTOP", desktop);
    if (!waitUntil([&] { return currentDesktop() == desktop; })) {
        throw std::runtime_error("the window manager does not show the other workspace");
    }
}

void WindowManagerProbe::closeWindow(xcb_window_t window) {
    ask(window, "_NET_CLOSE_WINDOW", XCB_CURRENT_TIME);
}

void WindowManagerProbe::activateWindow(xcb_window_t window) {
    ask(window, "_NET_ACTIVE_WINDOW", sourceIsPager);
}

OtherWindow::OtherWindow(XConnection& connection)
    : connection_(connection), window_(xcb_generate_id(connection.get())) {
    const std::array<std::uint32_t, 1> values{XCB_EVENT_MASK_KEY_PRESS};
    xcb_create_window(connection_.get(), XCB_COPY_FROM_PARENT, window_, connection_.root(), 0, 0, 200, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, values.data());
    xcb_map_window(connection_.get(), window_);
    connection_.synchronise();
    WindowManagerProbe windowManager(connection_);
    windowManager.activateWindow(window_);
    if (!waitUntil([&] { return windowManager.activeWindow() == window_; })) {
        throw std::runtime_error("the other window does not get the keyboard");
    }
}

OtherWindow::~OtherWindow() {
    xcb_destroy_window(connection_.get(), window_);
    xcb_flush(connection_.get());
}

int OtherWindow::keyPresses() {
    connection_.synchronise();
    int presses = 0;
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
        presses += (event->response_type & 0x7FU) == XCB_KEY_PRESS ? 1 : 0;
    }
    return presses;
}

BottomPanel::BottomPanel(XConnection& connection, std::uint32_t height)
    : connection_(connection), window_(xcb_generate_id(connection.get())) {
    xcb_create_window(connection_.get(), XCB_COPY_FROM_PARENT, window_, connection_.root(), 0, 0, 100,
                      static_cast<std::uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0,
                      nullptr);
    WindowManagerProbe windowManager(connection_);
    const auto before = windowManager.workArea();
    windowManager.reserveLowerEdge(window_, height);
    xcb_map_window(connection_.get(), window_);
    connection_.synchronise();
    if (!waitUntil([&] { return windowManager.workArea() != before; })) {
        throw std::runtime_error("the window manager makes no room for the panel");
    }
}

BottomPanel::~BottomPanel() {
    xcb_destroy_window(connection_.get(), window_);
    xcb_flush(connection_.get());
}

bool keyboardIsFree(XConnection& connection) {
    const XReply<xcb_grab_keyboard_reply_t> reply(
        xcb_grab_keyboard_reply(connection.get(),
                                xcb_grab_keyboard(connection.get(), 0, connection.root(), XCB_CURRENT_TIME,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
    const bool isFree = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    if (isFree) {
        xcb_ungrab_keyboard(connection.get(), XCB_CURRENT_TIME);
        connection.synchronise();
    }
    return isFree;
}

}  // namespace vantrel::desk
