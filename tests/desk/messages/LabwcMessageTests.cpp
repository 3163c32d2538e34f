// What a person sees of the agent in a session of labwc without a panel.
#include "tests/desk/messages/support/ScreenDesk.hpp"
#include "tests/desk/support/HelperProcess.hpp"
#include "tests/desk/wayland/support/LabwcProcess.hpp"

namespace vantrel::desk {
namespace {

using overlay::Rect;

constexpr std::string_view q = "AD01";
constexpr std::string_view escape = "ESC";
constexpr LayoutPoint onMain{.x = 300, .y = 200};
constexpr ExitStatus success{.code = 0, .signal = std::nullopt};

class LabwcMessages : public ScreenDesk {
  protected:
    LabwcMessages()
        : ScreenDesk(std::make_unique<WaylandDesk>(std::make_unique<LabwcProcess>(
              LabwcOptions{.outputs = usualOutputs(), .keyboard = {}, .autostart = {}}))) {}

    /// Starts the agent and waits until what it says at its start has gone.
    std::unique_ptr<AgentProcess> startAgent() {
        movePointer(onMain);
        rememberTheScreen();
        auto agent = session->startAgent();
        EXPECT_TRUE(waitUntilSeenOn(mainOutput)) << "that hot keys are off";
        EXPECT_TRUE(waitUntilNothingIsSeen());
        return agent;
    }

    /// What starting the program again does where no panel shows the item.
    Rect openMenu() {
        EXPECT_EQ(session->startProgram()->waitForExit(), success);
        EXPECT_TRUE(waitUntilSeenOn(mainOutput));
        return seenOn(mainOutput).value_or(Rect{});
    }

    void click() {
        session->person().pressButton();
        session->person().releaseButton();
    }
};

TEST_F(LabwcMessages, start_saysOnTheScreenThatHotKeysAreOff) {
    const auto agent = startAgent();
    EXPECT_EQ(agent->standardError(), "");
}

TEST_F(LabwcMessages, pointSaved_isSaidAndLeavesThePointerAlone) {
    const auto agent = startAgent();
    ASSERT_TRUE(session->savePoint());
    EXPECT_TRUE(waitUntilSeenOn(mainOutput));
    EXPECT_TRUE(waitUntilSeenOn(secondOutput));
    const Rect seen = seenOn(secondOutput).value_or(Rect{});
    EXPECT_TRUE(session->person().staysAt(onMain));
    // It lies above the person's window and lets the pointer through.
    movePointer({.x = secondCorner.x + seen.x + seen.width / 2.0, .y = secondCorner.y + seen.y + seen.height / 2.0});
    EXPECT_TRUE(waitUntilNothingIsSeen());
}

TEST_F(LabwcMessages, secondStart_opensTheMenuAtThePointer) {
    const auto agent = startAgent();
    const Rect menu = openMenu();
    EXPECT_EQ(menu.x, onMain.x);
    EXPECT_EQ(menu.y, onMain.y);
    EXPECT_FALSE(seenOn(secondOutput));
    session->person().type({keys::control, q});
    EXPECT_EQ(agent->waitForExit(), success);
    EXPECT_TRUE(waitUntilNothingIsSeen());
}

TEST_F(LabwcMessages, secondStart_escape_leavesTheAgentAndThePointerIsFree) {
    const auto agent = startAgent();
    openMenu();
    session->person().type({escape});
    EXPECT_TRUE(waitUntilNothingIsSeen());
    EXPECT_TRUE(agent->isRunning());
    EXPECT_TRUE(session->person().waitFor(onMain));
    const int clicks = session->person().clicks();
    click();
    EXPECT_EQ(session->person().clicks(), clicks + 1);
    EXPECT_TRUE(session->jump("vantrel://next", centreOfSecond));
}

}  // namespace
}  // namespace vantrel::desk
