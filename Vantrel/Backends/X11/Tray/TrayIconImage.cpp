#include "Vantrel/Backends/X11/Tray/TrayIconImage.hpp"

#include <algorithm>

#include "Vantrel/Desktop/StatusItem/ItemIcon.hpp"

namespace vantrel::desktop {

namespace {

constexpr int largestIcon = 128;
constexpr std::uint32_t opaque = 0xFF;

std::uint32_t channel(std::uint32_t pixel, unsigned shift) {
    return (pixel >> shift) & 0xFFU;
}

std::uint32_t multipliedByAlpha(std::uint32_t pixel) {
    const std::uint32_t alpha = channel(pixel, 24);
    std::uint32_t result = alpha << 24U;
    for (const unsigned shift : {16U, 8U, 0U}) {
        result |= (channel(pixel, shift) * alpha / opaque) << shift;
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
    const int size = std::min({visibleWidth, height, largestIcon});
    const std::vector<std::uint32_t> icon = itemIconPixels(size);
    const int left = (visibleWidth - size) / 2;
    const int top = (height - size) / 2;
    for (int row = 0; row < size; ++row) {
        const auto from = icon.begin() + static_cast<std::ptrdiff_t>(row) * size;
        const auto to = image.pixels.begin() + static_cast<std::ptrdiff_t>(top + row) * width + left;
        std::transform(from, from + size, to, multipliedByAlpha);
    }
    return image;
}

TrayImage blended(const TrayImage& picture, const TrayImage& background) {
    TrayImage image = picture;
    std::transform(picture.pixels.begin(), picture.pixels.end(), background.pixels.begin(), image.pixels.begin(), over);
    return image;
}

}  // namespace vantrel::desktop
