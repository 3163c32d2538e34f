#pragma once

#include <cstdint>
#include <optional>

#include "Vantrel/Backends/X11/Keymap.hpp"
#include "Vantrel/Interface/KeyEvent.hpp"

namespace vantrel::qt {

/// A keyboard as the recorder has to know it.
struct RecorderKeyboard {
    x11::Keymap keymap;
    x11::KeySet modifierKeys;  ///< by what they do, wherever they stand
};

/// Makes key events of what an X keyboard does while a shortcut is recorded: key places instead of letters, the four
/// modifiers by the modifier map, and a held key only once. Whatever is a modifier on this keyboard, by its place or by
/// what it does, changes the flags and is never a key of a shortcut.
class RecorderKeys {
  public:
    /// `held` are the keys that are down already: they were not pressed for the recorder.
    RecorderKeys(const RecorderKeyboard& keyboard, const x11::KeySet& held) : keyboard_(keyboard), held_(held) {}

    /// The keyboard's map changed, or another keyboard is used.
    void setKeyboard(const RecorderKeyboard& keyboard) { keyboard_ = keyboard; }

    /// A press with the modifier state of its event. None for a repeat and for a key that has no virtual key code.
    std::optional<KeyEvent> press(std::uint8_t keycode, std::uint16_t state);

    /// A release. None for a key that is no modifier.
    std::optional<KeyEvent> release(std::uint8_t keycode, std::uint16_t state);

    [[nodiscard]] bool isHeld(std::uint8_t keycode) const { return held_.test(keycode); }

    /// Whether a key that is no modifier is down.
    [[nodiscard]] bool holdsRegularKey() const;

  private:
    [[nodiscard]] bool isModifier(std::uint8_t keycode) const;
    [[nodiscard]] KeyEvent modifierChange(std::uint8_t keycode, std::uint16_t state) const;
    [[nodiscard]] std::uint32_t flags(std::uint16_t state) const;

    RecorderKeyboard keyboard_;
    x11::KeySet held_;
};

}  // namespace vantrel::qt
