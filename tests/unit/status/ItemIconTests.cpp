#include "Vantrel/Icon/ItemIcon.hpp"

#include <cairo/cairo.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "Vantrel/Backends/X11/Tray/TrayIconImage.hpp"

namespace vantrel::x11 {
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

TEST(ItemIcon, pixels_eachSize_areTheInstalledPicture) {
    ASSERT_EQ(itemIcons().size(), 6U);
    for (const ItemIcon& icon : itemIcons()) {
        EXPECT_EQ(trayIconImage(icon.size, icon.size, icon.size).pixels, installedPixels(icon.size)) << icon.size;
    }
}

TEST(ItemIcon, itemIconFitting_roomGiven_isTheLargestInIt) {
    EXPECT_EQ(itemIconFitting(10, 10).size, 16);
    EXPECT_EQ(itemIconFitting(22, 100).size, 22);
    EXPECT_EQ(itemIconFitting(100, 31).size, 24);
    EXPECT_EQ(itemIconFitting(500, 500).size, 64);
}

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

TEST(TrayIconImage, picture_smallerThanAnyDrawing_isItsMiddle) {
    const TrayImage image = trayIconImage(8, 6, 8);
    ASSERT_EQ(image.pixels.size(), 8U * 6U);
    EXPECT_NE(image.pixels[3 * 8 + 4], 0U);
}

TEST(TrayIconImage, blended_transparentAndHalf_letTheBackgroundThrough) {
    const TrayImage front{.width = 3, .height = 1, .pixels = {0, 0x80800000, 0xFF0000FF}};
    const TrayImage back{.width = 3, .height = 1, .pixels = {0x00102030, 0x0000FF00, 0x00FFFFFF}};
    EXPECT_EQ(blended(front, back).pixels, (std::vector<std::uint32_t>{0xFF102030, 0xFF807F00, 0xFF0000FF}));
}

}  // namespace
}  // namespace vantrel::x11
