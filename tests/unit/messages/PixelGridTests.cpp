#include "helpers/messages/PixelGrid.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace vantrel::overlay {
namespace {

TEST(PixelGrid, onPixelEdges_wholeScales_changeNothing) {
    constexpr Rect rect{.x = 455, .y = 48, .width = 91, .height = 37};
    EXPECT_EQ(onPixelEdges(rect, 1), rect);
    EXPECT_EQ(onPixelEdges(rect, 2), rect);
}

TEST(PixelGrid, onPixelEdges_fractionalScales_areTheNextPointsThatAreWholePixels) {
    constexpr Rect rect{.x = 455, .y = 48, .width = 91, .height = 37};
    EXPECT_EQ(onPixelEdges(rect, 1.5), (Rect{454, 48, 92, 38}));
    EXPECT_EQ(onPixelEdges(rect, 1.25), (Rect{452, 48, 96, 40}));
    EXPECT_EQ(onPixelEdges({-5, -4, 3, 4}, 1.25), (Rect{-8, -4, 8, 4}));
}

TEST(PixelGrid, onPixelEdges_everyScale_holdsTheRectangleInWholePixels) {
    constexpr Rect rect{.x = 455, .y = 49, .width = 91, .height = 37};
    for (int step = 120; step <= 360; ++step) {
        const double scale = step / 120.0;
        const Rect grown = onPixelEdges(rect, scale);
        EXPECT_LE(grown.x, rect.x);
        EXPECT_LE(grown.y, rect.y);
        EXPECT_GE(grown.x + grown.width, rect.x + rect.width);
        EXPECT_GE(grown.y + grown.height, rect.y + rect.height);
        for (const int edge : {grown.x, grown.y, grown.width, grown.height}) {
            EXPECT_NEAR(edge * scale, std::round(edge * scale), 1e-6) << scale;
        }
    }
}

}  // namespace
}  // namespace vantrel::overlay
