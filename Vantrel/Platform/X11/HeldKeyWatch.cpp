#include "Vantrel/Platform/X11/HeldKeyWatch.hpp"

#include <xcb/xinput.h>

#include "Vantrel/Platform/X11/KeymapReader.hpp"

namespace vantrel::x11 {

HeldKeyWatch::HeldKeyWatch(X11Connection& connection)
    : connection_(connection), check_([this] { forgetKeysLetGo(); }) {}

bool HeldKeyWatch::press(std::uint8_t keycode) {
    if (held_.test(keycode)) {
        return false;
    }
    held_.set(keycode);
    watchRawReleases(true);
    return true;
}

void HeldKeyWatch::holdAll(const KeySet& keys) {
    held_ |= keys;
    watchRawReleases(held_.any());
}

void HeldKeyWatch::release(std::uint8_t keycode) {
    held_.reset(keycode);
    watchRawReleases(held_.any());
}

bool HeldKeyWatch::handleRawRelease(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7FU) != XCB_GE_GENERIC) {
        return false;
    }
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if (connection_.xinputOpcode() == 0 || generic.extension != connection_.xinputOpcode() ||
        generic.event_type != XCB_INPUT_RAW_KEY_RELEASE) {
        return false;
    }
    const auto& raw = reinterpret_cast<const xcb_input_raw_key_release_event_t&>(event);
    release(static_cast<std::uint8_t>(raw.detail));
    return true;
}

void HeldKeyWatch::watchRawReleases(bool watch) {
    if (watch == isWatching_ || connection_.xinputOpcode() == 0) {
        return;
    }
    isWatching_ = watch;
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection{{XCB_INPUT_DEVICE_ALL, 1},
                watch ? static_cast<std::uint32_t>(XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE) : 0U};
    xcb_input_xi_select_events(connection_.get(), connection_.root(), 1, &selection.head);
    if (watch) {
        // The key may be up again before the server sees this.
        check_.schedule(context_);
    }
}

void HeldKeyWatch::forgetKeysLetGo() {
    if (held_.none()) {
        return;
    }
    const KeySet down = readHeldKeys(connection_);
    connection_.takeQueued();
    if (connection_.hasPendingEvents()) {
        // What came meanwhile may be a further press of the same key: let it have its turn and look again.
        check_.schedule(context_);
        return;
    }
    held_ &= down;
    watchRawReleases(held_.any());
}

}  // namespace vantrel::x11
