#include "helpers/messages/X11/Screen.hpp"

#include <xcb/randr.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>
#include <string_view>

#include "helpers/messages/Typesetter.hpp"

namespace vantrel::overlay {

namespace {

/// The value of Xft.dpi in the root window's resources.
double readDotsPerInch(xcb_connection_t* connection, xcb_window_t root) {
    const auto property = x11::adopt(xcb_get_property_reply(
        connection, xcb_get_property(connection, 0, root, XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 0, 65536),
        nullptr));
    if (!property) {
        return Typesetter::usualDotsPerInch;
    }
    const std::string resources(static_cast<const char*>(xcb_get_property_value(property.get())),
                                static_cast<std::size_t>(xcb_get_property_value_length(property.get())));
    constexpr std::string_view name = "Xft.dpi:";
    const auto found = resources.find(name);
    if (found == std::string::npos) {
        return Typesetter::usualDotsPerInch;
    }
    const auto start = std::min(resources.find_first_not_of(" \t", found + name.size()), resources.size());
    double value = 0;
    std::from_chars(resources.data() + start, resources.data() + resources.size(), value);
    return value >= 24 && value <= 1000 ? value : Typesetter::usualDotsPerInch;
}

/// How far the point is from the rectangle, in steps along the axes; 0 inside.
long distance(Point point, const Rect& rect) {
    const long dx = std::max({rect.x - point.x, point.x - (rect.x + rect.width - 1), 0});
    const long dy = std::max({rect.y - point.y, point.y - (rect.y + rect.height - 1), 0});
    return dx + dy;
}

}  // namespace

std::unique_ptr<Screen> Screen::connect() {
    int number = 0;
    xcb_connection_t* connection = xcb_connect(nullptr, &number);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    xcb_screen_t* const screen = x11::screenOfNumber(connection, number);
    return std::unique_ptr<Screen>(new Screen(connection, screen, number));  // NOLINT: private constructor
}

Screen::Screen(xcb_connection_t* connection, xcb_screen_t* screen, int number)
    : connection_(connection),
      screen_(screen),
      number_(number),
      dotsPerInch_(readDotsPerInch(connection, screen->root)) {}

Screen::~Screen() {
    xcb_disconnect(connection_);
}

Point Screen::pointer() const {
    const auto reply =
        x11::adopt(xcb_query_pointer_reply(connection_, xcb_query_pointer(connection_, root()), nullptr));
    return reply ? Point{.x = reply->root_x, .y = reply->root_y} : Point{};
}

Rect Screen::monitorAt(Point point) const {
    Rect nearest{.x = 0, .y = 0, .width = screen_->width_in_pixels, .height = screen_->height_in_pixels};
    const auto reply =
        x11::adopt(xcb_randr_get_monitors_reply(connection_, xcb_randr_get_monitors(connection_, root(), 1), nullptr));
    if (!reply) {
        return nearest;
    }
    long leastDistance = std::numeric_limits<long>::max();
    for (auto monitors = xcb_randr_get_monitors_monitors_iterator(reply.get()); monitors.rem > 0;
         xcb_randr_monitor_info_next(&monitors)) {
        const Rect bounds{.x = monitors.data->x,
                          .y = monitors.data->y,
                          .width = monitors.data->width,
                          .height = monitors.data->height};
        const long away = distance(point, bounds);
        // A part of a split display stands before the display that holds it.
        const bool isSmaller = away == leastDistance && bounds.width * bounds.height < nearest.width * nearest.height;
        if (away < leastDistance || isSmaller) {
            leastDistance = away;
            nearest = bounds;
        }
    }
    return nearest;
}

bool Screen::isComposited() const {
    return x11::selectionOwner(connection_, atom("_NET_WM_CM_S" + std::to_string(number_))) != XCB_NONE;
}

x11::Visual Screen::popupVisual() const {
    if (isComposited()) {
        const x11::Visual translucent = x11::findVisual(*screen_, [](const x11::Visual& visual) {
            return visual.depth == 32 && visual.type->_class == XCB_VISUAL_CLASS_TRUE_COLOR;
        });
        if (translucent.type != nullptr) {
            return translucent;
        }
    }
    return x11::findVisual(
        *screen_, [this](const x11::Visual& visual) { return visual.type->visual_id == screen_->root_visual; });
}

}  // namespace vantrel::overlay
