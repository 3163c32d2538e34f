// The agent's own item: what its menu says in each state, what each row does, how long its messages stand.
#include <algorithm>
#include <chrono>
#include <thread>

#include "tests/desk/status/StatusDesk.hpp"
#include "tests/desk/support/KeyGrab.hpp"
#include "tests/desk/support/ProcessActivity.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

constexpr auto onePoint =
    R"([{"id":"11111111-2222-3333-4444-555555555555","name":"Desk","point":{"x":200,"y":300},"displayID":1}])";

std::string points(int count) {
    std::string text = "[";
    for (int index = 0; index < count; ++index) {
        const std::string one = onePoint;
        text += (index == 0 ? std::string() : std::string(",")) + one.substr(1, one.size() - 2);
    }
    return text + "]";
}

class AgentItem : public StatusDesk {
  protected:
    AgentItem() : panel(desk.bus().address()) { desk.pointer().moveTo(onMain); }

    void startAgent() {
        agent = desk.startAgent();
        ASSERT_TRUE(panel.waitForRegistrations(1));
        item = std::make_unique<PanelItem>(panel.bus(), panel.items().back());
        ASSERT_TRUE(waitOnBus([this] { return item->rows().size() == 16; }));
    }

    /// Waits until the row, counted from 1, has the title.
    bool waitForRow(std::size_t row, const std::string& label) {
        return waitOnBus([&] { return item->rows().at(row - 1).label == label; });
    }

    void click(int row) { EXPECT_TRUE(item->click(row)); }

    /// No message goes before, counted from a moment before it came.
    static constexpr std::chrono::milliseconds messageTime{1200};

    TestPanel panel;
    std::unique_ptr<AgentProcess> agent;
    std::unique_ptr<PanelItem> item;
};

TEST_F(AgentItem, menu_freshInstall_hasSixteenRows) {
    startAgent();
    struct Row {
        const char* label;
        bool isEnabled;
        const char* shortcut;
    };
    const Row expected[] = {{"Vantrel", false, ""},
                            {"", true, ""},
                            {"Teleport Now", true, ""},
                            {"Next Display", true, ""},
                            {"Previous Display", true, ""},
                            {"", true, ""},
                            {"Save Current Point", true, ""},
                            {"Teleport Saved Point", false, ""},
                            {"Clear Saved Points", false, ""},
                            {"", true, ""},
                            {"Settings...", true, "Control+comma"},
                            {"Shortcut: Hyper + D", false, ""},
                            {"Mode: Automatic: displays", false, ""},
                            {"Saved Points: none", false, ""},
                            {"", true, ""},
                            {"Quit Vantrel", true, "Control+q"}};
    const auto rows = item->rows();
    ASSERT_EQ(rows.size(), std::size(expected));
    for (std::size_t index = 0; index < rows.size(); ++index) {
        EXPECT_EQ(rows[index].label, expected[index].label);
        EXPECT_EQ(rows[index].isSeparator, *expected[index].label == '\0');
        EXPECT_EQ(rows[index].isEnabled, expected[index].isEnabled) << rows[index].label;
        EXPECT_EQ(rows[index].shortcut, expected[index].shortcut) << rows[index].label;
    }
}

TEST_F(AgentItem, menu_storedState_isShown) {
    desk.defaults().writeText("mode", "manual");
    desk.defaults().writeData("savedPoints", points(12));
    startAgent();
    const auto rows = item->rows();
    EXPECT_TRUE(rows[7].isEnabled);
    EXPECT_TRUE(rows[8].isEnabled);
    EXPECT_EQ(rows[12].label, "Mode: Manual: saved points");
    EXPECT_EQ(rows[13].label, "Saved Points: 12 points");
}

TEST_F(AgentItem, menu_shortcutHeldByAnotherProgram_saysSo) {
    XConnection other(desk.server().displayName());
    const KeyGrab grab(other, hyper(keys::d));
    startAgent();
    EXPECT_EQ(item->rows()[11].label, "Shortcut unavailable: Hyper + D");
}

TEST_F(AgentItem, rows_ofDisplays_moveThePointer) {
    startAgent();
    for (const int row : {3, 4, 5}) {
        desk.pointer().moveTo(onMain);
        click(row);
        EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond)) << row << ": " << desk.pointer().position();
    }
}

