#include "tests/desk/support/PointerTrace.hpp"

#include <poll.h>

#include <cstdint>
#include <stdexcept>

namespace vantrel::desk {

using Clock = std::chrono::steady_clock;

PointerTrace::PointerTrace(const std::string& displayName, const DisplayLayout& layout)
    : connection_(displayName), layout_(layout) {
    const std::uint32_t events = XCB_EVENT_MASK_POINTER_MOTION;
    xcb_change_window_attributes(connection_.get(), connection_.root(), XCB_CW_EVENT_MASK, &events);
    connection_.synchronise();
}

bool PointerTrace::takeEvent() {
    const XReply<xcb_generic_event_t> event(xcb_poll_for_event(connection_.get()));
    if (!event) {
        return false;
    }
    if ((event->response_type & 0x7fU) == XCB_MOTION_NOTIFY) {
        const auto* const motion = reinterpret_cast<const xcb_motion_notify_event_t*>(event.get());
        moves_.push_back({.to = layout_.toMain({.x = motion->root_x, .y = motion->root_y}), .seen = Clock::now()});
    }
    return true;
}

void PointerTrace::takeEvents() {
    connection_.synchronise();
    while (takeEvent()) {
    }
}

void PointerTrace::forget() {
    takeEvents();
    moves_.clear();
}

bool PointerTrace::waitForMove(Duration deadline) {
    const auto end = Clock::now() + deadline;
    const auto count = moves_.size();
    while (true) {
        while (takeEvent()) {
            if (moves_.size() > count) {
                return true;
            }
        }
        if (xcb_connection_has_error(connection_.get()) != 0) {
            throw std::runtime_error("the pointer cannot be watched: the X server is gone");
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
        if (left <= 0) {
            return false;
        }
        pollfd socket{.fd = xcb_get_file_descriptor(connection_.get()), .events = POLLIN, .revents = 0};
        poll(&socket, 1, static_cast<int>(left));
    }
}

bool PointerTrace::waitForMoves(std::size_t count, Duration deadline) {
    const auto end = Clock::now() + deadline;
    while (moves_.size() < count) {
        if (!waitForMove(end - Clock::now())) {
            return false;
        }
    }
    return true;
}

bool PointerTrace::waitForMoveTo(MainPoint point, Duration deadline) {
    const auto end = Clock::now() + deadline;
    while (waitForMove(end - Clock::now())) {
        if (moves_.back().to == point) {
            return true;
        }
    }
    return false;
}

const std::vector<PointerTrace::Move>& PointerTrace::moves() {
    takeEvents();
    return moves_;
}

std::vector<MainPoint> PointerTrace::path() {
    std::vector<MainPoint> points;
    for (const auto& move : moves()) {
        points.push_back(move.to);
    }
    return points;
}

}  // namespace vantrel::desk
