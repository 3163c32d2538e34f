#pragma once

#include <cstdint>
#include <span>

namespace vantrel {

/// The status item's drawing as size x size pixels, row by row from the top, each 0xAARRGGBB with colours not
/// multiplied by alpha.
struct ItemIcon {
    int size = 0;
    std::span<const std::uint32_t> pixels;
};

/// In the sizes that panels ask for, from the smallest on. The pixels are those of data/icons, put into the program
/// when it is built: they weigh nothing until they are looked at.
std::span<const ItemIcon> itemIcons();

/// The largest that fits into that width and height; the smallest where none does.
const ItemIcon& itemIconFitting(int width, int height);

}  // namespace vantrel
