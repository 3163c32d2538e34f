#pragma once

#include <cstdint>
#include <vector>

namespace vantrel::x11 {

/// A picture of opaque or premultiplied pixels, 0xAARRGGBB, row by row from the top.
struct TrayImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

/// The item's drawing, the largest that fits, in the middle of the first `visibleWidth` columns of a transparent
/// picture; colours multiplied by alpha.
TrayImage trayIconImage(int width, int height, int visibleWidth);

/// The picture on top of an opaque one of the same size.
TrayImage blended(const TrayImage& picture, const TrayImage& background);

}  // namespace vantrel::x11
