#include "helpers/settings/WaylandKeyboard.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "Vantrel/Backends/Wayland/SeatKeymap.hpp"
#include "helpers/settings/ModifierKeys.hpp"

namespace vantrel::qt {

namespace {

constexpr std::size_t keycodeCount = 256;
/// As the core protocol has them: two of the first group, two of the second.
constexpr std::size_t groups = 2;
constexpr std::size_t levels = 2;
constexpr std::size_t realModifiers = 8;

std::uint32_t keysym(xkb_keymap& keymap, xkb_keycode_t key, std::size_t group, std::size_t level) {
    const xkb_keysym_t* symbols = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(&keymap, key, static_cast<xkb_layout_index_t>(group),
                                                       static_cast<xkb_level_index_t>(level), &symbols);
    return count > 0 ? symbols[0] : std::uint32_t{XKB_KEY_NoSymbol};
}

}  // namespace

RecorderKeyboard keyboardOf(xkb_keymap& keymap) {
    x11::KeymapDescription description;
    description.firstKeycode = 0;
    description.keysymsPerKeycode = groups * levels;
    description.keysyms.resize(keycodeCount * groups * levels);
    std::array<std::vector<std::uint8_t>, realModifiers> modifierMap;
    const xkb_keycode_t last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(&keymap), keycodeCount - 1);
    for (xkb_keycode_t key = xkb_keymap_min_keycode(&keymap); key <= last; ++key) {
        const char* const name = xkb_keymap_key_get_name(&keymap, key);
        if (name == nullptr) {
            continue;
        }
        std::string_view(name).substr(0, description.names[key].size()).copy(description.names[key].data(), 4);
        for (std::size_t column = 0; column < groups * levels; ++column) {
            description.keysyms[key * groups * levels + column] = keysym(keymap, key, column / levels, column % levels);
        }
        const std::uint32_t mask = modifiersOfKey(keymap, key, 0);
        for (std::size_t modifier = 0; modifier < realModifiers; ++modifier) {
            if ((mask & (1U << modifier)) != 0) {
                modifierMap[modifier].push_back(static_cast<std::uint8_t>(key));
            }
        }
    }
    const auto longest = std::max_element(modifierMap.begin(), modifierMap.end(),
                                          [](const auto& one, const auto& other) { return one.size() < other.size(); });
    description.keycodesPerModifier = static_cast<std::uint8_t>(longest->size());
    for (auto& keys : modifierMap) {
        keys.resize(description.keycodesPerModifier);
        description.modifierKeycodes.insert(description.modifierKeycodes.end(), keys.begin(), keys.end());
    }
    return {.keymap = x11::Keymap(description), .modifierKeys = modifierKeysOf(keymap)};
}

std::optional<RecorderKeyboard> readWaylandKeyboard() {
    const auto deadline = wayland::Clock::now() + std::chrono::milliseconds(500);
    std::string error;
    const auto connection = wayland::WaylandConnection::open(error);
    if (!connection) {
        return std::nullopt;
    }
    const wayland::Registry registry(*connection);
    if (!connection->synchronize(deadline) || !registry.offers(wl_seat_interface, wayland::Seat::version)) {
        return std::nullopt;
    }
    const wayland::Seat seat(registry);
    if (!connection->synchronize(deadline)) {
        return std::nullopt;
    }
    const auto keymap = wayland::readSeatKeymap(*connection, seat, deadline);
    return keymap ? std::optional(keyboardOf(*keymap)) : std::nullopt;
}

}  // namespace vantrel::qt
