#include "Vantrel/Backends/X11/Tray/TrayIconImage.hpp"

#include <algorithm>

#include "Vantrel/Icon/ItemIcon.hpp"

namespace vantrel::x11 {

namespace {

constexpr std::uint32_t opaque = 0xFF;

std::uint32_t channel(std::uint32_t pixel, unsigned shift) {
    return (pixel >> shift) & 0xFFU;
}

std::uint32_t multipliedByAlpha(std::uint32_t pixel) {
    const std::uint32_t alpha = channel(pixel, 24);
    std::uint32_t result = alpha << 24U;
    for (const unsigned shift : {16U, 8U, 0U}) {
        result |= ((channel(pixel, shift) * alpha + opaque / 2) / opaque) << shift;
    }
    return result;
}

std::uint32_t over(std::uint32_t front, std::uint32_t back) {
    const std::uint32_t rest = opaque - channel(front, 24);
    std::uint32_t result = opaque << 24U;
    for (const unsigned shift : {16U, 8U, 0U}) {
        result |= std::min(opaque, channel(front, shift) + channel(back, shift) * rest / opaque) << shift;
    }
    return result;
}

}  // namespace

TrayImage trayIconImage(int width, int height, int visibleWidth) {
    TrayImage image{.width = width, .height = height, .pixels = {}};
    image.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    const ItemIcon& icon = itemIconFitting(visibleWidth, height);
    // A tray smaller than the smallest drawing shows the middle of it.
    const int left = (visibleWidth - icon.size) / 2;
    const int top = (height - icon.size) / 2;
    for (int row = std::max(0, -top); row < std::min(icon.size, height - top); ++row) {
        for (int column = std::max(0, -left); column < std::min(icon.size, width - left); ++column) {
            image.pixels[static_cast<std::size_t>((top + row) * width + left + column)] =
                multipliedByAlpha(icon.pixels[static_cast<std::size_t>(row * icon.size + column)]);
        }
    }
    return image;
}

TrayImage blended(const TrayImage& picture, const TrayImage& background) {
    TrayImage image = picture;
    std::transform(picture.pixels.begin(), picture.pixels.end(), background.pixels.begin(), image.pixels.begin(), over);
    return image;
}

}  // namespace vantrel::x11
