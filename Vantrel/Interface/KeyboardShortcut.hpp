#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "Vantrel/Platform/HotKeyServices.hpp"

namespace vantrel {

/// A key combination: a macOS virtual key code, which names a place on the keyboard, and a Carbon modifier mask.
struct KeyboardShortcut {
    static constexpr std::uint32_t command = cmdKey;
    static constexpr std::uint32_t shift = shiftKey;
    static constexpr std::uint32_t option = optionKey;
    static constexpr std::uint32_t control = controlKey;

    /// All four modifiers: what a remapped Caps Lock produces.
    static constexpr std::uint32_t hyper = command | shift | option | control;

    /// Key codes of the keys that are modifiers themselves; none of them can be the key of a shortcut.
    static constexpr std::array<int, 10> modifierKeyCodes{54, 55, 56, 57, 58, 59, 60, 61, 62, 63};

    /// The digit keys 1 to 5, which Raycast takes for itself with Hyper. 22 is the digit 6 and stays free.
    static constexpr std::array<std::uint32_t, 5> raycastReservedHyperKeys{18, 19, 20, 21, 23};

    std::uint32_t keyCode = 2;
    std::uint32_t modifiers = hyper;

    /// Whether the combination is exactly Hyper with one of the reserved digit keys.
    [[nodiscard]] bool isKnownRaycastConflict() const;

    /// The modifier labels and the key label, joined by " + ": "Hyper + D".
    [[nodiscard]] std::string displayText() const;

    /// "Hyper" alone for exactly the four modifiers; otherwise the labels of the bits that are set, in the order
    /// "Ctrl", "Option", "Shift", "Command".
    static std::vector<std::string> modifierLabels(std::uint32_t mask);

    /// The key's label on a US keyboard, or "Key 10" for a code without one.
    static std::string keyLabel(std::uint32_t keyCode);

    bool operator==(const KeyboardShortcut&) const = default;
};

}  // namespace vantrel
