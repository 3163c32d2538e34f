// After a glide the agent costs nothing again.
#include <gtest/gtest.h>

#include <thread>

#include "tests/desk/glide/GlideDesk.hpp"
#include "tests/desk/support/ProcessActivity.hpp"

namespace vantrel::desk {
namespace {

TEST(GlideRest, agent_afterAGlide_isNotWokenAnyMore) {
    GlideDesk glide;
    glide.jump();
    ASSERT_TRUE(glide.trace().waitForMoves(glideTicks));
    ASSERT_TRUE(waitUntilAtRest(glide.agent().processId()));
    const auto switches = voluntarySwitches(glide.agent().processId());
    std::this_thread::sleep_for(std::chrono::seconds(3));
    EXPECT_EQ(voluntarySwitches(glide.agent().processId()), switches);
}

TEST(GlideRest, agent_glideToWhereThePointerIs_stillRunsEighteenTicks) {
    GlideDesk glide;
    glide.unplugSecond();
    glide.jump();
    EXPECT_TRUE(waitUntilAtRest(glide.agent().processId())) << "the timer goes on";
    EXPECT_EQ(glide.trace().path(), std::vector<MainPoint>(glideTicks, GlideDesk::start));
}

}  // namespace
}  // namespace vantrel::desk
