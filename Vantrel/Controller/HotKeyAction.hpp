#pragma once

#include <cstdint>

namespace vantrel {

/// What a hot key does. The value is the id that its registration carries.
enum class HotKeyAction : std::uint32_t {
    primary = 1,
    nextDisplay = 2,
    previousDisplay = 3,
    savedPoint = 4,
    saveCurrentPoint = 5,
};

}  // namespace vantrel
