#include "helpers/settings/RecorderKeys.hpp"

#include <algorithm>
#include <cstddef>

#include "Vantrel/Interface/KeyboardShortcut.hpp"
#include "Vantrel/Interface/ModifierFlags.hpp"

namespace vantrel::qt {

bool RecorderKeys::isModifier(std::uint8_t keycode) const {
    if (keyboard_.modifierKeys.test(keycode) || keyboard_.keymap.isModifierKey(keycode)) {
        return true;
    }
    const auto virtualKey = keyboard_.keymap.virtualKeyOf(keycode);
    const auto& codes = KeyboardShortcut::modifierKeyCodes;
    return virtualKey && std::find(codes.begin(), codes.end(), static_cast<int>(*virtualKey)) != codes.end();
}

std::optional<KeyEvent> RecorderKeys::press(std::uint8_t keycode, std::uint16_t state) {
    if (held_.test(keycode)) {
        return std::nullopt;
    }
    held_.set(keycode);
    if (isModifier(keycode)) {
        return modifierChange(keycode, state);
    }
    const auto virtualKey = keyboard_.keymap.virtualKeyOf(keycode);
    if (!virtualKey) {
        return std::nullopt;
    }
    return KeyEvent{KeyEventType::keyDown, *virtualKey, flags(state)};
}

std::optional<KeyEvent> RecorderKeys::release(std::uint8_t keycode, std::uint16_t state) {
    held_.reset(keycode);
    if (!isModifier(keycode)) {
        return std::nullopt;
    }
    return modifierChange(keycode, state);
}

bool RecorderKeys::holdsRegularKey() const {
    for (std::size_t keycode = 0; keycode < held_.size(); ++keycode) {
        if (held_.test(keycode) && !isModifier(static_cast<std::uint8_t>(keycode))) {
            return true;
        }
    }
    return false;
}

KeyEvent RecorderKeys::modifierChange(std::uint8_t keycode, std::uint16_t state) const {
    return {KeyEventType::flagsChanged, keyboard_.keymap.virtualKeyOf(keycode).value_or(0), flags(state)};
}

std::uint32_t RecorderKeys::flags(std::uint16_t state) const {
    // The state knows latched modifiers, the held keys know those that a layout switch hides from the state.
    const std::uint32_t modifiers =
        keyboard_.keymap.carbonModifiersIn(state) | keyboard_.keymap.carbonModifiersOfHeldKeys(held_);
    std::uint32_t result = 0;
    for (const auto& [flag, modifier] : modifierFlags) {
        if ((modifiers & modifier) != 0) {
            result |= flag;
        }
    }
    return result;
}

}  // namespace vantrel::qt
