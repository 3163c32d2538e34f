#pragma once

#include <array>
#include <bitset>
#include <compare>
#include <cstdint>
#include <optional>
#include <vector>

namespace vantrel::x11 {

/// A set of keys, by keycode.
using KeySet = std::bitset<256>;

/// A key's XKB name: four characters, padded with NULs, not terminated. All NULs for a keycode without a key.
using KeyName = std::array<char, 4>;

/// The keyboard as the server describes it: XKB key names, and the core protocol's keysyms and modifier map.
struct KeymapDescription {
    std::array<KeyName, 256> names{};
    std::uint8_t firstKeycode = 8;
    std::uint8_t keysymsPerKeycode = 0;
    std::vector<std::uint32_t> keysyms;  ///< keysymsPerKeycode for each keycode from firstKeycode on
    std::uint8_t keycodesPerModifier = 0;
    std::vector<std::uint8_t> modifierKeycodes;  ///< keycodesPerModifier for each of Shift, Lock, Control, Mod1 to Mod5
};

/// One passive grab: a key with exactly these modifiers.
struct KeyGrab {
    std::uint8_t keycode = 0;
    std::uint16_t modifiers = 0;

    // NOLINTNEXTLINE(modernize-use-nullptr): clang-tidy 14 takes the comparison with zero inside for a null pointer
    auto operator<=>(const KeyGrab&) const = default;
};

/// What the hot keys need to know of a keyboard.
class Keymap {
  public:
    /// A keyboard without keys.
    Keymap() = default;
    explicit Keymap(const KeymapDescription& description);

    /// The grabs that together catch the combination, whatever the locks are; none when the keyboard lacks the key or a
    /// modifier, or when the mask names no modifier at all. The key code is a macOS virtual key code, the mask
    /// Carbon's.
    [[nodiscard]] std::optional<std::vector<KeyGrab>> grabsFor(std::uint32_t keyCode, std::uint32_t modifiers) const;

    /// The keys that stand at the place of a macOS virtual key code.
    [[nodiscard]] KeySet keysAt(std::uint32_t keyCode) const;

    /// Whether pressing several modifiers may switch the layout instead of setting the last of them, as the option
    /// grp:alt_shift_toggle does. The state of an event then lies about what is held; the keys held tell the truth.
    [[nodiscard]] bool hidesModifiers() const { return hidesModifiers_; }

    /// The Carbon mask of the modifier keys among the keys that are held.
    [[nodiscard]] std::uint32_t carbonModifiersOfHeldKeys(const KeySet& held) const;

    /// The Carbon mask of the shortcut's modifiers in an event's state, whatever else is set.
    [[nodiscard]] std::uint32_t carbonModifiersIn(std::uint16_t state) const;

    /// The macOS virtual key code of a key: of its place, but Escape's wherever a key gives Escape. None for keys
    /// without one, such as media keys.
    [[nodiscard]] std::optional<std::uint32_t> virtualKeyOf(std::uint8_t keycode) const;

    /// Whether the key stands in the modifier map.
    [[nodiscard]] bool isModifierKey(std::uint8_t keycode) const { return modifierKeys_.test(keycode); }

    /// Whether the state holds modifiers that are neither locks nor one of the four of a shortcut.
    [[nodiscard]] bool hasForeignModifiers(std::uint16_t state) const;

  private:
    struct Role {
        std::uint32_t carbonBit = 0;
        std::uint16_t mask = 0;  ///< the core protocol's bits, any of which means it; 0 when the keyboard lacks it
        KeySet keys;             ///< the keys that stand for it when nothing else is held
        bool canSwitchLayout = false;
    };

    void findRoles(const KeymapDescription& description);
    void findModifierAndEscapeKeys(const KeymapDescription& description);
    void findLocks(const KeymapDescription& description);
    [[nodiscard]] std::vector<std::uint16_t> stateMasksFor(std::uint32_t modifiers) const;

    std::array<KeyName, 256> names_{};
    std::array<Role, 4> roles_{};
    KeySet modifierKeys_;
    KeySet escapeKeys_;
    std::uint16_t lockMask_ = 0;
    bool hidesModifiers_ = false;
};

}  // namespace vantrel::x11
