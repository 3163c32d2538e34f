#pragma once

#include <cstdint>
#include <optional>

#include "Vantrel/Backends/X11/Keymap.hpp"
#include "Vantrel/Interface/KeyEvent.hpp"

namespace vantrel::qt {

/// Makes key events of what an X keyboard does while a shortcut is recorded: key places instead of letters, the four
/// modifiers by the modifier map, and a held key only once.
class RecorderKeys {
  public:
    /// `held` are the keys that are down already: they were not pressed for the recorder.
    RecorderKeys(const x11::Keymap& keymap, const x11::KeySet& held) : keymap_(keymap), held_(held) {}

    /// The keyboard's map changed, or another keyboard is used.
    void setKeymap(const x11::Keymap& keymap) { keymap_ = keymap; }

    /// A press with the modifier state of its event. None for a repeat and for a key that has no virtual key code.
    std::optional<KeyEvent> press(std::uint8_t keycode, std::uint16_t state);

    /// A release. None for a key that is no modifier.
    std::optional<KeyEvent> release(std::uint8_t keycode, std::uint16_t state);

    [[nodiscard]] bool isHeld(std::uint8_t keycode) const { return held_.test(keycode); }

    /// Whether a key that is no modifier is down.
    [[nodiscard]] bool holdsRegularKey() const;

  private:
    [[nodiscard]] KeyEvent modifierChange(std::uint8_t keycode, std::uint16_t state) const;
    [[nodiscard]] std::uint32_t flags(std::uint16_t state) const;

    x11::Keymap keymap_;
    x11::KeySet held_;
};

}  // namespace vantrel::qt
