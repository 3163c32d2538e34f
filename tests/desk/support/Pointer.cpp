#include "tests/desk/support/Pointer.hpp"

#include <xcb/xtest.h>

#include <cstdint>
#include <stdexcept>

namespace vantrel::desk {

MainPoint Pointer::position() {
    const XReply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(connection_.get(), xcb_query_pointer(connection_.get(), connection_.root()), nullptr));
    if (!reply) {
        throw std::runtime_error("the pointer cannot be read: the X server is gone");
    }
    return layout_.toMain({.x = reply->root_x, .y = reply->root_y});
}

void Pointer::moveTo(MainPoint point, Duration deadline) {
    const auto target = layout_.toRoot(point);
    xcb_test_fake_input(connection_.get(), XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, connection_.root(),
                        static_cast<std::int16_t>(target.x), static_cast<std::int16_t>(target.y), 0);
    connection_.synchronise();
    if (!waitFor(point, deadline)) {
        throw std::runtime_error("the pointer does not go where the mouse is moved");
    }
}

bool Pointer::waitFor(MainPoint point, Duration deadline) {
    return waitUntil([&] { return position() == point; }, deadline);
}

bool Pointer::staysAt(MainPoint point, Duration time) {
    return !waitUntil([&] { return position() != point; }, time);
}

bool Pointer::catchDeparture(MainPoint point, Duration deadline) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (position() == point) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
    }
    return true;
}

}  // namespace vantrel::desk
