#include "Vantrel/Backends/X11/Tray/XEmbedTray.hpp"

#include <string>
#include <utility>

namespace vantrel::x11 {

namespace {

/// The number of the screen that has the root window.
int screenNumber(xcb_connection_t* connection, xcb_window_t root) {
    int number = 0;
    for (auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection)); screens.rem > 1;
         xcb_screen_next(&screens)) {
        if (screens.data->root == root) {
            break;
        }
        ++number;
    }
    return number;
}

bool followEnd(xcb_connection_t* connection, xcb_window_t window) {
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    const auto error = adopt(xcb_request_check(
        connection, xcb_change_window_attributes_checked(connection, window, XCB_CW_EVENT_MASK, &events)));
    return error == nullptr;
}

}  // namespace

std::unique_ptr<XEmbedTray> XEmbedTray::connect(Events events) {
    std::string error;
    auto connection = X11Connection::open(error);
    if (!connection) {
        return nullptr;
    }
    // The constructor is private: make_unique cannot reach it.
    std::unique_ptr<XEmbedTray> tray(new XEmbedTray(std::move(connection), std::move(events)));  // NOLINT
    tray->dock();
    return tray;
}

XEmbedTray::XEmbedTray(std::unique_ptr<X11Connection> connection, Events events)
    : connection_(std::move(connection)),
      events_(std::move(events)),
      selection_(connection_->atom("_NET_SYSTEM_TRAY_S" +
                                   std::to_string(screenNumber(connection_->get(), connection_->root())))),
      managerMessage_(connection_->atom("MANAGER")) {
    // New trays announce themselves to those who follow the root window's structure.
    followEnd(connection_->get(), connection_->root());
    connection_->addListener(*this);
    source_ = std::make_unique<X11EventSource>(
        *connection_, [] {}, [this] { connectionLost(); });
}

XEmbedTray::~XEmbedTray() = default;

void XEmbedTray::dock() {
    xcb_connection_t* connection = connection_->get();
    const auto owner =
        adopt(xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, selection_), nullptr));
    if (!owner || owner->owner == XCB_NONE || !followEnd(connection, owner->owner)) {
        return;
    }
    manager_ = owner->owner;
    window_ = std::make_unique<TrayWindow>(*connection_, manager_);
}

void XEmbedTray::undock() {
    window_.reset();
    manager_ = XCB_NONE;
}

// Where the X server is gone the agent ends anyway; but a person can also have the icon's connection alone cut (xkill).
void XEmbedTray::connectionLost() {
    undock();
    events_.changed();
}

void XEmbedTray::handleEvent(const xcb_generic_event_t& event) {
    const unsigned type = event.response_type & 0x7FU;
    if (type == XCB_CLIENT_MESSAGE) {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        if (message.type == managerMessage_ && message.data.data32[1] == selection_) {
            undock();
            dock();
            events_.changed();
        }
        return;
    }
    if (type == XCB_DESTROY_NOTIFY && reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == manager_) {
        undock();
        dock();
        events_.changed();
        return;
    }
    if (!window_) {
        return;
    }
    const TrayWindow::Change change = window_->handleEvent(event);
    if (change == TrayWindow::Change::released) {
        window_.reset();
    }
    if (change == TrayWindow::Change::pressed) {
        events_.pressed();
    } else if (change != TrayWindow::Change::none) {
        events_.changed();
    }
}

}  // namespace vantrel::x11
