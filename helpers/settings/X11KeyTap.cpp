#include "helpers/settings/X11KeyTap.hpp"

#include <QCoreApplication>
#include <utility>

#include "Vantrel/Backends/X11/KeymapReader.hpp"
#include "Vantrel/Backends/X11/XcbHandles.hpp"
#include "Vantrel/Backends/X11/XkbProtocol.hpp"
#include "helpers/settings/ModifierKeys.hpp"
#include "helpers/settings/ServerConnection.hpp"

namespace vantrel::qt {

namespace {

/// Focus events of these modes say that somebody grabs the keyboard or lets go of it; the focus stays where it is.
bool isGrabNotice(std::uint8_t mode) {
    return mode == XCB_NOTIFY_MODE_GRAB || mode == XCB_NOTIFY_MODE_UNGRAB;
}

RecorderKeyboard readRecorderKeyboard() {
    return {.keymap = x11::readKeymap(serverConnection()), .modifierKeys = readModifierKeys(serverConnection())};
}

}  // namespace

X11KeyTap::~X11KeyTap() {
    setRecording(false, false);
    X11KeyTap::letGo();
}

void X11KeyTap::startRecording() {
    startFiltering();
    readKeyboard();
    if (window_.isActiveWindow()) {
        grab();
    }
}

void X11KeyTap::letGo() {
    ungrab();
    keys_.reset();
    if (!isRecording()) {
        stopFiltering();
    }
}

void X11KeyTap::startFiltering() {
    if (std::exchange(isFiltering_, true)) {
        return;
    }
    QCoreApplication::instance()->installNativeEventFilter(this);
    xkbFirstEvent_ = x11::xkbFirstEvent(serverConnection());
    // Qt tells a repeat by its release and press at one time; here a release has to mean that the key is up.
    x11::setDetectableAutoRepeat(serverConnection(), true);
}

void X11KeyTap::stopFiltering() {
    if (!std::exchange(isFiltering_, false)) {
        return;
    }
    QCoreApplication::instance()->removeNativeEventFilter(this);
    x11::setDetectableAutoRepeat(serverConnection(), false);
    xcb_flush(serverConnection());
}

void X11KeyTap::grab() {
    xcb_connection_t* const server = serverConnection();
    const auto cookie = xcb_grab_keyboard(server, 0, static_cast<xcb_window_t>(window_.winId()), XCB_CURRENT_TIME,
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const auto reply = x11::adopt(xcb_grab_keyboard_reply(server, cookie, nullptr));
    // Refused while another client has it, as during a window manager's key sequence; asked again at the next key.
    isGrabbed_ = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void X11KeyTap::ungrab() {
    if (std::exchange(isGrabbed_, false)) {
        xcb_ungrab_keyboard(serverConnection(), XCB_CURRENT_TIME);
        xcb_flush(serverConnection());
    }
}

void X11KeyTap::readKeyboard() {
    keys_.emplace(readRecorderKeyboard(), x11::readHeldKeys(serverConnection()));
}

bool X11KeyTap::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/) {
    if (!isActive() || eventType != "xcb_generic_event_t") {
        return false;
    }
    const auto& event = *static_cast<const xcb_generic_event_t*>(message);
    switch (event.response_type & 0x7FU) {
        case XCB_KEY_PRESS:
            return keyPressed(*static_cast<const xcb_key_press_event_t*>(message));
        case XCB_KEY_RELEASE:
            return released(static_cast<const xcb_key_release_event_t*>(message)->detail,
                            static_cast<const xcb_key_release_event_t*>(message)->state);
        case XCB_FOCUS_IN:
            return focusEntered(*static_cast<const xcb_focus_in_event_t*>(message));
        case XCB_FOCUS_OUT:
            return focusLeft(*static_cast<const xcb_focus_out_event_t*>(message));
        default:
            noteKeymapChange(event);
            return false;
    }
}

bool X11KeyTap::keyPressed(const xcb_key_press_event_t& event) {
    if (isRecording() && keys_ && !isGrabbed_) {
        grab();
    }
    return pressed(event.detail, event.state);
}

bool X11KeyTap::focusEntered(const xcb_focus_in_event_t& event) {
    if (!isOwnFocusEvent(event) || !isRecording()) {
        return false;
    }
    if (!isGrabNotice(event.mode)) {
        readKeyboard();
        grab();
        return false;
    }
    // The end of another grab, such as a drop-down list's: it took ours away.
    if (event.mode == XCB_NOTIFY_MODE_UNGRAB && window_.isActiveWindow()) {
        grab();
    }
    return true;
}

bool X11KeyTap::focusLeft(const xcb_focus_out_event_t& event) {
    if (!isOwnFocusEvent(event)) {
        return false;
    }
    if (isGrabNotice(event.mode)) {
        return true;
    }
    letGo();
    return false;
}

void X11KeyTap::noteKeymapChange(const xcb_generic_event_t& event) {
    const bool isChange = xkbFirstEvent_ != 0 && (event.response_type & 0x7FU) == xkbFirstEvent_ &&
                          (event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY || event.pad0 == XCB_XKB_MAP_NOTIFY);
    if (isChange && keys_) {
        keys_->setKeyboard(readRecorderKeyboard());
    }
}

bool X11KeyTap::isOwnFocusEvent(const xcb_focus_in_event_t& event) const {
    return event.event == static_cast<xcb_window_t>(window_.winId()) && event.detail != XCB_NOTIFY_DETAIL_POINTER &&
           event.detail != XCB_NOTIFY_DETAIL_INFERIOR;
}

}  // namespace vantrel::qt
