#include "Vantrel/Backends/X11/HeldKeyWatch.hpp"

#include <xcb/xinput.h>

#include "Vantrel/Backends/X11/KeymapReader.hpp"

namespace vantrel::x11 {

namespace {

/// At once, the question for the keys that are held would wake this process again just when the server has moved the
/// pointer, and whoever follows the pointer wants a processor. No hand lets a key go and presses it anew so fast.
constexpr std::chrono::milliseconds watchDelay{20};

}  // namespace

bool HeldKeyWatch::press(std::uint8_t keycode) {
    if (held_.test(keycode)) {
        return false;
    }
    held_.set(keycode);
    watchAfter(watchDelay);
    return true;
}

void HeldKeyWatch::holdAll(const KeySet& keys) {
    held_ |= keys;
    watchAfter(watchDelay);
}

void HeldKeyWatch::release(std::uint8_t keycode) {
    held_.reset(keycode);
    if (held_.none()) {
        begin_.reset();
        selectRawReleases(false);
    }
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

void HeldKeyWatch::watchAfter(std::chrono::milliseconds delay) {
    if (held_.any() && !isWatching_ && !begin_.isSet()) {
        begin_ = LoopSource::after(delay, [this] { beginWatch(); });
    }
}

void HeldKeyWatch::beginWatch() {
    selectRawReleases(true);
    // A key may have been let go before the server saw that.
    const KeySet down = readHeldKeys(connection_);
    connection_.takeQueued();
    if (connection_.hasPendingEvents()) {
        // What came meanwhile may be a further press of the same key: let it have its turn and look again.
        begin_ = LoopSource::after({}, [this] { beginWatch(); });
        return;
    }
    held_ &= down;
    selectRawReleases(held_.any());
}

void HeldKeyWatch::selectRawReleases(bool isWanted) {
    if (isWanted == isWatching_ || connection_.xinputOpcode() == 0) {
        return;
    }
    isWatching_ = isWanted;
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection{{XCB_INPUT_DEVICE_ALL, 1},
                isWanted ? static_cast<std::uint32_t>(XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE) : 0U};
    xcb_input_xi_select_events(connection_.get(), connection_.root(), 1, &selection.head);
}

}  // namespace vantrel::x11
