// What a person sees of the agent in a session of sway without a panel.
#include "tests/desk/messages/support/MessagesDesk.hpp"
#include "tests/desk/support/HelperProcess.hpp"

namespace vantrel::desk {
namespace {

class SwayMessages : public MessagesDesk {
  protected:
    SwayMessages() : MessagesDesk({.outputs = usualOptions().outputs, .configuration = {}, .files = {}}) {}

    /// What starting the program again does where no panel shows the item.
    void openMenu() {
        movePointer({.x = 300, .y = 200});
        rememberTheScreen();
        EXPECT_EQ(desk.startProgram()->waitForExit(), ordinaryEnd);
        EXPECT_TRUE(waitUntilSeenOn(mainOutput));
    }
};

TEST_F(SwayMessages, pointSaved_isSaidOnTheScreenForAMoment) {
    const auto vantrel = desk.startAgent();
    movePointer({.x = 300, .y = 200});
    rememberTheScreen();
    // On a busy machine the moment may be over before the message is seen: then it is asked for again.
    EXPECT_TRUE(waitUntil([&] {
        desk.person().type(hyper(keys::s));
        return waitUntil([&] { return seenOn(mainOutput).has_value(); }, std::chrono::seconds(2));
    }));
    EXPECT_TRUE(waitUntilNothingIsSeen());
    EXPECT_TRUE(desk.person().staysAt({.x = 300, .y = 200}));
}

TEST_F(SwayMessages, secondStart_opensTheMenuAndQuitEndsTheAgent) {
    const auto vantrel = desk.startAgent();
    openMenu();
    desk.person().type({keys::control, keys::q});
    EXPECT_EQ(vantrel->waitForExit(), ordinaryEnd);
    EXPECT_TRUE(waitUntilNothingIsSeen());
}

TEST_F(SwayMessages, secondStart_escape_leavesTheAgentAndItsKeys) {
    const auto vantrel = desk.startAgent();
    openMenu();
    desk.person().type({keys::escape});
    EXPECT_TRUE(waitUntilNothingIsSeen());
    EXPECT_TRUE(vantrel->isRunning());
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

TEST_F(SwayMessages, overlayKilledWithTheMenuOpen_theAgentOpensAnother) {
    const auto vantrel = desk.startAgent();
    openMenu();
    const auto first = overlayOf(vantrel->processId());
    killOverlay(vantrel->processId());
    ASSERT_TRUE(waitUntilNothingIsSeen());
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    openMenu();
    EXPECT_NE(overlayOf(vantrel->processId()), first);
    desk.person().type({keys::control, keys::q});
    EXPECT_EQ(vantrel->waitForExit(), ordinaryEnd);
}

}  // namespace
}  // namespace vantrel::desk
