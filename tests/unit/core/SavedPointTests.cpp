#include "VantrelCore/SavedPoint.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace vantrel {
namespace {

SavedPoint sample() {
    return SavedPoint{UUID{{1, 2, 3}}, "Point 1", VantrelPoint(10, 20), 5U};
}

TEST(SavedPoint, equality_allFieldsEqual_isTrue) {
    EXPECT_EQ(sample(), sample());
}

TEST(SavedPoint, equality_anyFieldDiffers_isFalse) {
    SavedPoint otherID = sample();
    otherID.id.bytes[15] = 1;
    SavedPoint otherName = sample();
    otherName.name = "point 1";
    SavedPoint otherPoint = sample();
    otherPoint.point.y = 21;
    SavedPoint otherDisplay = sample();
    otherDisplay.displayID = 6;
    for (const SavedPoint& other : {otherID, otherName, otherPoint, otherDisplay}) {
        EXPECT_NE(sample(), other) << other.name;
    }
}

TEST(SavedPoint, equality_absentAgainstZeroDisplay_isFalse) {
    SavedPoint absent = sample();
    absent.displayID = std::nullopt;
    SavedPoint zero = sample();
    zero.displayID = 0;
    EXPECT_NE(absent, zero);
}

TEST(SavedPoint, equality_zerosOfBothSigns_isTrue) {
    SavedPoint positive = sample();
    positive.point.x = 0.0;
    SavedPoint negative = sample();
    negative.point.x = -0.0;
    EXPECT_EQ(positive, negative);
}

TEST(SavedPoint, equality_notANumber_isFalseEvenWithItself) {
    SavedPoint point = sample();
    point.point.x = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(point == point);
}

}  // namespace
}  // namespace vantrel
