#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace vantrel::desktop {

/// The sizes (pixels) in which panels get the item's drawing.
inline constexpr std::array itemIconSizes{16, 22, 24, 32, 48, 64};

/// The item's drawing as size x size pixels, row by row from the top, each 0xAARRGGBB with colours not multiplied by
/// alpha. Drawn afresh each time: panels ask once, and pixels kept would weigh on the resting agent.
std::vector<std::uint32_t> itemIconPixels(int size);

/// The same as bytes in the order alpha, red, green, blue.
std::vector<std::uint8_t> itemIconBytes(int size);

/// Where a panel finds the drawing by name.
struct ItemIconLocation {
    std::string name;       ///< empty when the drawing is not installed beside the program
    std::string themePath;  ///< the folder of icon themes to search first; empty when the desktop's own serve
};

ItemIconLocation itemIconLocation();

}  // namespace vantrel::desktop
