#include "Vantrel/Backends/X11/ScreenState.hpp"

#include <xcb/randr.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace vantrel::x11 {

namespace {

/// How often a layout that changes while it is read is read again. One is enough by far; the bound is there so that a
/// server that never rests cannot hold the agent.
constexpr int readAttempts = 4;

std::int16_t rootCoordinate(double position, std::int32_t origin) {
    constexpr double lowest = std::numeric_limits<std::int16_t>::min();
    constexpr double highest = std::numeric_limits<std::int16_t>::max();
    return static_cast<std::int16_t>(std::clamp(std::floor(position + origin), lowest, highest));
}

}  // namespace

ScreenState::ScreenState(X11Connection& connection) : connection_(connection), names_(connection) {
    connection_.addListener(*this);
    xcb_randr_select_input(connection_.get(), connection_.root(),
                           XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                               XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE | XCB_RANDR_NOTIFY_MASK_OUTPUT_PROPERTY |
                               XCB_RANDR_NOTIFY_MASK_RESOURCE_CHANGE);
    // Monitors that a user defines or removes are told only as a change of the root window.
    const std::uint32_t rootEvents = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_.get(), connection_.root(), XCB_CW_EVENT_MASK, &rootEvents);
    const xcb_query_extension_cookie_t xwayland = xcb_query_extension(connection_.get(), 8, "XWAYLAND");
    synchronize();
    pointerIsFresh_ = false;
    if (const auto reply = adopt(xcb_query_extension_reply(connection_.get(), xwayland, nullptr))) {
        isInsideWayland_ = isInsideWayland_ || reply->present != 0;
    }
}

void ScreenState::eventArrived(const xcb_generic_event_t& event) {
    const std::uint8_t type = event.response_type & 0x7FU;
    layoutIsStale_ = layoutIsStale_ || type == XCB_CONFIGURE_NOTIFY ||
                     type == connection_.randrFirstEvent() + XCB_RANDR_SCREEN_CHANGE_NOTIFY ||
                     type == connection_.randrFirstEvent() + XCB_RANDR_NOTIFY;
}

void ScreenState::synchronize() {
    connection_.drain();
    if (connection_.isLost()) {
        pointer_.reset();
        return;
    }
    for (int attempt = 0; attempt < readAttempts && (layoutIsStale_ || !pointerIsFresh_); ++attempt) {
        readOnce();
        connection_.takeQueued();
    }
}

void ScreenState::readOnce() {
    xcb_connection_t* connection = connection_.get();
    const bool readsLayout = layoutIsStale_;
    xcb_randr_get_monitors_cookie_t monitors{};
    if (readsLayout) {
        layoutIsStale_ = false;
        names_.askAgain();
        monitors = xcb_randr_get_monitors(connection, connection_.root(), 1);
    }
    const auto pointer = xcb_query_pointer(connection, connection_.root());
    if (readsLayout) {
        takeMonitors(monitors);
    }
    pointer_.reset();
    pointerIsFresh_ = true;
    const auto reply = adopt(xcb_query_pointer_reply(connection, pointer, nullptr));
    if (reply && reply->same_screen != 0) {
        pointer_ = RootPosition{reply->root_x, reply->root_y};
    }
}

void ScreenState::takeMonitors(xcb_randr_get_monitors_cookie_t cookie) {
    const auto reply = adopt(xcb_randr_get_monitors_reply(connection_.get(), cookie, nullptr));
    if (!reply) {
        names_.learn({}, {});
        layout_ = {};
        return;
    }
    std::vector<xcb_randr_output_t> outputs;
    std::vector<xcb_atom_t> atoms;
    for (auto info = xcb_randr_get_monitors_monitors_iterator(reply.get()); info.rem > 0;
         xcb_randr_monitor_info_next(&info)) {
        const auto* first = xcb_randr_monitor_info_outputs(info.data);
        outputs.insert(outputs.end(), first, first + xcb_randr_monitor_info_outputs_length(info.data));
        atoms.push_back(info.data->name);
    }
    names_.learn(outputs, atoms);

    std::vector<backend::Monitor> monitors;
    for (auto info = xcb_randr_get_monitors_monitors_iterator(reply.get()); info.rem > 0;
         xcb_randr_monitor_info_next(&info)) {
        const xcb_randr_monitor_info_t& data = *info.data;
        backend::Monitor monitor{names_.atom(data.name),
                                 data.primary != 0,
                                 data.automatic != 0,
                                 data.x,
                                 data.y,
                                 data.width,
                                 data.height,
                                 {}};
        const auto* output = xcb_randr_monitor_info_outputs(info.data);
        for (int index = 0; index < xcb_randr_monitor_info_outputs_length(info.data); ++index) {
            monitor.outputs.push_back(names_.output(output[index]));
            isInsideWayland_ = isInsideWayland_ || monitor.outputs.back().connector.starts_with("XWAYLAND");
        }
        monitors.push_back(std::move(monitor));
    }
    layout_ = backend::layoutOfMonitors(monitors);
}

void ScreenState::notePress(const xcb_key_press_event_t& press) {
    const std::uint32_t sequence = reinterpret_cast<const xcb_generic_event_t&>(press).full_sequence;
    const bool isSinceLastWarp = static_cast<std::int32_t>(sequence - lastWarp_) >= 0;
    if (press.same_screen != 0 && isSinceLastWarp) {
        pointer_ = RootPosition{press.root_x, press.root_y};
        pointerIsFresh_ = true;
    } else {
        pointerIsFresh_ = false;
    }
}

std::optional<CGPoint> ScreenState::pointer() const {
    if (!pointer_) {
        return std::nullopt;
    }
    return CGPoint{static_cast<double>(pointer_->x - layout_.originX),
                   static_cast<double>(pointer_->y - layout_.originY)};
}

void ScreenState::warpPointer(CGPoint position) {
    if (!std::isfinite(position.x) || !std::isfinite(position.y)) {
        return;
    }
    const auto cookie =
        xcb_warp_pointer(connection_.get(), XCB_NONE, connection_.root(), 0, 0, 0, 0,
                         rootCoordinate(position.x, layout_.originX), rootCoordinate(position.y, layout_.originY));
    xcb_flush(connection_.get());
    lastWarp_ = cookie.sequence;
    pointerIsFresh_ = false;
}

}  // namespace vantrel::x11
