#include "VantrelCore/PlatformGeometry.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/unit/core/NotFinite.hpp"

namespace vantrel {
namespace {

struct StandardizeCase {
    CGRect given;
    CGRect expected;
};

TEST(CGRect, standardize_anySigns_movesTheOriginToTheSmallerEdge) {
    const StandardizeCase cases[] = {
        {{{100, 100}, {50, 60}}, {{100, 100}, {50, 60}}},
        {{{100, 100}, {-100, 50}}, {{0, 100}, {100, 50}}},
        {{{100, 100}, {50, -150}}, {{100, -50}, {50, 150}}},
        {{{-10, -20}, {-30, -40}}, {{-40, -60}, {30, 40}}},
        {{{5, 6}, {0, 0}}, {{5, 6}, {0, 0}}},
    };
    for (const StandardizeCase& row : cases) {
        const CGRect standard = CGRectStandardize(row.given);
        EXPECT_EQ(standard, row.expected);
        EXPECT_EQ(CGRectGetMinX(row.given), row.expected.origin.x);
        EXPECT_EQ(CGRectGetMinY(row.given), row.expected.origin.y);
        EXPECT_EQ(CGRectGetWidth(row.given), row.expected.size.width);
        EXPECT_EQ(CGRectGetHeight(row.given), row.expected.size.height);
    }
}

TEST(CGRect, isNull_originAtPositiveInfinity_isTrue) {
    EXPECT_TRUE(CGRectIsNull(CGRectNull()));
    EXPECT_TRUE(CGRectIsNull(CGRect{{infinity, 0}, {10, 10}}));
    EXPECT_TRUE(CGRectIsNull(CGRect{{0, infinity}, {10, 10}}));
}

TEST(CGRect, isNull_anyOtherRectangle_isFalse) {
    EXPECT_FALSE(CGRectIsNull(CGRect{}));
    EXPECT_FALSE(CGRectIsNull(CGRect{{-infinity, 0}, {infinity, 10}}));
    EXPECT_FALSE(CGRectIsNull(CGRect{{nan, nan}, {10, 10}}));
}

TEST(CGRect, standardize_nullRectangleWithASize_isTheNullRectangle) {
    EXPECT_EQ(CGRectStandardize(CGRect{{infinity, 3}, {-10, 10}}), CGRectNull());
    EXPECT_EQ(CGRectGetWidth(CGRect{{infinity, 3}, {-10, 10}}), 0);
    EXPECT_EQ(CGRectGetMinY(CGRect{{infinity, 3}, {-10, 10}}), infinity);
}

struct ContainsCase {
    const char* what;
    CGRect rect;
    CGPoint point;
    bool expected;
};

TEST(CGRect, containsPoint_table_followsTheHalfOpenRule) {
    const CGRect screen{{0, 0}, {1512, 982}};
    const ContainsCase cases[] = {
        {"top-left corner", screen, {0, 0}, true},
        {"just inside the far corner", screen, {1511.9, 981.9}, true},
        {"last float before the right edge", screen, {std::nextafter(1512.0, 0.0), 0}, true},
        {"right edge", screen, {1512, 500}, false},
        {"bottom edge", screen, {500, 982}, false},
        {"left of it", screen, {-0.5, 500}, false},
        {"negative zero is the left edge too", screen, {-0.0, -0.0}, true},
        {"above it", screen, {500, -0.5}, false},
        {"negative size: inside", {{100, 100}, {-100, 50}}, {0, 149}, true},
        {"negative size: its own origin is the right edge", {{100, 100}, {-100, 50}}, {100, 100}, false},
        {"no width", {{10, 10}, {0, 10}}, {10, 10}, false},
        {"no height", {{10, 10}, {10, 0}}, {10, 10}, false},
        {"null rectangle", CGRectNull(), {infinity, infinity}, false},
        {"null rectangle with a size", {{infinity, 0}, {10, 10}}, {5, 5}, false},
        {"x is not a number", screen, {nan, 5}, false},
        {"y is not a number", screen, {5, nan}, false},
        {"origin is not a number", {{nan, 0}, {10, 10}}, {5, 5}, false},
        {"width is not a number", {{0, 0}, {nan, 10}}, {5, 5}, false},
        {"height is not a number", {{0, 0}, {10, nan}}, {5, 5}, false},
        {"point at infinity", screen, {infinity, 5}, false},
        {"boundless to the right", {{0, 0}, {infinity, 10}}, {1e300, 5}, true},
    };
    for (const ContainsCase& row : cases) {
        EXPECT_EQ(CGRectContainsPoint(row.rect, row.point), row.expected) << row.what;
    }
}

}  // namespace
}  // namespace vantrel
