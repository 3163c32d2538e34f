#pragma once

#include <cstdint>
#include <functional>

#include "Vantrel/Platform/HotKeyServices.hpp"

namespace vantrel::backend {

/// A place on the keyboard (a macOS virtual key code) with at least one of Carbon's four modifiers, and no other bits.
struct KeyCombination {
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;

    bool operator==(const KeyCombination&) const = default;
};

/// How a windowing system catches key combinations for this process, whichever program has the focus.
class HotKeyBinder {
  public:
    /// Told on the main loop, once for each press, however long the key is held.
    using Pressed = std::function<void(const KeyCombination& combination)>;

    virtual ~HotKeyBinder() = default;

    virtual void setPressed(Pressed pressed) = 0;

    /// Catches the combination, which is not bound yet. Returns 0, eventHotKeyExistsErr when another program holds it,
    /// or eventHotKeyInvalidErr when the keyboard lacks it or the windowing system does not answer in time
    /// (AnswerTime); a refusal leaves nothing behind. The status is final: what is lost later (a keymap that changes, a
    /// service that restarts) the binder gets back by itself.
    virtual OSStatus bind(const KeyCombination& combination) = 0;

    /// Lets go of a combination that is bound.
    virtual void unbind(const KeyCombination& combination) = 0;

    /// Whether a window of ours is recording a shortcut at present. Combinations that are bound then must reach that
    /// window, also where the windowing system would catch them all the same.
    virtual void setRecording(bool /*isRecording*/) {}
};

}  // namespace vantrel::backend
