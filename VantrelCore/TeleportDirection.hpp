#pragma once

#include <cstdint>
#include <optional>

namespace vantrel {

/// The direction of a display jump. The raw value is the step in the left-to-right order of the displays.
enum class TeleportDirection : int {
    previous = -1,  ///< one display to the left
    next = 1,       ///< one display to the right
};

/// The direction with that raw value; none for every value but -1 and 1.
constexpr std::optional<TeleportDirection> teleportDirectionFromRawValue(std::int64_t rawValue) {
    switch (rawValue) {
        case -1:
            return TeleportDirection::previous;
        case 1:
            return TeleportDirection::next;
        default:
            return std::nullopt;
    }
}

}  // namespace vantrel
