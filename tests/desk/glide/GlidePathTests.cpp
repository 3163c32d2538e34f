// Where a glide takes the pointer: to the points of its curve and nowhere else.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/desk/glide/GlideDesk.hpp"

namespace vantrel::desk {
namespace {

/// Some ticks: enough for a nineteenth.
constexpr auto afterTheEnd = std::chrono::milliseconds(300);

class GlidePath : public testing::TestWithParam<GlideLayout> {
  protected:
    GlideDesk glide{GetParam()};
};

TEST_P(GlidePath, moves_all_areTheEighteenPointsOfTheCurve) {
    glide.jump();
    EXPECT_TRUE(glide.trace().waitForMoves(glideTicks));
    EXPECT_FALSE(glide.trace().waitForMove(afterTheEnd)) << "it goes on after the landing";
    EXPECT_EQ(glide.trace().path(), glide.curve());
    EXPECT_EQ(glide.desk().pointer().position(), glide.centre());
}

TEST_P(GlidePath, samples_all_lieOnTheCurveAndNeverGoBack) {
    auto points = glide.curve();
    points.insert(points.begin(), GlideDesk::start);
    auto reached = points.begin();
    glide.jump();
    EXPECT_TRUE(waitUntil([&] {
        const auto sample = glide.desk().pointer().position();
        const auto found = std::find(reached, points.end(), sample);
        if (found == points.end()) {
            ADD_FAILURE() << sample << " is not on the rest of the curve";
            return true;
        }
        reached = found;
        return sample == glide.centre();
    })) << glide.desk().pointer().position();
}

TEST_P(GlidePath, moves_wayBack_areTheCurveToTheDeparture) {
    glide.jump();
    ASSERT_TRUE(glide.trace().waitForMoves(glideTicks));
    glide.trace().forget();
    glide.jump();
    ASSERT_TRUE(glide.trace().waitForMoves(glideTicks)) << glide.desk().pointer().position();
    EXPECT_EQ(glide.trace().path(), glideCurve(glide.centre(), {GlideDesk::start.x, GlideDesk::start.y}));
}

INSTANTIATE_TEST_SUITE_P(Layouts, GlidePath, testing::Values(toTheRight, toTheLeft, above),
                         [](const auto& layout) { return layout.param.name; });

TEST(GlidePathOnOneDisplay, savedPoint_betweenPixels_landsRoundedDown) {
    GlideDesk glide;
    glide.agent().terminate();
    glide.desk().defaults().writeData("savedPoints", R"([{"id":"6F9619FF-8B86-4D11-B42D-00C04FC964FF","name":"Corner",)"
                                                     R"("point":{"x":100.75,"y":60.25}}])");
    const auto agent = glide.desk().startAgent();
    glide.desk().keyboard().type(controlOptionCommand(keys::m));
    ASSERT_TRUE(glide.trace().waitForMoves(glideTicks)) << glide.desk().pointer().position();
    EXPECT_EQ(glide.trace().path(), glideCurve(GlideDesk::start, {100.75, 60.25}));
    EXPECT_EQ(glide.desk().pointer().position(), (MainPoint{100, 60}));
}

}  // namespace
}  // namespace vantrel::desk
