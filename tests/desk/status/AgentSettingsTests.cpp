// The ways to the settings window that lead through the item.
#include <algorithm>

#include "tests/desk/status/StatusDesk.hpp"

namespace vantrel::desk {
namespace {

class AgentSettings : public StatusDesk {
  protected:
    AgentSettings() : panel(desk.bus().address()), agent(desk.startAgent()) {
        EXPECT_TRUE(panel.waitForRegistrations(1));
    }

    bool waitForSettingsWindow() {
        return waitOnBus([this] {
            const auto windows = visibleWindows(desk.connection(), "vantrel");
            return std::any_of(windows.begin(), windows.end(), [](const ScreenWindow& window) {
                return !window.isOverrideRedirect && window.width >= 560;
            });
        });
    }

    TestPanel panel;
    std::unique_ptr<AgentProcess> agent;
};

TEST_F(AgentSettings, row_settings_opensTheWindow) {
    PanelItem item(panel.bus(), panel.items().at(0));
    ASSERT_TRUE(waitOnBus([&] { return item.rows().size() == 16; }));
    EXPECT_EQ(item.rows()[settingsRow - 1].label, "Settings...");
    EXPECT_TRUE(item.click(settingsRow));
    EXPECT_TRUE(waitForSettingsWindow());
}

TEST_F(AgentSettings, secondStart_panelShowsTheItem_opensTheWindow) {
    PanelItem item(panel.bus(), panel.items().at(0));
    // The answers to the agent's questions about the panel reach it before this one.
    ASSERT_EQ(item.text("Status"), "Active");
    EXPECT_EQ(desk.startProgram()->waitForExit(), ordinaryEnd);
    EXPECT_TRUE(waitForSettingsWindow());
    EXPECT_TRUE(overlayWindows().empty());
}

}  // namespace
}  // namespace vantrel::desk
