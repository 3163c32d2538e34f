// After a glide the agent costs nothing again.
#include <gtest/gtest.h>

#include "tests/desk/glide/GlideDesk.hpp"
#include "tests/desk/support/ProcessActivity.hpp"

namespace vantrel::desk {
namespace {

TEST(GlideRest, agent_afterAGlide_isNotWokenForSeconds) {
    GlideDesk glide;
    glide.jump();
    ASSERT_TRUE(glide.trace().waitForMoves(glideTicks));
    // Not at once: the agent tidies up once after its start and folds the store's log when it has been idle.
    EXPECT_TRUE(waitUntilAtRest(glide.agent().processId(), std::chrono::seconds(3)));
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
