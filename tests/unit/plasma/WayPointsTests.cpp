#include "Vantrel/Backends/Plasma/WayPoints.hpp"

#include <gtest/gtest.h>

namespace vantrel::plasma {
namespace {

using wayland::LayoutPoint;

wayland::OutputDescription output(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) {
    wayland::OutputDescription description;
    description.x = x;
    description.y = y;
    description.width = width;
    description.height = height;
    return description;
}

TEST(WayPoints, wayPoints_sameDisplay_areNone) {
    EXPECT_TRUE(wayPoints(output(0, 0, 640, 480), output(0, 0, 640, 480)).empty());
}

TEST(WayPoints, wayPoints_sideBySide_leadThroughTheSharedEdge) {
    const auto way = wayPoints(output(0, 0, 1512, 982), output(1512, 400, 1024, 768));
    const LayoutPoint edge{.x = 2024, .y = 691};
    const LayoutPoint centre{.x = 2024, .y = 784};
    EXPECT_EQ(way, (std::vector<LayoutPoint>{edge, edge, edge, centre}));
}

TEST(WayPoints, wayPoints_stacked_leadThroughTheSharedEdge) {
    const auto way = wayPoints(output(0, 0, 1512, 982), output(500, 982, 1024, 768));
    const LayoutPoint edge{.x = 1006, .y = 1366};
    const LayoutPoint centre{.x = 1012, .y = 1366};
    EXPECT_EQ(way, (std::vector<LayoutPoint>{edge, edge, edge, centre}));
}

TEST(WayPoints, wayPoints_cornerAlone_insistOnTheCentre) {
    const auto target = output(640, 480, 400, 300);
    const auto way = wayPoints(output(0, 0, 640, 480), target);
    EXPECT_EQ(way, wayPointsFromAnywhere(target));
    EXPECT_EQ(way.front(), (LayoutPoint{.x = 840, .y = 630}));
    EXPECT_GT(way.size(), 20U);
}

TEST(WayPoints, wayPoints_edgeOfAFewPoints_countsAsACorner) {
    const auto target = output(640, 460, 400, 300);
    EXPECT_EQ(wayPoints(output(0, 0, 640, 480), target), wayPointsFromAnywhere(target));
}

class WayThroughDisplays : public testing::Test {
  protected:
    /// Three in a row, and a fourth that touches none of them.
    std::vector<wayland::Output> outputs{{.description = output(0, 0, 240, 180)},
                                         {.description = output(240, -280, 360, 480)},
                                         {.description = output(-144, 136, 144, 192)},
                                         {.description = output(1000, 1000, 240, 180)}};
};

TEST_F(WayThroughDisplays, fromEndToEnd_leadsThroughEachEdge) {
    auto way = wayPoints(outputs[1].description, outputs[0].description);
    const auto rest = wayPoints(outputs[0].description, outputs[2].description);
    way.insert(way.end(), rest.begin(), rest.end());
    EXPECT_EQ(wayPointsThrough(outputs, outputs[1], outputs[2]), way);
}

TEST_F(WayThroughDisplays, toTheNeighbour_isTheWayThroughTheirEdge) {
    EXPECT_EQ(wayPointsThrough(outputs, outputs[0], outputs[2]),
              wayPoints(outputs[0].description, outputs[2].description));
}

TEST_F(WayThroughDisplays, sameDisplay_isNone) {
    EXPECT_TRUE(wayPointsThrough(outputs, outputs[0], outputs[0]).empty());
}

TEST_F(WayThroughDisplays, toOneThatNoneTouches_insistsOnTheCentre) {
    EXPECT_EQ(wayPointsThrough(outputs, outputs[0], outputs[3]), wayPointsFromAnywhere(outputs[3].description));
}

}  // namespace
}  // namespace vantrel::plasma
