#include "helpers/messages/TextBox.hpp"

#include <gtest/gtest.h>

namespace vantrel::overlay {
namespace {

constexpr Font font{.points = 12, .isSemibold = true};

TEST(TextBox, bounds_eachDisplay_areNearItsTopInTheMiddle) {
    const Typesetter typesetter;
    for (const Rect& display : {Rect{0, 0, 1512, 982}, Rect{-1024, 100, 1024, 768}}) {
        const Rect bounds = TextBox(typesetter, "Saved", font, display).bounds();
        EXPECT_EQ(bounds.y, display.y + 48);
        EXPECT_LE(std::abs(2 * (bounds.x - display.x) + bounds.width - display.width), 1);
    }
}

TEST(TextBox, bounds_lowDisplay_areInItsUpperEighth) {
    const Typesetter typesetter;
    EXPECT_EQ(TextBox(typesetter, "Saved", font, {0, 0, 640, 160}).bounds().y, 20);
}

TEST(TextBox, bounds_endlessText_leavesTheSidesFree) {
    const Typesetter typesetter;
    std::string endless;
    for (int word = 0; word < 500; ++word) {
        endless += "word ";
    }
    const TextBox box(typesetter, endless, font, {0, 0, 1000, 800});
    EXPECT_GT(box.bounds().width, 500);
    EXPECT_LE(box.bounds().width, 640);
}

TEST(TextBox, bounds_twiceTheResolution_areTwiceAsLarge) {
    const Typesetter usual;
    const Typesetter fine(2 * Typesetter::usualDotsPerInch);
    const Rect small = TextBox(usual, "Saved", font, {0, 0, 1512, 982}).bounds();
    const Rect large = TextBox(fine, "Saved", font, {0, 0, 3024, 1964}).bounds();
    EXPECT_EQ(large.y, 2 * small.y);
    EXPECT_NEAR(large.width, 2 * small.width, 8);
    EXPECT_NEAR(large.height, 2 * small.height, 4);
}

}  // namespace
}  // namespace vantrel::overlay
