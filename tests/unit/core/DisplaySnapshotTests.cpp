#include "VantrelCore/DisplaySnapshot.hpp"

#include <gtest/gtest.h>

#include "tests/unit/core/NotFinite.hpp"

namespace vantrel {
namespace {

TEST(DisplaySnapshot, construction_fiveValues_keepsThemUnchecked) {
    const DisplaySnapshot display(4294967295U, 100, 200, -30, -40);
    EXPECT_EQ(display.id, 4294967295U);
    EXPECT_EQ(display.rect(), (CGRect{{100, 200}, {-30, -40}}));
}

TEST(DisplaySnapshot, construction_boundsOfNegativeSize_areStandardised) {
    const DisplaySnapshot display(7, CGRect{{100, 100}, {-100, 50}});
    EXPECT_EQ(display, DisplaySnapshot(7, 0, 100, 100, 50));
}

TEST(DisplaySnapshot, construction_nullBounds_liesAtInfinityAndContainsNothing) {
    const DisplaySnapshot display(7, CGRectNull());
    EXPECT_EQ(display, DisplaySnapshot(7, infinity, infinity, 0, 0));
    EXPECT_FALSE(display.contains(VantrelPoint(infinity, infinity)));
}

TEST(DisplaySnapshot, center_displayToTheLeft_isNegative) {
    EXPECT_EQ(DisplaySnapshot(1, -1440, 0, 1440, 900).center(), VantrelPoint(-720, 450));
}

TEST(DisplaySnapshot, center_oddSize_isBetweenPixels) {
    EXPECT_EQ(DisplaySnapshot(1, 0, 0, 1365, 767).center(), VantrelPoint(682.5, 383.5));
}

TEST(DisplaySnapshot, contains_edges_belongToTheNeighbourOnTheRightAndBelow) {
    const DisplaySnapshot display(1, 0, 0, 1512, 982);
    const DisplaySnapshot neighbour(2, 1512, 0, 1512, 982);
    EXPECT_TRUE(display.contains(VantrelPoint(0, 0)));
    EXPECT_TRUE(display.contains(VantrelPoint(1511.9, 981.9)));
    EXPECT_FALSE(display.contains(VantrelPoint(1512, 500)));
    EXPECT_FALSE(display.contains(VantrelPoint(500, 982)));
    EXPECT_TRUE(neighbour.contains(VantrelPoint(1512, 500)));
}

TEST(DisplaySnapshot, contains_noWidth_isFalseForItsOwnOrigin) {
    EXPECT_FALSE(DisplaySnapshot(1, 10, 20, 0, 100).contains(VantrelPoint(10, 20)));
}

TEST(DisplaySnapshot, contains_negativeSizeKept_usesTheStandardisedArea) {
    const DisplaySnapshot display(1, 100, 100, -100, -50);
    EXPECT_TRUE(display.contains(VantrelPoint(0, 50)));
    EXPECT_FALSE(display.contains(VantrelPoint(100, 100)));
}

TEST(DisplaySnapshot, contains_notANumber_isFalse) {
    EXPECT_FALSE(DisplaySnapshot(1, 0, 0, 10, 10).contains(VantrelPoint(nan, 5)));
    EXPECT_FALSE(DisplaySnapshot(1, 0, 0, 10, 10).contains(VantrelPoint(5, nan)));
}

TEST(DisplaySnapshot, equality_anyFieldDiffers_isFalse) {
    const DisplaySnapshot display(1, 2, 3, 4, 5);
    EXPECT_EQ(display, DisplaySnapshot(1, 2, 3, 4, 5));
    for (const DisplaySnapshot& other :
         {DisplaySnapshot(9, 2, 3, 4, 5), DisplaySnapshot(1, 9, 3, 4, 5), DisplaySnapshot(1, 2, 9, 4, 5),
          DisplaySnapshot(1, 2, 3, 9, 5), DisplaySnapshot(1, 2, 3, 4, 9), DisplaySnapshot(1, nan, 3, 4, 5)}) {
        EXPECT_NE(display, other);
    }
}

TEST(DisplaySnapshot, equality_zerosOfBothSigns_isTrue) {
    EXPECT_EQ(DisplaySnapshot(1, 0.0, -0.0, 4, 5), DisplaySnapshot(1, -0.0, 0.0, 4, 5));
}

}  // namespace
}  // namespace vantrel
