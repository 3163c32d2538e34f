// Programs around the agent that hang: whatever it has to say to them, the pointer jumps and nothing is lost.
// (A sound server that hangs is among the tests of the sound, a screen helper that hangs among those of the status
// item.)
#include <gtest/gtest.h>

#include <fstream>

#include "tests/desk/faults/PanelProcess.hpp"
#include "tests/desk/status/BusClient.hpp"
#include "tests/desk/status/ScreenWindows.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/ProcessActivity.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

/// Jumps there and back, saves a point, which changes the menu and shows a message, and does it all again.
void expectAllWorks(Desk& desk, int rounds = 20) {
    for (int round = 0; round < rounds; ++round) {
        desk.pointer().moveTo({onMain.x + round, onMain.y});
        desk.keyboard().type(hyper(keys::s));
        desk.keyboard().type(hyper(keys::d));
        ASSERT_TRUE(desk.pointer().waitFor(centreOfSecond)) << round << ": " << desk.pointer().position();
        desk.keyboard().type(controlOptionCommand(keys::leftArrow));
        ASSERT_TRUE(desk.pointer().waitFor({onMain.x + round, onMain.y})) << round;
        const std::string point = R"({"x":)" + std::to_string(onMain.x + round) + ",";
        ASSERT_NE(desk.defaults().read("savedPoints").value_or("").find(point), std::string::npos) << round;
    }
}

/// Stops the program when it has nothing to do: one that stops while it has grabbed the X server stops everybody.
void stopAtRest(ChildProcess& process) {
    // Some trays wake up every second for nothing.
    ASSERT_TRUE(waitUntilAtRest(process.processId(), std::chrono::milliseconds(200)));
    process.sendSignal(SIGSTOP);
    ASSERT_TRUE(waitUntil([&] { return isStopped(process.processId()); }));
}

TEST(HungProgram, panel_everythingElseWorksAndThePanelKeepsTheItem) {
    Desk desk;
    PanelProcess panel(desk.bus().address(), desk.environment());
    const auto agent = desk.startAgent();
    ASSERT_TRUE(panel.waitForItems(1));
    panel.stop();
    ASSERT_TRUE(waitUntil([&] { return isStopped(panel.processId()); }));
    expectAllWorks(desk);
    panel.goOn();
    expectAllWorks(desk, 1);
    EXPECT_EQ(agent->standardError(), "");
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
}

TEST(HungProgram, panelHangsBeforeTheAgentStarts_itemComesWhenItGoesOn) {
    Desk desk;
    PanelProcess panel(desk.bus().address(), desk.environment());
    BusClient client(desk.bus().address());
    ASSERT_TRUE(waitUntil([&] {
        return client.call("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher", "org.freedesktop.DBus.Peer",
                           "Ping", nullptr) != nullptr;
    }));
    panel.stop();
    const auto agent = desk.startAgent();
    expectAllWorks(desk);
    panel.goOn();
    EXPECT_TRUE(panel.waitForItems(1));
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
}

TEST(HungProgram, bus_hotKeysWorkAndURLsAreObeyedAfterwards) {
    Desk desk;
    PanelProcess panel(desk.bus().address(), desk.environment());
    const auto agent = desk.startAgent();
    ASSERT_TRUE(panel.waitForItems(1));
    desk.bus().freeze();
    expectAllWorks(desk);
    const auto secondStart = desk.startProgram({"vantrel:next"});
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond)) << "a URL by a second start needs no bus";
    desk.bus().thaw();
    expectAllWorks(desk, 1);
    EXPECT_EQ(agent->standardError(), "");
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
}

TEST(HungProgram, bus_agentEndsWithoutIt) {
    Desk desk;
    PanelProcess panel(desk.bus().address(), desk.environment());
    const auto agent = desk.startAgent();
    ASSERT_TRUE(panel.waitForItems(1));
    desk.bus().freeze();
    expectAllWorks(desk, 1);
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    EXPECT_EQ(agent->standardError(), "");
    desk.bus().thaw();
}

TEST(HungProgram, windowManager_hotKeysWorkAlsoWhileTheSettingsAreAskedFor) {
    Desk desk({.hasSessionBus = true, .hasWindowManager = true});
    PanelProcess panel(desk.bus().address(), desk.environment());
    const auto agent = desk.startAgent();
    ASSERT_TRUE(panel.waitForItems(1));
    stopAtRest(desk.windowManager());
    expectAllWorks(desk);
    EXPECT_EQ(desk.startProgram()->waitForExit(), ordinaryEnd) << "asks the agent for its settings";
    expectAllWorks(desk);
    desk.windowManager().sendSignal(SIGCONT);
    EXPECT_TRUE(waitUntil([&] { return !visibleWindows(desk.connection(), "vantrel").empty(); }));
    expectAllWorks(desk, 1);
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
}

TEST(HungProgram, tray_hotKeysWork) {
    Desk desk({.hasSessionBus = true, .hasWindowManager = true});
    const auto configuration = desk.home().path() / "tint2rc";
    std::ofstream(configuration) << "panel_items = S\npanel_size = 100% 30\n";
    ChildProcessOptions options;
    options.arguments = {"tint2", "-c", configuration.native()};
    options.environment = desk.environment();
    ChildProcess tray(options);
    const auto agent = desk.startAgent();
    ASSERT_TRUE(waitUntil([&] { return visibleWindows(desk.connection(), "vantrel").size() == 1; })) << "no icon";
    stopAtRest(tray);
    expectAllWorks(desk);
    tray.sendSignal(SIGCONT);
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
}

}  // namespace
}  // namespace vantrel::desk
