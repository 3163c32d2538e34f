#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "Vantrel/Backends/X11/Keymap.hpp"

namespace vantrel::x11 {

inline constexpr std::uint16_t shiftMask = 1;
inline constexpr std::uint16_t lockMask = 2;
inline constexpr std::uint16_t controlMask = 4;
inline constexpr std::uint16_t mod1 = 8;
inline constexpr std::uint16_t mod2 = 16;
inline constexpr std::uint16_t mod3 = 32;
inline constexpr std::uint16_t mod4 = 64;
inline constexpr std::uint16_t mod5 = 128;

inline constexpr std::uint32_t shiftL = 0xffe1, controlL = 0xffe3, altL = 0xffe9, superL = 0xffeb, superR = 0xffec,
                               numLock = 0xff7f, scrollLock = 0xff14, nextGroup = 0xfe08, letterD = 0x64;

/// A keyboard that is put together key by key; the modifiers are given by their bit's number.
class TestKeyboard {
  public:
    TestKeyboard() {
        description_.firstKeycode = 8;
        description_.keysymsPerKeycode = 2;
        description_.keysyms.resize(std::size_t{2} * 248);
        description_.keycodesPerModifier = 2;
        description_.modifierKeycodes.resize(16);
    }

    TestKeyboard& key(std::uint8_t keycode, std::string_view name, std::uint32_t base, std::uint32_t second = 0,
                      int modifier = -1) {
        std::copy(name.begin(), name.end(), description_.names[keycode].begin());
        description_.keysyms[(keycode - 8U) * 2U] = base;
        description_.keysyms[(keycode - 8U) * 2U + 1U] = second;
        if (modifier >= 0) {
            auto* slot = &description_.modifierKeycodes[static_cast<std::size_t>(modifier) * 2U];
            *(slot[0] == 0 ? slot : slot + 1) = keycode;
        }
        return *this;
    }

    [[nodiscard]] Keymap map() const { return Keymap(description_); }

  private:
    KeymapDescription description_;
};

/// As XKB's "evdev" rules number the keys and its "pc105" model sets the modifiers.
inline TestKeyboard ordinaryKeyboard() {
    return TestKeyboard()
        .key(40, "AC03", letterD)
        .key(50, "LFSH", shiftL, 0, 0)
        .key(37, "LCTL", controlL, 0, 2)
        .key(64, "LALT", altL, 0, 3)
        .key(77, "NMLK", numLock, 0, 4)
        .key(133, "LWIN", superL, 0, 6);
}

}  // namespace vantrel::x11
