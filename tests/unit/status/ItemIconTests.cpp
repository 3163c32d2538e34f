#include "Vantrel/Desktop/StatusItem/ItemIcon.hpp"

#include <cairo/cairo.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "Vantrel/Backends/X11/Tray/TrayIconImage.hpp"

namespace vantrel::desktop {
namespace {

struct SurfaceDeleter {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};

/// The installed picture of that size, colours multiplied by alpha.
std::vector<std::uint32_t> installedPixels(int size) {
    const std::string side = std::to_string(size);
    const std::string file = VANTREL_ICONS "/" + side + "x" + side + "/apps/org.vantrel.Vantrel.png";
    const std::unique_ptr<cairo_surface_t, SurfaceDeleter> surface(cairo_image_surface_create_from_png(file.c_str()));
    EXPECT_EQ(cairo_surface_status(surface.get()), CAIRO_STATUS_SUCCESS) << file;
    EXPECT_EQ(cairo_image_surface_get_width(surface.get()), size);
    std::vector<std::uint32_t> pixels;
    const unsigned char* data = cairo_image_surface_get_data(surface.get());
    for (int row = 0; data != nullptr && row < size; ++row) {
        const auto* line = reinterpret_cast<const std::uint32_t*>(
            data + static_cast<std::ptrdiff_t>(row) * cairo_image_surface_get_stride(surface.get()));
        pixels.insert(pixels.end(), line, line + size);
    }
    return pixels;
}

int greatestDifference(std::uint32_t one, std::uint32_t other) {
    int greatest = 0;
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        const int difference = static_cast<int>(one >> shift & 0xFFU) - static_cast<int>(other >> shift & 0xFFU);
        greatest = std::max(greatest, std::abs(difference));
    }
    return greatest;
}

class ItemIcon : public testing::TestWithParam<int> {};

TEST_P(ItemIcon, pixels_eachSize_areTheInstalledPicture) {
    const int size = GetParam();
    const std::vector<std::uint32_t> drawn = trayIconImage(size, size, size).pixels;
    const std::vector<std::uint32_t> installed = installedPixels(size);
    ASSERT_EQ(drawn.size(), installed.size());
    for (std::size_t index = 0; index < drawn.size(); ++index) {
        // Two ways of smoothing the edges differ a little there.
        EXPECT_LE(greatestDifference(drawn[index], installed[index]), 24) << "pixel " << index;
    }
}

TEST_P(ItemIcon, bytes_eachSize_areAlphaRedGreenBlue) {
    const int size = GetParam();
    const std::vector<std::uint32_t> pixels = itemIconPixels(size);
    const std::vector<std::uint8_t> bytes = itemIconBytes(size);
    ASSERT_EQ(bytes.size(), pixels.size() * 4);
    const std::size_t middle = pixels.size() / 2;
    EXPECT_EQ(bytes[middle * 4], pixels[middle] >> 24U);
    EXPECT_EQ(bytes[middle * 4 + 1], pixels[middle] >> 16U & 0xFFU);
    EXPECT_EQ(bytes[middle * 4 + 2], pixels[middle] >> 8U & 0xFFU);
    EXPECT_EQ(bytes[middle * 4 + 3], pixels[middle] & 0xFFU);
}

INSTANTIATE_TEST_SUITE_P(Sizes, ItemIcon, testing::ValuesIn(itemIconSizes));

TEST(TrayIconImage, picture_widerThanHigh_hasTheDrawingInTheMiddle) {
    const TrayImage image = trayIconImage(30, 16, 30);
    ASSERT_EQ(image.pixels.size(), 30U * 16U);
    const std::size_t middleRow = 8 * 30;
    EXPECT_EQ(image.pixels[middleRow + 6], 0U);
    EXPECT_NE(image.pixels[middleRow + 8], 0U);
    EXPECT_NE(image.pixels[middleRow + 21], 0U);
    EXPECT_EQ(image.pixels[middleRow + 23], 0U);
}

TEST(TrayIconImage, picture_partlyHidden_hasTheDrawingInTheMiddleOfTheRest) {
    const TrayImage image = trayIconImage(30, 16, 20);
    ASSERT_EQ(image.pixels.size(), 30U * 16U);
    const std::size_t middleRow = 8 * 30;
    EXPECT_EQ(image.pixels[middleRow + 1], 0U);
    EXPECT_NE(image.pixels[middleRow + 3], 0U);
    EXPECT_NE(image.pixels[middleRow + 16], 0U);
    EXPECT_EQ(image.pixels[middleRow + 18], 0U);
}

TEST(TrayIconImage, blended_transparentAndHalf_letTheBackgroundThrough) {
    const TrayImage front{.width = 3, .height = 1, .pixels = {0, 0x80800000, 0xFF0000FF}};
    const TrayImage back{.width = 3, .height = 1, .pixels = {0x00102030, 0x0000FF00, 0x00FFFFFF}};
    EXPECT_EQ(blended(front, back).pixels, (std::vector<std::uint32_t>{0xFF102030, 0xFF807F00, 0xFF0000FF}));
}

}  // namespace
}  // namespace vantrel::desktop
