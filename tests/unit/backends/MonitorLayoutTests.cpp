#include "Vantrel/Backends/Common/MonitorLayout.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <set>

namespace vantrel::backend {
namespace {

struct Place {
    std::int32_t x;
    std::int32_t y;
    std::int32_t width;
    std::int32_t height;
};

Monitor automatic(std::string connector, Place place, bool isPrimary = false, std::string edid = "") {
    return {connector, isPrimary, true, place.x, place.y, place.width, place.height, {{connector, std::move(edid)}}};
}

Monitor byUser(std::string name, Place place, bool isPrimary = false) {
    return {std::move(name), isPrimary, false, place.x, place.y, place.width, place.height, {}};
}

CGRect rect(double x, double y, double width, double height) {
    return CGRect{{x, y}, {width, height}};
}

std::vector<CGRect> boundsOf(const DisplayLayout& layout) {
    std::vector<CGRect> bounds;
    for (const ActiveDisplay& display : layout.displays) {
        bounds.push_back(display.bounds);
    }
    return bounds;
}

std::vector<std::uint32_t> idsOf(const DisplayLayout& layout) {
    std::vector<std::uint32_t> ids;
    for (const ActiveDisplay& display : layout.displays) {
        ids.push_back(display.id);
    }
    return ids;
}

const Place laptop{1024, 0, 1512, 982};
const Place tablet{0, 100, 1024, 768};

TEST(MonitorLayout, layoutOfMonitors_displayLeftOfThePrimary_hasNegativeCoordinates) {
    const auto layout = layoutOfMonitors({automatic("eDP-1", laptop, true), automatic("HDMI-1", tablet)});
    EXPECT_EQ(boundsOf(layout), (std::vector{rect(0, 0, 1512, 982), rect(-1024, 100, 1024, 768)}));
    EXPECT_EQ(layout.originX, 1024);
    EXPECT_EQ(layout.originY, 0);
}

TEST(MonitorLayout, layoutOfMonitors_noPrimary_firstMonitorIsTheMainDisplay) {
    const auto layout = layoutOfMonitors({automatic("HDMI-1", tablet), automatic("eDP-1", laptop)});
    EXPECT_EQ(boundsOf(layout), (std::vector{rect(0, 0, 1024, 768), rect(1024, -100, 1512, 982)}));
}

TEST(MonitorLayout, layoutOfMonitors_noMonitorsOrEmptyOnes_isEmpty) {
    EXPECT_TRUE(layoutOfMonitors({}).displays.empty());
    EXPECT_TRUE(layoutOfMonitors({automatic("A", {0, 0, 0, 900}), automatic("B", {0, 0, 900, 0})}).displays.empty());
}

TEST(MonitorLayout, layoutOfMonitors_userMonitorWithoutArea_hidesNothing) {
    const auto layout = layoutOfMonitors(
        {byUser("empty", {1500, 100, 0, 0}, true), automatic("eDP-1", laptop), automatic("A", tablet)});
    EXPECT_EQ(boundsOf(layout), (std::vector{rect(0, 0, 1512, 982), rect(-1024, 100, 1024, 768)}));
}

TEST(MonitorLayout, layoutOfMonitors_mirrorInsideALargerDisplay_isCountedOnce) {
    const auto layout =
        layoutOfMonitors({automatic("eDP-1", {100, 50, 800, 600}, true), automatic("HDMI-1", {0, 0, 1920, 1080})});
    EXPECT_EQ(boundsOf(layout), (std::vector{rect(0, 0, 1920, 1080)})) << "the main display is the one that is kept";
    EXPECT_EQ(layout.originX, 0);
}

TEST(MonitorLayout, layoutOfMonitors_equalMirrors_thePrimaryCounts) {
    const Place place{0, 0, 1920, 1080};
    const auto alone = layoutOfMonitors({automatic("HDMI-1", place, true)});
    const auto mirrored = layoutOfMonitors({automatic("eDP-1", place), automatic("HDMI-1", place, true)});
    EXPECT_EQ(idsOf(mirrored), idsOf(alone));
    EXPECT_EQ(layoutOfMonitors({automatic("eDP-1", place), automatic("HDMI-1", place)}).displays.size(), 1U);
}

TEST(MonitorLayout, layoutOfMonitors_overlapWithoutContainment_countsBoth) {
    EXPECT_EQ(layoutOfMonitors({automatic("A", {0, 0, 800, 600}), automatic("B", {400, 0, 800, 600})}).displays.size(),
              2U);
}

TEST(MonitorLayout, layoutOfMonitors_splitByTheUser_countsTheParts) {
    const auto layout =
        layoutOfMonitors({automatic("DP-1", {1000, 0, 2000, 1000}, true), byUser("left", {1000, 0, 1000, 1000}),
                          byUser("right", {2000, 0, 1000, 1000})});
    EXPECT_EQ(boundsOf(layout), (std::vector{rect(0, 0, 1000, 1000), rect(1000, 0, 1000, 1000)}));
}

TEST(MonitorLayout, layoutOfMonitors_userMonitorsInsideEachOther_countBoth) {
    EXPECT_EQ(layoutOfMonitors({byUser("all", {0, 0, 2000, 1000}), byUser("part", {0, 0, 500, 500})}).displays.size(),
              2U);
}

// Remembered positions are stored under these numbers: they may never change.
TEST(MonitorLayout, layoutOfMonitors_identifiers_areFrozen) {
    EXPECT_EQ(idsOf(layoutOfMonitors({automatic("DUMMY0", laptop, true), automatic("DUMMY1", tablet)})),
              (std::vector<std::uint32_t>{2688841746U, 2705619365U}));
    EXPECT_EQ(idsOf(layoutOfMonitors({automatic("DP-1", laptop, true, "10AC:A07B:3132334C:CN0X12")})),
              (std::vector<std::uint32_t>{2977460922U}));
    EXPECT_EQ(idsOf(layoutOfMonitors({byUser("left", laptop)})), (std::vector<std::uint32_t>{2078740468U}));
}

TEST(MonitorLayout, layoutOfMonitors_sameDisplayOnAnotherConnector_keepsItsIdentifier) {
    const auto before =
        layoutOfMonitors({automatic("DP-1", laptop, true), automatic("DP-2", tablet, false, "10AC:1:2:")});
    const auto after =
        layoutOfMonitors({automatic("DP-7", tablet, false, "10AC:1:2:"), automatic("DP-1", laptop, true)});
    EXPECT_EQ(idsOf(before)[1], idsOf(after)[0]);
}

TEST(MonitorLayout, layoutOfMonitors_equalDisplays_areToldApartByConnector) {
    const auto both =
        layoutOfMonitors({automatic("DP-2", tablet, false, "same"), automatic("DP-1", laptop, true, "same")});
    const auto one = layoutOfMonitors({automatic("DP-1", laptop, true, "same")});
    ASSERT_EQ(both.displays.size(), 2U);
    EXPECT_NE(idsOf(both)[0], idsOf(both)[1]);
    EXPECT_EQ(idsOf(both)[1], idsOf(one)[0]) << "the first keeps its identifier when its twin is unplugged";
}

TEST(MonitorLayout, layoutOfMonitors_sixteenDisplays_haveSixteenIdentifiersNotZero) {
    std::vector<Monitor> monitors;
    for (int index = 0; index < 16; ++index) {
        monitors.push_back(automatic("DP-" + std::to_string(index), {index * 800, 0, 800, 600}, index == 0, "same"));
    }
    const auto ids = idsOf(layoutOfMonitors(monitors));
    EXPECT_EQ(std::set<std::uint32_t>(ids.begin(), ids.end()).size(), 16U);
    EXPECT_EQ(std::count(ids.begin(), ids.end(), 0U), 0);
}

TEST(MonitorLayout, layoutOfMonitors_atTheEndOfAllNumbers_areDisplays) {
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
    const DisplayLayout layout =
        layoutOfMonitors({automatic("A", {.x = most, .y = most, .width = most, .height = most}, true),
                          automatic("B", {.x = least, .y = least, .width = 1, .height = 1})});
    EXPECT_EQ(boundsOf(layout), (std::vector{rect(0, 0, most, most), rect(2.0 * least + 1, 2.0 * least + 1, 1, 1)}));
}

}  // namespace
}  // namespace vantrel::backend
