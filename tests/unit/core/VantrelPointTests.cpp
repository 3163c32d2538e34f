#include "VantrelCore/VantrelPoint.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/unit/core/NotFinite.hpp"

namespace vantrel {
namespace {

TEST(VantrelPoint, construction_default_isTheOrigin) {
    EXPECT_EQ(VantrelPoint(), VantrelPoint(0, 0));
}

TEST(VantrelPoint, construction_twoCoordinates_keepsThemAsGiven) {
    const VantrelPoint point(-1020.25, infinity);
    EXPECT_EQ(point.x, -1020.25);
    EXPECT_EQ(point.y, infinity);
}

TEST(VantrelPoint, construction_platformPoint_copiesBothCoordinates) {
    const VantrelPoint point(CGPoint{3.5, -7});
    EXPECT_EQ(point.x, 3.5);
    EXPECT_EQ(point.y, -7);
}

TEST(VantrelPoint, cgPoint_negativeZero_keepsItsSign) {
    const CGPoint platformPoint = VantrelPoint(-0.0, 12).cgPoint();
    EXPECT_TRUE(std::signbit(platformPoint.x));
    EXPECT_EQ(platformPoint.y, 12);
}

TEST(VantrelPoint, equality_oneCoordinateDiffers_isFalse) {
    EXPECT_NE(VantrelPoint(1, 2), VantrelPoint(1, 3));
    EXPECT_NE(VantrelPoint(1, 2), VantrelPoint(0, 2));
}

TEST(VantrelPoint, equality_zerosOfBothSigns_isTrue) {
    EXPECT_EQ(VantrelPoint(0.0, -0.0), VantrelPoint(-0.0, 0.0));
}

TEST(VantrelPoint, equality_notANumber_isFalseEvenWithItself) {
    const VantrelPoint first(nan, 0);
    const VantrelPoint second(0, nan);
    EXPECT_FALSE(first == first);
    EXPECT_FALSE(second == second);
}

}  // namespace
}  // namespace vantrel
