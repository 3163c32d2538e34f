#include "Vantrel/Interface/SavedPointTexts.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vantrel {
namespace {

SavedPoint pointAt(double x, double y) {
    SavedPoint point;
    point.name = "Desk";
    point.point = VantrelPoint(x, y);
    return point;
}

TEST(SavedPointTexts, savedPointRowText_halves_roundAwayFromZero) {
    EXPECT_EQ(savedPointRowText(pointAt(100.5, -20.5)), "Desk - x 101, y -21");
    EXPECT_EQ(savedPointRowText(pointAt(0.5, -0.5)), "Desk - x 1, y -1");
    EXPECT_EQ(savedPointRowText(pointAt(2.5, 1.5)), "Desk - x 3, y 2");
}

TEST(SavedPointTexts, savedPointRowText_belowHalves_roundToNearestAndLoseTheSignOfZero) {
    EXPECT_EQ(savedPointRowText(pointAt(0.49999999999999994, -0.4)), "Desk - x 0, y 0");
    EXPECT_EQ(savedPointRowText(pointAt(-0.0, 1511.7)), "Desk - x 0, y 1512");
}

TEST(SavedPointTexts, savedPointRowText_displayKnown_namesIt) {
    SavedPoint point = pointAt(1512, -240);
    point.displayID = 2;
    EXPECT_EQ(savedPointRowText(point), "Desk - x 1512, y -240, display 2");
    point.displayID = 4294967295U;
    EXPECT_EQ(savedPointRowText(point), "Desk - x 1512, y -240, display 4294967295");
    point.displayID = 0;
    EXPECT_EQ(savedPointRowText(point), "Desk - x 1512, y -240, display 0");
}

TEST(SavedPointTexts, savedPointRowText_anyName_standsAsStored) {
    SavedPoint point = pointAt(1, 2);
    point.name = "";
    EXPECT_EQ(savedPointRowText(point), " - x 1, y 2");
    point.name = "Büro <b>&amp;</b>\n2";
    EXPECT_EQ(savedPointRowText(point), "Büro <b>&amp;</b>\n2 - x 1, y 2");
}

TEST(SavedPointTexts, savedPointRowText_endsOfTheIntegers_areShown) {
    EXPECT_EQ(savedPointRowText(pointAt(-9223372036854775808.0, 9223372036854774784.0)),
              "Desk - x -9223372036854775808, y 9223372036854774784");
}

TEST(SavedPointTextsDeathTest, savedPointRowText_coordinateBeyondIntegers_isFatal) {
    const double tooLarge = 9223372036854775808.0;
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double coordinate : {tooLarge, std::nextafter(-tooLarge, -infinity), 1e300, infinity, -infinity,
                                    std::numeric_limits<double>::quiet_NaN()}) {
        SCOPED_TRACE(coordinate);
        EXPECT_DEATH(savedPointRowText(pointAt(coordinate, 0)), "cannot be rounded");
        EXPECT_DEATH(savedPointRowText(pointAt(0, coordinate)), "cannot be rounded");
    }
}

TEST(SavedPointTexts, savedPointsSummary_counts_useTheirForm) {
    EXPECT_EQ(savedPointsSummary(0), "No saved cursor points.");
    EXPECT_EQ(savedPointsSummary(1), "1 saved cursor point.");
    EXPECT_EQ(savedPointsSummary(2), "2 saved cursor points.");
    EXPECT_EQ(savedPointsSummary(1000), "1000 saved cursor points.");
}

}  // namespace
}  // namespace vantrel
