#include "Vantrel/Backends/Gnome/Accelerators.hpp"

#include <array>
#include <bit>
#include <cstdio>
#include <utility>

#include "Vantrel/Backends/Wayland/KeyBindings.hpp"

namespace vantrel::gnome {

namespace {

std::string acceleratorOf(std::uint32_t modifiers, xkb_keycode_t keycode) {
    constexpr std::array names{std::pair{wayland::controlModifier, "<Control>"},
                               std::pair{wayland::altModifier, "<Alt>"}, std::pair{wayland::shiftModifier, "<Shift>"},
                               std::pair{wayland::logoModifier, "<Super>"}};
    std::string accelerator;
    for (const auto& [modifier, name] : names) {
        if ((modifiers & modifier) != 0) {
            accelerator += name;
        }
    }
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), "0x%x", keycode);
    return accelerator + number.data();
}

/// The modifiers of a press, in whichever order their keys went down.
std::vector<std::uint32_t> modifiersOfPress(std::uint32_t modifiers, xkb_keymap* keymap) {
    std::uint32_t hiding = 0;
    for (const wayland::HidingKey& key : wayland::hidingKeys(keymap)) {
        hiding |= key.modifier & modifiers;
    }
    std::vector<std::uint32_t> all{modifiers};
    // The second of two that are pressed is the one that switches and sets nothing.
    if (std::popcount(hiding) > 1) {
        for (const std::uint32_t modifier :
             {wayland::shiftModifier, wayland::altModifier, wayland::controlModifier, wayland::logoModifier}) {
            if ((hiding & modifier) != 0) {
                all.push_back(modifiers & ~modifier);
            }
        }
    }
    return all;
}

}  // namespace

std::vector<std::string> acceleratorsOf(const backend::KeyCombination& combination, xkb_keymap* keymap) {
    std::vector<std::string> accelerators;
    for (const std::uint32_t modifiers : modifiersOfPress(wayland::realModifiers(combination.modifiers), keymap)) {
        for (const xkb_keycode_t keycode : wayland::keycodesAt(combination.keyCode, keymap)) {
            accelerators.push_back(acceleratorOf(modifiers, keycode));
        }
    }
    return accelerators;
}

}  // namespace vantrel::gnome