TEST_F(AgentItem, rows_ofPoints_saveJumpAndClear) {
    startAgent();
    click(7);
    EXPECT_TRUE(item->waitForLabel("Saved"));
    EXPECT_TRUE(waitForRow(14, "Saved Points: 1 point"));
    desk.pointer().moveTo({300, 300});
    click(8);
    EXPECT_TRUE(desk.pointer().waitFor(onMain));
    EXPECT_TRUE(item->waitForLabel("Point 1"));
    click(9);
    EXPECT_TRUE(item->waitForLabel("Cleared"));
    EXPECT_TRUE(waitForRow(14, "Saved Points: none"));
    EXPECT_FALSE(item->rows()[7].isEnabled);
}

TEST_F(AgentItem, rows_informationAndSeparators_doNothing) {
    startAgent();
    const std::size_t labels = item->labels().size();
    for (const int row : {1, 2, 6, 8, 9, 10, 12, 13, 14, 15}) {
        click(row);
    }
    EXPECT_FALSE(waitOnBus([&] { return item->labels().size() != labels; }, quietTime));
    EXPECT_TRUE(desk.pointer().staysAt(onMain));
    EXPECT_TRUE(agent->isRunning());
}

TEST_F(AgentItem, row_quit_endsTheAgent) {
    startAgent();
    click(16);
    EXPECT_EQ(agent->waitForExit(), ordinaryEnd);
}

TEST_F(AgentItem, message_alone_givesWayToTheTitle) {
    startAgent();
    const auto before = std::chrono::steady_clock::now();
    click(7);
    ASSERT_TRUE(item->waitForLabel("Saved"));
    ASSERT_TRUE(item->waitForLabel("Vantrel"));
    EXPECT_GE(std::chrono::steady_clock::now() - before, messageTime);
}

TEST_F(AgentItem, message_secondWithinTheFirst_startsTheWaitAnew) {
    startAgent();
    click(7);
    ASSERT_TRUE(item->waitForLabel("Saved"));
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    const auto before = std::chrono::steady_clock::now();
    click(9);
    ASSERT_TRUE(item->waitForLabel("Cleared"));
    ASSERT_TRUE(item->waitForLabel("Vantrel"));
    EXPECT_GE(std::chrono::steady_clock::now() - before, messageTime);
    const auto& labels = item->labels();
    const auto cleared = std::find(labels.begin(), labels.end(), "Cleared");
    ASSERT_NE(cleared, labels.end());
    ASSERT_NE(cleared, labels.begin());
    EXPECT_EQ(*(cleared - 1), "Saved");
}

TEST_F(AgentItem, message_panelWithoutLabels_standsOnTheScreenMeanwhile) {
    startAgent();
    click(7);
    EXPECT_TRUE(waitForOverlayWindows(1));
    EXPECT_TRUE(waitForOverlayWindows(0));
}

TEST_F(AgentItem, busAndPanel_goAway_hotKeysAndMessagesWork) {
    startAgent();
    item.reset();
    desk.bus().stop();
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond));
    desk.keyboard().type(hyper(keys::s));
    EXPECT_TRUE(waitForOverlayWindows(1));
}

TEST_F(AgentItem, atRest_messageIsOver_nothingWakesIt) {
    startAgent();
    click(7);
    EXPECT_TRUE(waitForOverlayWindows(1));
    EXPECT_TRUE(waitUntil([&] { return !overlayOf(agent->processId()); }));
    EXPECT_TRUE(waitUntilAtRest(agent->processId(), std::chrono::seconds(2)));
}

using AgentWithoutPanel = StatusDesk;

TEST_F(AgentWithoutPanel, secondStart_popsTheMenuUpAtThePointer) {
    const auto agent = desk.startAgent();
    desk.pointer().moveTo({300, 200});
    const auto second = desk.startProgram();
    EXPECT_EQ(second->waitForExit(), ordinaryEnd);
    ASSERT_TRUE(waitForOverlayWindows(1));
    const ScreenWindow window = overlayWindows().front();
    const RootPoint pointer = desk.layout().toRoot({300, 200});
    EXPECT_EQ(window.x, pointer.x);
    EXPECT_EQ(window.y, pointer.y);
}

TEST_F(AgentWithoutPanel, secondStart_menuQuit_endsTheAgent) {
    const auto agent = desk.startAgent();
    desk.startProgram()->waitForExit();
    ASSERT_TRUE(waitForOverlayWindows(1));
    ASSERT_TRUE(waitUntil([&] { return isKeyboardGrabbed(desk.connection()); }));
    constexpr std::uint32_t up = 0xFF52;
    constexpr std::uint32_t enter = 0xFF0D;
    typeKeysym(desk.connection(), up);
    typeKeysym(desk.connection(), enter);
    EXPECT_EQ(agent->waitForExit(), ordinaryEnd);
}

}  // namespace
}  // namespace vantrel::desk
