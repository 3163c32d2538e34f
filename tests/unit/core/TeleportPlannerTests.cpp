#include "VantrelCore/TeleportPlanner.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "tests/unit/core/NotFinite.hpp"

namespace vantrel {
namespace {

using Planner = TeleportPlanner;
using enum TeleportDirection;

const DisplaySnapshot mainDisplay(1, 0, 0, 1512, 982);
const DisplaySnapshot leftDisplay(2, -1024, 100, 1024, 768);
const std::vector<DisplaySnapshot> desk{mainDisplay, leftDisplay};
const std::vector<DisplaySnapshot> nothing;

std::vector<std::uint32_t> ids(const std::vector<DisplaySnapshot>& displays) {
    std::vector<std::uint32_t> result;
    for (const DisplaySnapshot& display : displays) {
        result.push_back(display.id);
    }
    return result;
}

TEST(TeleportPlanner, sortedDisplays_displayOnTheLeft_comesFirst) {
    EXPECT_EQ(ids(Planner::sortedDisplays(desk)), (std::vector<std::uint32_t>{2, 1}));
}

TEST(TeleportPlanner, sortedDisplays_stacked_goesDownwards) {
    const std::vector<DisplaySnapshot> stack{{1, 0, 0, 1440, 900}, {2, 0, 900, 1440, 900}, {3, 0, -900, 1440, 900}};
    EXPECT_EQ(ids(Planner::sortedDisplays(stack)), (std::vector<std::uint32_t>{3, 1, 2}));
}

TEST(TeleportPlanner, sortedDisplays_sameOrigin_keepsTheGivenOrder) {
    const std::vector<DisplaySnapshot> layout{
        {9, 0, 0, 10, 10}, {3, -5, 0, 1, 1}, {7, 0, 0, 5, 5}, {1, 0, -0.0, 900, 9}};
    EXPECT_EQ(ids(Planner::sortedDisplays(layout)), (std::vector<std::uint32_t>{3, 9, 7, 1}));
}

TEST(TeleportPlanner, sortedDisplays_givenList_isLeftAlone) {
    const std::vector<DisplaySnapshot> given = desk;
    static_cast<void>(Planner::sortedDisplays(given));
    EXPECT_EQ(given, desk);
}

TEST(TeleportPlanner, displayIndex_edgeBetweenTwo_belongsToTheRightOne) {
    EXPECT_EQ(Planner::displayIndex(VantrelPoint(0, 500), desk), 0U);
    EXPECT_EQ(Planner::displayIndex(VantrelPoint(-0.5, 500), desk), 1U);
}

TEST(TeleportPlanner, displayIndex_overlapping_givesTheFirstInTheGivenOrder) {
    const std::vector<DisplaySnapshot> layout{{1, 0, 0, 100, 100}, {2, 50, 50, 100, 100}, {3, -50, -50, 300, 300}};
    EXPECT_EQ(Planner::displayIndex(VantrelPoint(60, 60), layout), 0U);
    EXPECT_EQ(Planner::displayIndex(VantrelPoint(120, 120), layout), 1U);
    EXPECT_EQ(Planner::displayIndex(VantrelPoint(200, 200), layout), 2U);
}

TEST(TeleportPlanner, displayIndex_onNoDisplay_givesNone) {
    EXPECT_EQ(Planner::displayIndex(VantrelPoint(5000, 5000), desk), std::nullopt);
    EXPECT_EQ(Planner::displayIndex(VantrelPoint(-500, 50), desk), std::nullopt);
    EXPECT_EQ(Planner::displayIndex(VantrelPoint(nan, 500), desk), std::nullopt);
}

TEST(TeleportPlanner, nearestDisplayIndex_outsideBoth_givesTheNearerCentre) {
    EXPECT_EQ(Planner::nearestDisplayIndex(VantrelPoint(5000, 5000), desk), 0U);
    EXPECT_EQ(Planner::nearestDisplayIndex(VantrelPoint(-5000, 5000), desk), 1U);
}

TEST(TeleportPlanner, nearestDisplayIndex_closeEdgeAgainstCloseCentre_givesTheCentre) {
    const std::vector<DisplaySnapshot> layout{{1, 0, 0, 4000, 100}, {2, 0, 120, 100, 100}};
    // Just below the wide display's left end: its edge is 5 away, its centre 1900; the small display's centre is 64.
    EXPECT_EQ(Planner::nearestDisplayIndex(VantrelPoint(100, 105), layout), 1U);
}

TEST(TeleportPlanner, nearestDisplayIndex_equallyFar_givesTheEarlier) {
    const std::vector<DisplaySnapshot> layout{{5, 100, 0, 100, 100}, {6, -200, 0, 100, 100}, {7, 100, 0, 100, 100}};
    EXPECT_EQ(Planner::nearestDisplayIndex(VantrelPoint(0, 50), layout), 0U);
}

TEST(TeleportPlanner, nearestDisplayIndex_equallyFarAcrossAndDown_givesTheEarlier) {
    // The squares are summed in the other order: a fused multiply-add would break this tie by its rounding.
    const std::vector<DisplaySnapshot> layout{{1, 0.1, 0.4, 0, 0}, {2, 0.4, 0.1, 0, 0}};
    EXPECT_EQ(Planner::nearestDisplayIndex(VantrelPoint(0, 0), layout), 0U);
    const std::vector<DisplaySnapshot> swapped{layout[1], layout[0]};
    EXPECT_EQ(Planner::nearestDisplayIndex(VantrelPoint(0, 0), swapped), 0U);
}

TEST(TeleportPlanner, nearestDisplayIndex_notANumber_neverReplacesNorIsReplaced) {
    const DisplaySnapshot lost(1, nan, 0, 10, 10);
    const DisplaySnapshot here(2, 0, 0, 10, 10);
    EXPECT_EQ(Planner::nearestDisplayIndex(VantrelPoint(5, 5), std::vector{lost, here}), 0U);
    EXPECT_EQ(Planner::nearestDisplayIndex(VantrelPoint(5, 5), std::vector{here, lost}), 0U);
    EXPECT_EQ(Planner::nearestDisplayIndex(VantrelPoint(nan, 5), desk), 0U);
}

TEST(TeleportPlanner, nearestDisplayIndex_oneDisplay_givesItWhateverItsBounds) {
    EXPECT_EQ(Planner::nearestDisplayIndex(VantrelPoint(5, 5), std::vector{DisplaySnapshot(1, nan, nan, nan, nan)}),
              0U);
}

TEST(TeleportPlanner, targetIndex_twoDisplays_isTheOtherInEitherDirection) {
    for (const TeleportDirection direction : {next, previous}) {
        EXPECT_EQ(Planner::targetIndex(VantrelPoint(700, 500), desk, direction), 0U);
        EXPECT_EQ(Planner::targetIndex(VantrelPoint(-500, 500), desk, direction), 1U);
    }
}

TEST(TeleportPlanner, targetIndex_rowOfThree_stepsAndWraps) {
    const std::vector<DisplaySnapshot> row{{3, 200, 0, 100, 100}, {1, 0, 0, 100, 100}, {2, 100, 0, 100, 100}};
    const std::size_t nexts[] = {1, 2, 0};
    const std::size_t previouses[] = {2, 0, 1};
    for (std::size_t current = 0; current < 3; ++current) {
        const VantrelPoint pointer(static_cast<double>(current) * 100 + 50, 50);
        EXPECT_EQ(Planner::targetIndex(pointer, row, next), nexts[current]);
        EXPECT_EQ(Planner::targetIndex(pointer, row, previous), previouses[current]);
    }
}

TEST(TeleportPlanner, targetIndex_oneDisplay_isItself) {
    const std::vector<DisplaySnapshot> single{mainDisplay};
    for (const VantrelPoint& pointer : {VantrelPoint(5, 5), VantrelPoint(-9000, 5), VantrelPoint(nan, nan)}) {
        EXPECT_EQ(Planner::targetIndex(pointer, single, next), 0U);
        EXPECT_EQ(Planner::targetIndex(pointer, single, previous), 0U);
    }
}

TEST(TeleportPlanner, targetIndex_pointerOutside_countsFromTheNearest) {
    EXPECT_EQ(Planner::targetIndex(VantrelPoint(5000, 5000), desk, next), 0U);
}

TEST(TeleportPlanner, targetPoint_nothingRemembered_isTheCentre) {
    for (const TeleportDirection direction : {next, previous}) {
        EXPECT_EQ(Planner::targetPoint(VantrelPoint(700, 500), desk, direction, {}), VantrelPoint(-512, 484));
    }
}

struct RememberedCase {
    VantrelPoint remembered;
    VantrelPoint expected;
};

TEST(TeleportPlanner, targetPoint_remembered_isPulledInsideTheMargin) {
    const RememberedCase cases[] = {
        {{-1020, 102}, {-1000, 124}},  {{-3, 867}, {-24, 844}},
        {{-512, 300}, {-512, 300}},    {{-1000, 124}, {-1000, 124}},
        {{9000, -9000}, {-24, 124}},   {{-24, 844}, {-24, 844}},
        {{-1e300, 500}, {-1000, 500}}, {{-23.999, 500.25}, {-24, 500.25}},
    };
    for (const RememberedCase& row : cases) {
        const RememberedPositions remembered{{1, VantrelPoint(1, 1)}, {2, row.remembered}};
        EXPECT_EQ(Planner::targetPoint(VantrelPoint(700, 500), desk, next, remembered), row.expected);
    }
}

TEST(TeleportPlanner, targetPoint_rememberedForOthersOnly_isTheCentre) {
    const RememberedPositions remembered{{1, VantrelPoint(1, 1)}, {3, VantrelPoint(2, 2)}};
    EXPECT_EQ(Planner::targetPoint(VantrelPoint(700, 500), desk, next, remembered), VantrelPoint(-512, 484));
}

TEST(TeleportPlanner, targetPoint_pointerElsewhereOnTheDisplay_makesNoDifference) {
    for (const VantrelPoint& pointer : {VantrelPoint(0, 0), VantrelPoint(1511, 981), VantrelPoint(30, 900)}) {
        EXPECT_EQ(Planner::targetPoint(pointer, desk, next, {}), VantrelPoint(-512, 484));
    }
}

TEST(TeleportPlanner, targetPoint_oneDisplay_isItsRememberedPositionOrCentre) {
    const std::vector<DisplaySnapshot> single{mainDisplay};
    EXPECT_EQ(Planner::targetPoint(VantrelPoint(5, 5), single, next, {}), VantrelPoint(756, 491));
    const RememberedPositions remembered{{1, VantrelPoint(3, 700)}};
    EXPECT_EQ(Planner::targetPoint(VantrelPoint(5, 5), single, previous, remembered), VantrelPoint(24, 700));
}

TEST(TeleportPlanner, everyOperation_emptyLayout_givesNone) {
    const VantrelPoint pointer(1, 2);
    EXPECT_TRUE(Planner::sortedDisplays(nothing).empty());
    EXPECT_EQ(Planner::displayIndex(pointer, nothing), std::nullopt);
    EXPECT_EQ(Planner::nearestDisplayIndex(pointer, nothing), std::nullopt);
    EXPECT_EQ(Planner::targetIndex(pointer, nothing, next), std::nullopt);
    EXPECT_EQ(Planner::targetPoint(pointer, nothing, next, {{1, pointer}}), std::nullopt);
}

struct ClampCase {
    const char* what;
    DisplaySnapshot display;
    VantrelPoint point;
    double margin;
    VantrelPoint expected;
};

TEST(TeleportPlanner, clamped_table_usesOneMarginForBothAxes) {
    const DisplaySnapshot narrow(1, 0, 0, 40, 900);
    const DisplaySnapshot low(1, 100, 100, 900, 30);
    const ClampCase cases[] = {
        {"inside stays", mainDisplay, {700, 500}, 24, {700, 500}},
        {"far corner", mainDisplay, {1512, 982}, 24, {1488, 958}},
        {"near corner", mainDisplay, {-0.0, 0}, 24, {24, 24}},
        {"narrow: centre line, small margin down", narrow, {-500, 1}, 24, {20, 20}},
        {"narrow: and at the bottom", narrow, {500, 899}, 24, {20, 880}},
        {"narrow: y inside stays", narrow, {39, 450}, 24, {20, 450}},
        {"low: centre line, small margin across", low, {100, 0}, 24, {115, 115}},
        {"low: right end", low, {1000, 500}, 24, {985, 115}},
        {"exactly twice the margin", DisplaySnapshot(1, 0, 0, 48, 100), {0, 0}, 24, {24, 24}},
        {"no size", DisplaySnapshot(1, 10, 20, 0, 0), {-5, 99}, 24, {10, 20}},
        {"no margin", mainDisplay, {1600, -3}, 0, {1512, 0}},
        {"a negative margin lets the point out", mainDisplay, {1600, -3}, -10, {1522, -3}},
    };
    for (const ClampCase& row : cases) {
        EXPECT_EQ(Planner::clamped(row.point, row.display, row.margin), row.expected) << row.what;
    }
}

TEST(TeleportPlanner, clamped_notANumber_passesThrough) {
    const VantrelPoint point = Planner::clamped(VantrelPoint(nan, 5000), mainDisplay, 24);
    EXPECT_TRUE(std::isnan(point.x));
    EXPECT_EQ(point.y, 958);
}

TEST(TeleportPlanner, clamped_zeroOfTheOtherSign_becomesTheEdgesZero) {
    const VantrelPoint point = Planner::clamped(VantrelPoint(-0.0, -0.0), mainDisplay, 0);
    EXPECT_FALSE(std::signbit(point.x));
    EXPECT_FALSE(std::signbit(point.y));
}

TEST(TeleportPlanner, clamped_limitsCrossedByRounding_theRightAndLowerOneWins) {
    // The middle of the display, reckoned from its left edge, is a hair to the right of the middle reckoned from its
    // right one.
    const DisplaySnapshot sliver(1, 1.8, 1.8, 7.8, 7.8);
    const double middle = 1.8 + 7.8 - 3.9;
    ASSERT_GT(1.8 + 3.9, middle);
    for (const double coordinate : {-5.0, 5.7, 50.0}) {
        EXPECT_EQ(Planner::clamped(VantrelPoint(coordinate, coordinate), sliver, 24), VantrelPoint(middle, middle));
    }
}

TEST(TeleportPlanner, clamped_infinite_landsAtTheMargin) {
    EXPECT_EQ(Planner::clamped(VantrelPoint(infinity, -infinity), mainDisplay, 24), VantrelPoint(1488, 24));
}

}  // namespace
}  // namespace vantrel
