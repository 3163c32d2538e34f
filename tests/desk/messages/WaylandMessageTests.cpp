// What a person sees of the agent in Wayland sessions of any kind without a panel.
#include "tests/desk/messages/support/ScreenDesk.hpp"
#include "tests/desk/support/HelperProcess.hpp"
#include "tests/desk/wayland/support/InstalledCompositors.hpp"

namespace vantrel::desk {
namespace {

using overlay::Rect;

constexpr LayoutPoint onMain{.x = 300, .y = 200};
constexpr ExitStatus success{.code = 0, .signal = std::nullopt};

class WaylandMessages : public ScreenDesk, public testing::WithParamInterface<CompositorKind> {
  protected:
    WaylandMessages() : ScreenDesk(std::make_unique<WaylandDesk>(GetParam().start(usualOutputs()))) {}

    /// Starts the agent and waits until what it says at its start, if it does, has gone.
    std::unique_ptr<AgentProcess> startAgent() {
        movePointer(onMain);
        rememberTheScreen();
        auto agent = session->startAgent();
        if (!GetParam().bindsHotKeys) {
            // On a busy machine the moment may be over before the message is seen: then another agent says it.
            const auto saysHotKeysAreOff = [&] {
                return waitUntil([&] { return seenOn(mainOutput).has_value(); }, std::chrono::seconds(5));
            };
            EXPECT_TRUE(saysHotKeysAreOff() || waitUntil([&] {
                            agent.reset();
                            agent = session->startAgent();
                            return saysHotKeysAreOff();
                        }));
            EXPECT_TRUE(waitUntilNothingIsSeen());
        }
        return agent;
    }

    /// What starting the program again does where no panel shows the item.
    Rect openMenu() {
        EXPECT_EQ(session->startProgram()->waitForExit(), success);
        EXPECT_TRUE(waitUntilSeenOn(mainOutput));
        return seenOn(mainOutput).value_or(Rect{});
    }

    /// Has the point saved until a look at the display comes in time to see that said, which it is not for long.
    std::optional<Rect> saveUntilSeenOn(const std::string& output) {
        std::optional<Rect> seen;
        waitUntil([&] {
            return session->savePoint() && waitUntil(
                                               [&] {
                                                   seen = seenOn(output);
                                                   return seen.has_value();
                                               },
                                               std::chrono::seconds(5));
        });
        return seen;
    }

    void click() {
        session->person().pressButton();
        session->person().releaseButton();
    }
};

INSTANTIATE_TEST_SUITE_P(Compositors, WaylandMessages, testing::ValuesIn(compositorsWithPictures()),
                         [](const auto& test) { return test.param.name; });

TEST_P(WaylandMessages, start_saysOnTheScreenIfHotKeysAreOff) {
    const auto agent = startAgent();
    EXPECT_FALSE(seenOn(mainOutput));
    EXPECT_EQ(agent->standardError(), "");
}

TEST_P(WaylandMessages, pointSaved_isSaidAndLeavesThePointerAlone) {
    const auto agent = startAgent();
    EXPECT_TRUE(saveUntilSeenOn(mainOutput));
    const auto seen = saveUntilSeenOn(secondOutput);
    ASSERT_TRUE(seen);
    EXPECT_TRUE(session->person().staysAt(onMain));
    // It lies above the person's window and lets the pointer through.
    movePointer(
        {.x = secondCorner.x + seen->x + seen->width / 2.0, .y = secondCorner.y + seen->y + seen->height / 2.0});
    EXPECT_TRUE(waitUntilNothingIsSeen());
}

TEST_P(WaylandMessages, secondStart_opensTheMenuAtThePointer) {
    const auto agent = startAgent();
    const Rect menu = openMenu();
    EXPECT_EQ(menu.x, onMain.x);
    EXPECT_EQ(menu.y, onMain.y);
    EXPECT_FALSE(seenOn(secondOutput));
    session->person().type({keys::control, keys::q});
    EXPECT_EQ(agent->waitForExit(), success);
    EXPECT_TRUE(waitUntilNothingIsSeen());
}

TEST_P(WaylandMessages, secondStart_escape_leavesTheAgentAndThePointerIsFree) {
    const auto agent = startAgent();
    openMenu();
    session->person().type({keys::escape});
    EXPECT_TRUE(waitUntilNothingIsSeen());
    EXPECT_TRUE(agent->isRunning());
    EXPECT_TRUE(session->person().waitFor(onMain));
    const int clicks = session->person().clicks();
    click();
    EXPECT_TRUE(session->person().waitForClicks(clicks + 1));
    EXPECT_TRUE(session->jump("vantrel://next", centreOfSecond));
}

}  // namespace
}  // namespace vantrel::desk
