// What was stored before the pointer moved is there after the agent was killed, every time.
#include <gtest/gtest.h>

#include "tests/desk/support/Desk.hpp"

namespace vantrel::desk {
namespace {

TEST(Crash, killRightAfterTheMove_twoHundredTimes_losesNoPosition) {
    constexpr int kills = 200;
    Desk desk;
    MainPoint departure{.x = 700, .y = 500};
    MainPoint expected{.x = -512, .y = 484};
    desk.pointer().moveTo(departure);
    for (int kill = 0; kill < kills; ++kill) {
        const auto agent = desk.startAgent();
        desk.keyboard().type(hyper(keys::d));
        ASSERT_TRUE(desk.pointer().catchDeparture(departure)) << "kill " << kill;
        agent->kill();
        // The launch before this one was killed too: what it remembered is where this jump lands.
        ASSERT_EQ(desk.pointer().position(), expected) << "kill " << kill;
        expected = departure;
        const bool isOnMain = desk.pointer().position().x >= 0;
        departure = isOnMain ? MainPoint{.x = 100 + kill, .y = 300} : MainPoint{.x = -900 + kill, .y = 500};
        desk.pointer().moveTo(departure);
    }
}

TEST(Crash, killedAgent_leavesTheDisplayToTheNext) {
    Desk desk;
    desk.startAgent()->kill();
    const auto agent = desk.startAgent();
    EXPECT_TRUE(agent->isRunning());
    EXPECT_EQ(agent->standardError(), "");
}

}  // namespace
}  // namespace vantrel::desk
