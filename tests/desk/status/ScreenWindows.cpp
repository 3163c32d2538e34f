#include "tests/desk/status/ScreenWindows.hpp"

#include <xcb/shape.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <cstdint>
#include <span>
#include <stdexcept>

namespace vantrel::desk {

namespace {

std::string classOf(XConnection& connection, xcb_window_t window) {
    const XReply<xcb_get_property_reply_t> property(xcb_get_property_reply(
        connection.get(), xcb_get_property(connection.get(), 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 64),
        nullptr));
    if (!property) {
        return {};
    }
    const std::string value(static_cast<const char*>(xcb_get_property_value(property.get())),
                            static_cast<std::size_t>(xcb_get_property_value_length(property.get())));
    return value.substr(0, value.find('\0'));
}

std::vector<xcb_window_t> childrenOf(XConnection& connection, xcb_window_t window) {
    const XReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection.get(), xcb_query_tree(connection.get(), window), nullptr));
    if (!tree) {
        return {};
    }
    const std::span children(xcb_query_tree_children(tree.get()),
                             static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())));
    return {children.begin(), children.end()};
}

void collect(XConnection& connection, xcb_window_t window, const std::string& className,
             std::vector<ScreenWindow>& found) {
    const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        connection.get(), xcb_get_window_attributes(connection.get(), window), nullptr));
    if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE && classOf(connection, window) == className) {
        const XReply<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(connection.get(), xcb_get_geometry(connection.get(), window), nullptr));
        const XReply<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
            connection.get(), xcb_translate_coordinates(connection.get(), window, connection.root(), 0, 0), nullptr));
        if (geometry && place) {
            found.push_back({.identifier = window,
                             .x = place->dst_x,
                             .y = place->dst_y,
                             .width = geometry->width,
                             .height = geometry->height,
                             .isOverrideRedirect = attributes->override_redirect != 0});
        }
    }
    for (const xcb_window_t child : childrenOf(connection, window)) {
        collect(connection, child, className, found);
    }
}

void sendKey(XConnection& connection, xcb_keycode_t keycode) {
    for (const auto type : {std::uint8_t{XCB_KEY_PRESS}, std::uint8_t{XCB_KEY_RELEASE}}) {
        xcb_test_fake_input(connection.get(), type, keycode, XCB_CURRENT_TIME, connection.root(), 0, 0, 0);
    }
    connection.synchronise();
}

}  // namespace

std::vector<ScreenWindow> visibleWindows(XConnection& connection, const std::string& className) {
    std::vector<ScreenWindow> found;
    collect(connection, connection.root(), className, found);
    return found;
}

bool hasWindow(XConnection& connection, const std::string& className) {
    const std::vector<xcb_window_t> windows = childrenOf(connection, connection.root());
    return std::any_of(windows.begin(), windows.end(),
                       [&](xcb_window_t window) { return classOf(connection, window) == className; });
}

int inputRectangles(XConnection& connection, xcb_window_t window) {
    const XReply<xcb_shape_get_rectangles_reply_t> reply(xcb_shape_get_rectangles_reply(
        connection.get(), xcb_shape_get_rectangles(connection.get(), window, XCB_SHAPE_SK_INPUT), nullptr));
    if (!reply) {
        throw std::runtime_error("the window's shape cannot be read");
    }
    return xcb_shape_get_rectangles_rectangles_length(reply.get());
}

void clickButton(XConnection& connection, int button) {
    for (const auto type : {std::uint8_t{XCB_BUTTON_PRESS}, std::uint8_t{XCB_BUTTON_RELEASE}}) {
        xcb_test_fake_input(connection.get(), type, static_cast<std::uint8_t>(button), XCB_CURRENT_TIME,
                            connection.root(), 0, 0, 0);
    }
    connection.synchronise();
}

bool isKeyboardGrabbed(XConnection& connection) {
    const XReply<xcb_grab_keyboard_reply_t> reply(
        xcb_grab_keyboard_reply(connection.get(),
                                xcb_grab_keyboard(connection.get(), 0, connection.root(), XCB_CURRENT_TIME,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
    if (reply && reply->status == XCB_GRAB_STATUS_SUCCESS) {
        xcb_ungrab_keyboard(connection.get(), XCB_CURRENT_TIME);
        connection.synchronise();
        return false;
    }
    return true;
}

void typeKeysym(XConnection& connection, std::uint32_t keysym) {
    const xcb_setup_t* setup = xcb_get_setup(connection.get());
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const XReply<xcb_get_keyboard_mapping_reply_t> map(xcb_get_keyboard_mapping_reply(
        connection.get(), xcb_get_keyboard_mapping(connection.get(), setup->min_keycode, count), nullptr));
    const xcb_keysym_t* keysyms = map ? xcb_get_keyboard_mapping_keysyms(map.get()) : nullptr;
    for (int index = 0; keysyms != nullptr && index < count; ++index) {
        if (keysyms[index * map->keysyms_per_keycode] == keysym) {
            sendKey(connection, static_cast<xcb_keycode_t>(setup->min_keycode + index));
            return;
        }
    }
    throw std::runtime_error("no key has the keysym");
}

}  // namespace vantrel::desk
