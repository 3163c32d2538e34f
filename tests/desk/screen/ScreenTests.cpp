// Displays and pointer as a real X server has them.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "tests/desk/screen/ScreenProbe.hpp"
#include "tests/desk/support/ChildProcess.hpp"
#include "tests/desk/support/Desk.hpp"

namespace vantrel::desk {
namespace {

std::vector<CGRect> boundsOf(const std::vector<DisplaySnapshot>& displays) {
    std::vector<CGRect> bounds;
    for (const DisplaySnapshot& display : displays) {
        bounds.push_back(display.rect());
    }
    return bounds;
}

CGRect rect(double x, double y, double width, double height) {
    return CGRect{{x, y}, {width, height}};
}

const CGRect mainRect = rect(0, 0, 1512, 982);
const CGRect secondRect = rect(-1024, 100, 1024, 768);

class Screen : public testing::Test {
  protected:
    void xrandr(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "xrandr");
        runProgram(arguments, desk.environment());
    }

    Desk desk{{.hasSessionBus = false, .hasWindowManager = false}};
    ScreenProbe probe{desk.server().displayName()};
};

TEST_F(Screen, displays_twoMonitors_originIsTheMainDisplaysCorner) {
    EXPECT_EQ(boundsOf(probe.displays()), (std::vector{mainRect, secondRect}));
}

TEST_F(Screen, displays_secondOffAndOnAgain_keepsItsIdentifier) {
    const auto before = probe.displays();
    ASSERT_EQ(before.size(), 2U);
    desk.layout().apply({DisplayLayout::twoDisplays().front()});
    probe.turn();
    EXPECT_EQ(boundsOf(probe.displays()), std::vector{mainRect});
    EXPECT_EQ(probe.displays().front().id, before.front().id);
    desk.layout().apply(DisplayLayout::twoDisplays());
    probe.turn();
    EXPECT_EQ(probe.displays(), before);
}

TEST_F(Screen, displays_changedWithoutATurnOfTheLoop_areWhatTheServerHas) {
    const auto before = probe.displays();
    desk.layout().apply({DisplayLayout::twoDisplays().front()});
    probe.turn();
    probe.displays();
    desk.layout().apply(DisplayLayout::twoDisplays());
    // No turn: this is a jump whose layout changed a moment ago.
    EXPECT_EQ(probe.displays(), before);
}

TEST_F(Screen, displays_mirrored_isCountedOnce) {
    desk.layout().apply({{.output = 0, .bounds = {0, 0, 1512, 982}}, {.output = 1, .bounds = {0, 0, 1024, 768}}});
    probe.turn();
    EXPECT_EQ(boundsOf(probe.displays()), std::vector{mainRect});
}

TEST_F(Screen, displays_secondMoved_isWhereItIs) {
    desk.layout().apply({{.output = 0, .bounds = {0, 0, 1512, 982}}, {.output = 1, .bounds = {1512, -200, 1024, 768}}});
    probe.turn();
    EXPECT_EQ(boundsOf(probe.displays()), (std::vector{mainRect, rect(1512, -200, 1024, 768)}));
}

TEST_F(Screen, displays_otherPrimary_movesTheOrigin) {
    xrandr({"--output", "DUMMY1", "--primary"});
    probe.turn();
    const auto displays = probe.displays();
    ASSERT_EQ(displays.size(), 2U);
    EXPECT_EQ(boundsOf(displays), (std::vector{rect(0, 0, 1024, 768), rect(1024, -100, 1512, 982)}));
}

TEST_F(Screen, displays_splitByTheUserAndJoinedAgain_followsTheSplit) {
    const auto before = probe.displays();
    // The main display's left corner is at root (1024, 0) here.
    xrandr({"--setmonitor", "left", "756/200x982/260+1024+0", "DUMMY0"});
    xrandr({"--setmonitor", "right", "756/200x982/260+1780+0", "none"});
    probe.turn();
    auto bounds = boundsOf(probe.displays());
    ASSERT_EQ(bounds.size(), 3U);
    EXPECT_EQ(std::count(bounds.begin(), bounds.end(), rect(0, 0, 756, 982)), 1);
    EXPECT_EQ(std::count(bounds.begin(), bounds.end(), rect(756, 0, 756, 982)), 1);
    EXPECT_EQ(std::count(bounds.begin(), bounds.end(), secondRect), 1);
    xrandr({"--delmonitor", "left"});
    xrandr({"--delmonitor", "right"});
    probe.turn();
    EXPECT_EQ(probe.displays(), before);
}

TEST_F(Screen, pointer_anywhere_isReadInTheGlobalSpace) {
    for (const MainPoint point : {MainPoint{700, 500}, MainPoint{-512, 484}, MainPoint{-1024, 100}}) {
        desk.pointer().moveTo(point);
        probe.turn();
        EXPECT_EQ(probe.pointer(), (CGPoint{static_cast<double>(point.x), static_cast<double>(point.y)}));
    }
}

TEST_F(Screen, warp_wholeAndFractionalPoints_roundsDown) {
    probe.warp(-512, 484);
    EXPECT_TRUE(desk.pointer().waitFor({-512, 484}));
    probe.warp(100.9, 200.1);
    EXPECT_TRUE(desk.pointer().waitFor({100, 200}));
    probe.warp(-100.1, 200.9);
    EXPECT_TRUE(desk.pointer().waitFor({-101, 200}));
}

TEST_F(Screen, warp_farOutside_staysOnTheScreen) {
    probe.warp(1e300, -1e300);
    EXPECT_TRUE(desk.pointer().waitFor({1511, 0}));
}

TEST_F(Screen, warp_notANumber_movesNothing) {
    desk.pointer().moveTo({700, 500});
    probe.warp(std::numeric_limits<double>::quiet_NaN(), 5);
    probe.warp(5, std::numeric_limits<double>::infinity());
    EXPECT_TRUE(desk.pointer().staysAt({700, 500}));
}

TEST_F(Screen, pointer_afterAWarp_isTheNewPlace) {
    desk.pointer().moveTo({700, 500});
    EXPECT_EQ(probe.pointer(), (CGPoint{700, 500}));
    probe.warp(10, 20);
    EXPECT_EQ(probe.pointer(), (CGPoint{10, 20}));
}

}  // namespace
}  // namespace vantrel::desk
