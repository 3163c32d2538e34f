#include "Vantrel/Backends/X11/Tray/TrayItemPresenter.hpp"

#include <chrono>
#include <string>
#include <utility>

namespace vantrel::x11 {

namespace {

constexpr std::chrono::seconds graceTime(1);

bool followEnd(xcb_connection_t* connection, xcb_window_t window) {
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    const auto error = adopt(xcb_request_check(
        connection, xcb_change_window_attributes_checked(connection, window, XCB_CW_EVENT_MASK, &events)));
    return error == nullptr;
}

}  // namespace

void TrayItemPresenter::setWanted(bool isWanted) {
    if (std::exchange(isWanted_, isWanted) == isWanted) {
        return;
    }
    if (isWanted) {
        grace_ = LoopSource::after(graceTime, [this] { join(); });
    } else {
        grace_.reset();
        leave();
    }
}

void TrayItemPresenter::join() {
    std::string error;
    connection_ = X11Connection::open(error);
    if (!connection_) {
        return;
    }
    selection_ = connection_->atom("_NET_SYSTEM_TRAY_S" + std::to_string(connection_->screenNumber()));
    managerMessage_ = connection_->atom("MANAGER");
    // New trays announce themselves to those who follow the root window's structure.
    followEnd(connection_->get(), connection_->root());
    connection_->addListener(*this);
    // Where the X server is gone the agent ends anyway; but a person can also have the icon's connection alone cut
    // (xkill).
    source_ = std::make_unique<X11EventSource>(
        *connection_, [] {},
        [this] {
            undock();
            changed();
        });
    dock();
}

void TrayItemPresenter::leave() {
    source_.reset();
    undock();
    connection_.reset();
}

void TrayItemPresenter::dock() {
    const xcb_window_t owner = selectionOwner(connection_->get(), selection_);
    if (owner == XCB_NONE || !followEnd(connection_->get(), owner)) {
        return;
    }
    manager_ = owner;
    window_ = std::make_unique<TrayWindow>(*connection_, manager_);
}

void TrayItemPresenter::undock() {
    window_.reset();
    manager_ = XCB_NONE;
}

void TrayItemPresenter::changed() {
    if (isShown()) {
        window_->paintIcon();
    }
    events_.presenceChanged();
}

void TrayItemPresenter::handleEvent(const xcb_generic_event_t& event) {
    const unsigned type = event.response_type & 0x7FU;
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    const bool isNewTray =
        type == XCB_CLIENT_MESSAGE && message.type == managerMessage_ && message.data.data32[1] == selection_;
    const bool isEndOfTray =
        type == XCB_DESTROY_NOTIFY && reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == manager_;
    if (isNewTray || isEndOfTray) {
        undock();
        dock();
        changed();
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
        changed();
    }
}

}  // namespace vantrel::x11
