#include "helpers/settings/RecorderKeyTap.hpp"

#include <utility>

#include "helpers/settings/ServerConnection.hpp"
#include "helpers/settings/X11KeyTap.hpp"
#ifdef VANTREL_WAYLAND
#include "helpers/settings/WaylandKeyTap.hpp"
#endif

namespace vantrel::qt {

std::unique_ptr<RecorderKeyTap> RecorderKeyTap::make(QWidget& window, Events events) {
    if (serverConnection() != nullptr) {
        return std::make_unique<X11KeyTap>(window, std::move(events));
    }
#ifdef VANTREL_WAYLAND
    return WaylandKeyTap::make(window, std::move(events));
#else
    return nullptr;
#endif
}

void RecorderKeyTap::setRecording(bool isRecording, bool areKeysCaptured) {
    if (std::exchange(isRecording_, isRecording) == isRecording) {
        return;
    }
    if (isRecording) {
        areKeysCaptured_ = areKeysCaptured;
        startRecording();
    } else if (!hasKeyboard() || !keys_->holdsRegularKey()) {
        letGo();
    }
}

void RecorderKeyTap::takeCapturedKey(const WindowKey& key) {
    constexpr std::uint32_t keycodes = 256;
    if (!areKeysCaptured_ || key.keycode >= keycodes) {
        return;
    }
    const auto keycode = static_cast<std::uint8_t>(key.keycode);
    const auto state = static_cast<std::uint16_t>(key.state);
    static_cast<void>(key.isPressed ? pressed(keycode, state) : released(keycode, state));
}

bool RecorderKeyTap::pressed(std::uint8_t keycode, std::uint16_t state) {
    if (!keys_) {
        return false;
    }
    return isRecording_ ? deliver(keys_->press(keycode, state)) : keys_->isHeld(keycode);
}

bool RecorderKeyTap::released(std::uint8_t keycode, std::uint16_t state) {
    // What is not held was pressed before the recording, as the key that pressed the button.
    if (!keys_ || !keys_->isHeld(keycode)) {
        return false;
    }
    const auto event = keys_->release(keycode, state);
    if (isRecording_) {
        return deliver(event);
    }
    if (!keys_->holdsRegularKey()) {
        letGo();
    }
    return true;
}

bool RecorderKeyTap::deliver(const std::optional<KeyEvent>& event) {
    if (event) {
        events_.typed(*event);
    }
    return true;
}

}  // namespace vantrel::qt
