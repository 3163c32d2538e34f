// The item in GNOME's panel: its text, its menu, and messages where the panel is not seen.
#include <gtest/gtest.h>

#include <functional>

#include "tests/desk/status/TestPanel.hpp"
#include "tests/desk/wayland/support/GnomeDesk.hpp"
#include "tests/desk/wayland/support/WaylandDesk.hpp"

namespace vantrel::desk {
namespace {

constexpr std::size_t nextDisplayRow = 3;

class GnomeItem : public testing::Test {
  protected:
    GnomeItem() {
        if (!desk.waitForTitle("Vantrel")) {
            throw std::runtime_error("the item does not come");
        }
    }

    /// Longer than a message stands.
    static constexpr auto moment = std::chrono::seconds(3);

    /// Saves the pointer's place, again where what is to come of it is not seen: a shell that is busy has no time to
    /// tell the place, and a test that is held up misses what stands for a moment.
    bool saveUntil(const std::function<bool()>& isSeen) {
        return waitUntil([&] { return desk.open("vantrel://save-point") && isSeen(); });
    }

    bool hasSavedPoints() { return desk.rows().at(13) != "Saved Points: none"; }

    GnomeDesk desk;
    std::unique_ptr<AgentProcess> agent = desk.startAgent();
};

TEST_F(GnomeItem, shown_hasTextNameAndRows) {
    EXPECT_EQ(desk.item("item.accessible_name"), "\"Vantrel\"");
    const auto rows = desk.rows();
    ASSERT_EQ(rows.size(), 16U);
    EXPECT_EQ(rows[nextDisplayRow], "Next Display");
    EXPECT_EQ(rows[11], "Shortcut: Hyper + D");
    EXPECT_EQ(desk.item("item.menu._getMenuItems()[11].reactive"), "false");
    EXPECT_EQ(desk.item("item.menu._getMenuItems()[10].get_last_child().text"), "\"Ctrl+,\"");
}

TEST_F(GnomeItem, rowClicked_isCarriedOut) {
    // Again where a busy shell has no time to tell where the pointer is.
    EXPECT_TRUE(waitUntil([this] {
        desk.chooseRow(nextDisplayRow);
        return desk.person().waitFor(centreOfSecond, std::chrono::seconds(5));
    }));
    EXPECT_TRUE(waitUntil([this] { return desk.item("item.menu.isOpen") == "false"; }));
}

TEST_F(GnomeItem, quitChosenByItsKey_ends) {
    desk.person().click("Main.panel.statusArea.vantrel");
    ASSERT_TRUE(waitUntil([this] { return desk.item("item.menu.isOpen") == "true"; }));
    desk.person().type({keys::control, keys::q});
    EXPECT_EQ(agent->waitForExit(), ordinaryEnd);
    EXPECT_TRUE(waitUntil([this] { return desk.item("true") == "null"; }));
}

TEST_F(GnomeItem, informationRowClicked_doesNothing) {
    desk.chooseRow(11);
    EXPECT_FALSE(waitUntil([this] { return desk.item("item.menu.isOpen") != "true"; }, quietTime));
    desk.person().type({keys::escape});
    EXPECT_TRUE(waitUntil([this] { return desk.item("item.menu.isOpen") == "false"; }));
    EXPECT_TRUE(agent->isRunning());
}

TEST_F(GnomeItem, pointSaved_titleSaysSoForAMomentAndTheMenuFollows) {
    desk.person().moveTo(onMain);
    desk.watchTitles();
    EXPECT_TRUE(saveUntil([this] { return desk.waitForWatchedTitle("Saved", moment); }));
    EXPECT_TRUE(waitUntil([this] { return hasSavedPoints(); }));
    EXPECT_EQ(desk.notice(), "null") << "the title is seen";
    EXPECT_TRUE(desk.waitForTitle("Vantrel"));
}

TEST_F(GnomeItem, menuOpen_rowsChange_staysOpen) {
    desk.person().moveTo(onMain);
    desk.person().click("Main.panel.statusArea.vantrel");
    ASSERT_TRUE(waitUntil([this] { return desk.item("item.menu.isOpen") == "true"; }));
    EXPECT_TRUE(saveUntil([this] { return waitUntil([this] { return hasSavedPoints(); }, moment); }));
    EXPECT_EQ(desk.item("item.menu.isOpen"), "true");
}

/// As with a window that fills the screen.
TEST_F(GnomeItem, panelHidden_messageIsOnTheScreenForAMoment) {
    static_cast<void>(desk.shell().evaluate("Main.layoutManager.panelBox.hide()"));
    desk.person().moveTo(onMain);
    EXPECT_TRUE(saveUntil([this] { return waitUntil([this] { return desk.notice() == "\"Saved\""; }, moment); }));
    EXPECT_TRUE(waitUntil([this] { return desk.notice() == "null"; }));
}

TEST_F(GnomeItem, panelsOfOtherKinds_areOfferedItOnlyWithoutTheExtension) {
    TestPanel panel(desk.compositor().busAddress());
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump("vantrel://next", centreOfSecond));
    EXPECT_TRUE(panel.items().empty());
    desk.shell().switchExtension(false);
    EXPECT_TRUE(panel.waitForRegistrations(1));
    desk.shell().switchExtension(true);
    EXPECT_TRUE(desk.waitForTitle("Vantrel"));
}

}  // namespace
}  // namespace vantrel::desk
