#pragma once

#include <cstdint>

namespace vantrel {

/// What happened to a key. The values are the bit numbers of event masks.
enum class KeyEventType : std::uint32_t {
    keyDown = 10,
    keyUp = 11,
    flagsChanged = 12,  ///< a modifier key went down or up
};

/// The bit of an event mask that asks for events of the type; 0 for a number that is no type.
constexpr std::uint32_t eventMask(KeyEventType type) {
    const auto bit = static_cast<std::uint32_t>(type);
    return bit < 32 ? 1U << bit : 0;
}

/// A key event as an event monitor sees it.
struct KeyEvent {
    // Bits of modifierFlags.
    static constexpr std::uint32_t capsLockFlag = 1U << 16;
    static constexpr std::uint32_t shiftFlag = 1U << 17;
    static constexpr std::uint32_t controlFlag = 1U << 18;
    static constexpr std::uint32_t optionFlag = 1U << 19;
    static constexpr std::uint32_t commandFlag = 1U << 20;
    static constexpr std::uint32_t functionFlag = 1U << 23;

    KeyEventType type = KeyEventType::keyDown;
    std::uint32_t keyCode = 0;        ///< macOS virtual key code: a place on the keyboard
    std::uint32_t modifierFlags = 0;  ///< the modifiers held at that moment

    bool operator==(const KeyEvent&) const = default;
};

}  // namespace vantrel
