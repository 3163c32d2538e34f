// What may come between: a slow machine, a second jump, a display that goes, the agent's end.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/desk/glide/GlideDesk.hpp"
#include "tests/desk/support/ProcessActivity.hpp"

namespace vantrel::desk {
namespace {

TEST(GlideInterruption, lateTicks_goOnWhereTheyWere) {
    GlideDesk glide;
    glide.stopInMidGlide();
    // Longer than the rest of the glide: what is late is not caught up with in a leap.
    ASSERT_TRUE(glide.desk().pointer().staysAt(glide.desk().pointer().position(), std::chrono::milliseconds(300)));
    glide.goOn();
    ASSERT_TRUE(glide.trace().waitForMoves(glideTicks)) << glide.desk().pointer().position();
    EXPECT_EQ(glide.trace().path(), glide.curve());
}

TEST(GlideInterruption, secondJump_inMidGlide_startsFromWhereThePointerIs) {
    GlideDesk glide;
    glide.stopInMidGlide();
    const int passed = glide.ticksPassed();
    ASSERT_GT(passed, 0) << "the pointer left the curve";
    glide.jump();
    glide.goOn();
    const auto firstCurve = glide.curve();
    // A tick or two of the first glide may stand before the key press.
    std::vector<std::vector<MainPoint>> possible;
    for (auto ticks = static_cast<std::size_t>(passed); ticks < firstCurve.size(); ++ticks) {
        std::vector<MainPoint> points(firstCurve.begin(), firstCurve.begin() + static_cast<std::ptrdiff_t>(ticks));
        const MainPoint turn = points.back();
        const bool isOnMain = turn.x < GlideDesk::mainBounds.width;
        const auto target = isOnMain ? glide.target() : GlideTarget{GlideDesk::start.x, GlideDesk::start.y};
        const auto second = glideCurve(turn, target);
        points.insert(points.end(), second.begin(), second.end());
        possible.push_back(std::move(points));
    }
    ASSERT_TRUE(waitUntilAtRest(glide.agent().processId()));
    EXPECT_NE(std::find(possible.begin(), possible.end(), glide.trace().path()), possible.end())
        << testing::PrintToString(glide.trace().path()) << " after " << passed << " ticks of "
        << testing::PrintToString(firstCurve);
}

TEST(GlideInterruption, secondJumps_manyInMidGlide_endAtRest) {
    constexpr int jumps = 25;
    GlideDesk glide;
    for (int jump = 0; jump < jumps; ++jump) {
        glide.trace().forget();
        glide.jump();
        ASSERT_TRUE(glide.trace().waitForMove()) << "jump " << jump;
    }
    EXPECT_TRUE(waitUntilAtRest(glide.agent().processId()));
    EXPECT_TRUE(glide.agent().isRunning());
    EXPECT_EQ(glide.agent().standardError(), "");
}

TEST(GlideInterruption, mouseMoved_inMidGlide_isOverruledByTheNextTick) {
    GlideDesk glide;
    glide.stopInMidGlide();
    glide.desk().pointer().moveTo({20, 900});
    glide.goOn();
    ASSERT_TRUE(glide.trace().waitForMoveTo(glide.centre())) << glide.desk().pointer().position();
    // The pointer obeys the mouse again right afterwards.
    glide.desk().pointer().moveTo({33, 44});
    EXPECT_TRUE(glide.desk().pointer().staysAt({33, 44}));
}

TEST(GlideInterruption, targetUnplugged_inMidGlide_endsTheGlideOnWhatIsLeft) {
    GlideDesk glide;
    glide.stopInMidGlide();
    glide.unplugSecond();
    glide.goOn();
    ASSERT_TRUE(waitUntilAtRest(glide.agent().processId())) << "the timer goes on";
    EXPECT_TRUE(glide.agent().isRunning());
    EXPECT_EQ(glide.agent().standardError(), "");
    const auto place = glide.desk().pointer().position();
    EXPECT_TRUE(place.x >= 0 && place.x < GlideDesk::mainBounds.width) << place;
    EXPECT_TRUE(place.y >= 0 && place.y < GlideDesk::mainBounds.height) << place;

    glide.plugSecond();
    glide.desk().pointer().moveTo(GlideDesk::start);
    glide.trace().forget();
    glide.jump();
    EXPECT_TRUE(glide.trace().waitForMoveTo(glide.centre())) << glide.desk().pointer().position();
}

class GlideEnd : public testing::TestWithParam<int> {};

TEST_P(GlideEnd, signal_inMidGlide_leavesThePointerOnItsWay) {
    // A signal is handled when its turn comes; on a busy machine the glide may have ended by then.
    constexpr int attempts = 10;
    int passed = glideTicks;
    for (int attempt = 0; attempt < attempts && passed == glideTicks; ++attempt) {
        GlideDesk glide;
        glide.stopInMidGlide();
        glide.agent().sendSignal(GetParam());
        glide.goOn();
        EXPECT_EQ(glide.agent().waitForExit(), ordinaryEnd);
        EXPECT_EQ(glide.agent().standardError(), "");
        EXPECT_TRUE(glide.desk().pointer().staysAt(glide.trace().path().back()));
        passed = glide.ticksPassed();
        ASSERT_GT(passed, 0) << "the pointer left the curve";
    }
    EXPECT_LT(passed, glideTicks) << "no glide was ended on its way";
}

INSTANTIATE_TEST_SUITE_P(Signals, GlideEnd, testing::Values(SIGTERM, SIGINT, SIGHUP));

}  // namespace
}  // namespace vantrel::desk
