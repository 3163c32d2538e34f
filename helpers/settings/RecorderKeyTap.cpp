#include "helpers/settings/RecorderKeyTap.hpp"

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

class RecorderKeyTap::Monitor final : public EventMonitor {
  public:
    explicit Monitor(RecorderKeyTap& tap) : tap_(&tap) {}
    ~Monitor() override {
        if (tap_ != nullptr) {
            tap_->stopRecording();
        }
    }
    Monitor(const Monitor&) = delete;
    Monitor& operator=(const Monitor&) = delete;

    void forgetTap() { tap_ = nullptr; }

  private:
    RecorderKeyTap* tap_;
};

RecorderKeyTap::~RecorderKeyTap() {
    if (monitor_ != nullptr) {
        monitor_->forgetTap();
        stopRecording();
    }
    letGo();
}

bool RecorderKeyTap::isPossible() {
    return serverConnection() != nullptr;
}

std::unique_ptr<EventMonitor> RecorderKeyTap::record(std::uint32_t mask, ShortcutRecorderButton::EventHandler handler) {
    auto monitor = std::make_unique<Monitor>(*this);
    monitor_ = monitor.get();
    mask_ = mask;
    handler_ = std::move(handler);
    startFiltering();
    readKeyboard();
    if (window_.isActiveWindow()) {
        grab();
    }
    return monitor;
}

void RecorderKeyTap::stopRecording() {
    monitor_ = nullptr;
    handler_ = nullptr;
    if (!isGrabbed_ || !keys_ || !keys_->holdsRegularKey()) {
        letGo();
    }
}

void RecorderKeyTap::letGo() {
    ungrab();
    keys_.reset();
    if (monitor_ == nullptr) {
        stopFiltering();
    }
}

void RecorderKeyTap::startFiltering() {
    if (std::exchange(isFiltering_, true)) {
        return;
    }
    QCoreApplication::instance()->installNativeEventFilter(this);
    xkbFirstEvent_ = x11::xkbFirstEvent(serverConnection());
    // Qt tells a repeat by its release and press at one time; here a release has to mean that the key is up.
    x11::setDetectableAutoRepeat(serverConnection(), true);
}

void RecorderKeyTap::stopFiltering() {
    if (!std::exchange(isFiltering_, false)) {
        return;
    }
    QCoreApplication::instance()->removeNativeEventFilter(this);
    x11::setDetectableAutoRepeat(serverConnection(), false);
    xcb_flush(serverConnection());
}

void RecorderKeyTap::grab() {
    xcb_connection_t* const server = serverConnection();
    const auto cookie = xcb_grab_keyboard(server, 0, static_cast<xcb_window_t>(window_.winId()), XCB_CURRENT_TIME,
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const auto reply = x11::adopt(xcb_grab_keyboard_reply(server, cookie, nullptr));
    // Refused while another client has it, as during a window manager's key sequence; asked again at the next key.
    isGrabbed_ = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void RecorderKeyTap::ungrab() {
    if (std::exchange(isGrabbed_, false)) {
        xcb_ungrab_keyboard(serverConnection(), XCB_CURRENT_TIME);
        xcb_flush(serverConnection());
    }
}

void RecorderKeyTap::readKeyboard() {
    keys_.emplace(readRecorderKeyboard(), x11::readHeldKeys(serverConnection()));
}

bool RecorderKeyTap::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/) {
    if (!isActive() || eventType != "xcb_generic_event_t") {
        return false;
    }
    const auto& event = *static_cast<const xcb_generic_event_t*>(message);
    switch (event.response_type & 0x7FU) {
        case XCB_KEY_PRESS:
            return keyPressed(*static_cast<const xcb_key_press_event_t*>(message));
        case XCB_KEY_RELEASE:
            return keyReleased(*static_cast<const xcb_key_release_event_t*>(message));
        case XCB_FOCUS_IN:
            return focusEntered(*static_cast<const xcb_focus_in_event_t*>(message));
        case XCB_FOCUS_OUT:
            return focusLeft(*static_cast<const xcb_focus_out_event_t*>(message));
        default:
            noteKeymapChange(event);
            return false;
    }
}

bool RecorderKeyTap::keyPressed(const xcb_key_press_event_t& event) {
    if (!keys_) {
        return false;
    }
    if (monitor_ == nullptr) {
        return keys_->isHeld(event.detail);
    }
    if (!isGrabbed_) {
        grab();
    }
    const auto keyEvent = keys_->press(event.detail, event.state);
    return !keyEvent || deliver(*keyEvent);
}

bool RecorderKeyTap::keyReleased(const xcb_key_release_event_t& event) {
    if (!keys_ || !keys_->isHeld(event.detail)) {
        return false;
    }
    const auto keyEvent = keys_->release(event.detail, event.state);
    if (monitor_ == nullptr) {
        if (!keys_->holdsRegularKey()) {
            letGo();
        }
        return true;
    }
    return !keyEvent || deliver(*keyEvent);
}

bool RecorderKeyTap::focusEntered(const xcb_focus_in_event_t& event) {
    if (!isOwnFocusEvent(event) || monitor_ == nullptr) {
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

bool RecorderKeyTap::focusLeft(const xcb_focus_out_event_t& event) {
    if (!isOwnFocusEvent(event)) {
        return false;
    }
    if (isGrabNotice(event.mode)) {
        return true;
    }
    letGo();
    return false;
}

void RecorderKeyTap::noteKeymapChange(const xcb_generic_event_t& event) {
    const bool isChange = xkbFirstEvent_ != 0 && (event.response_type & 0x7FU) == xkbFirstEvent_ &&
                          (event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY || event.pad0 == XCB_XKB_MAP_NOTIFY);
    if (isChange && keys_) {
        keys_->setKeyboard(readRecorderKeyboard());
    }
}

/// Whether the event is swallowed.
bool RecorderKeyTap::deliver(const KeyEvent& event) {
    if ((mask_ & eventMask(event.type)) == 0) {
        return false;
    }
    // The handler may release the monitor, and the handler with it.
    const auto handler = handler_;
    return !handler(event).has_value();
}

bool RecorderKeyTap::isOwnFocusEvent(const xcb_focus_in_event_t& event) const {
    return event.event == static_cast<xcb_window_t>(window_.winId()) && event.detail != XCB_NOTIFY_DETAIL_POINTER &&
           event.detail != XCB_NOTIFY_DETAIL_INFERIOR;
}

}  // namespace vantrel::qt
