#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "tests/desk/settings/AccessibilityBus.hpp"
#include "tests/desk/status/PanelItem.hpp"
#include "tests/desk/status/TestPanel.hpp"
#include "tests/desk/support/Desk.hpp"

namespace vantrel::desk {
namespace {

/// What a screen reader is told of the agent's window.
class Accessibility : public testing::Test {
  protected:
    Accessibility() : panel(desk.bus().address()), accessibility(desk.bus().address(), desk.environment()) {
        desk.environment().set("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
        desk.defaults().writeData(
            "savedPoints",
            R"([{"id":"11111111-2222-3333-4444-555555555555","name":"Desk","point":{"x":200,"y":300},"displayID":1}])");
        agent = desk.startAgent();
        if (!panel.waitForRegistrations(1)) {
            throw std::runtime_error("the agent's item does not register");
        }
        PanelItem item(panel.bus(), panel.items().back());
        if (!waitOnBus([&] { return item.rows().size() == 16; })) {
            throw std::runtime_error("the agent's menu does not come");
        }
        item.click(11);
        if (!waitOnBus([this] { return find("push button", "Reset").has_value(); })) {
            throw std::runtime_error("the window does not come to the accessibility bus");
        }
    }

    std::optional<AccessibleObject> find(const std::string& role, const std::string& name) {
        return accessibility.find("vantrel", role, name);
    }

    bool wasTold(const AccessibleEvent& event) {
        return waitOnBus([&] {
            const auto& events = accessibility.events();
            return std::find(events.begin(), events.end(), event) != events.end();
        });
    }

    Desk desk{{.hasSessionBus = true, .hasWindowManager = true}};
    TestPanel panel;
    AccessibilityBus accessibility;
    std::unique_ptr<AgentProcess> agent;
};

TEST_F(Accessibility, controls_all_haveNamesAndRoles) {
    struct Control {
        const char* role;
        const char* name;
    };
    const Control controls[] = {{"dialog", "Vantrel Settings"},
                                {"label", "Vantrel"},
                                {"panel", "Shortcut"},
                                {"label", "Primary"},
                                {"push button", "Hyper + D"},
                                {"push button", "Reset"},
                                {"notification", "Ready. With Raycast Hyper Key, use Caps Lock + D."},
                                {"panel", "Behavior"},
                                {"combo box", "Automatic: displays"},
                                {"combo box", "Instant"},
                                {"check box", "Play feedback sound"},
                                {"panel", "Saved Points"},
                                {"label", "1 saved cursor point."},
                                {"list", "Saved Points"},
                                {"list item", "Desk - x 200, y 300, display 1"},
                                {"push button", "Clear Saved Points"}};
    for (const auto& [role, name] : controls) {
        EXPECT_TRUE(find(role, name)) << role << " " << name;
    }
}

TEST_F(Accessibility, formLabels_all_labelTheirControls) {
    struct Row {
        const char* label;
        const char* role;
        const char* name;
    };
    const Row rows[] = {{"Primary", "push button", "Hyper + D"},
                        {"Mode", "combo box", "Automatic: displays"},
                        {"Animation", "combo box", "Instant"},
                        {"Feedback", "check box", "Play feedback sound"}};
    for (const auto& [label, role, name] : rows) {
        const auto control = find(role, name);
        ASSERT_TRUE(control) << name;
        const auto labels = accessibility.labels(*control);
        ASSERT_EQ(labels.size(), 1U) << label;
        EXPECT_EQ(labels.front(), label);
    }
}

TEST_F(Accessibility, states_ofControls_areTold) {
    const auto sound = find("check box", "Play feedback sound");
    ASSERT_TRUE(sound);
    EXPECT_FALSE(accessibility.hasState(*sound, accessibleState::checked));
    EXPECT_TRUE(accessibility.press(*sound));
    EXPECT_TRUE(waitOnBus([&] { return accessibility.hasState(*sound, accessibleState::checked); }));
    EXPECT_TRUE(waitOnBus([&] { return desk.defaults().read("soundEnabled") == "1"; }));

    const auto recorder = find("push button", "Hyper + D");
    ASSERT_TRUE(recorder);
    EXPECT_TRUE(accessibility.hasState(*recorder, accessibleState::focusable));
    EXPECT_TRUE(waitOnBus([&] { return accessibility.hasState(*recorder, accessibleState::focused); }));

    const auto clear = find("push button", "Clear Saved Points");
    ASSERT_TRUE(clear);
    EXPECT_TRUE(accessibility.hasState(*clear, accessibleState::enabled));
    EXPECT_TRUE(accessibility.press(*clear));
    EXPECT_TRUE(waitOnBus([&] { return !accessibility.hasState(*clear, accessibleState::enabled); }));
}

TEST_F(Accessibility, recorder_recording_isNamedByItsPrompt) {
    const auto recorder = find("push button", "Hyper + D");
    ASSERT_TRUE(recorder);
    EXPECT_TRUE(accessibility.press(*recorder));
    EXPECT_TRUE(waitOnBus([&] { return accessibility.name(*recorder) == "Press shortcut..."; }));
    EXPECT_TRUE(accessibility.press(*recorder));
    EXPECT_TRUE(waitOnBus([&] { return accessibility.name(*recorder) == "Hyper + D"; }));
}

TEST_F(Accessibility, status_changes_areAnnounced) {
    const auto status = find("notification", "Ready. With Raycast Hyper Key, use Caps Lock + D.");
    ASSERT_TRUE(status);
    const auto recorder = find("push button", "Hyper + D");
    ASSERT_TRUE(recorder);
    EXPECT_TRUE(accessibility.press(*recorder));
    EXPECT_TRUE(waitOnBus([&] { return accessibility.name(*recorder) == "Press shortcut..."; }));
    EXPECT_TRUE(accessibility.press(*recorder));
    EXPECT_TRUE(waitOnBus([&] { return accessibility.name(*status) == "Shortcut recording cancelled."; }));
    EXPECT_TRUE(wasTold({.source = *status, .kind = "PropertyChange:accessible-name"}));
    // What a screen reader speaks a notification at.
    EXPECT_TRUE(wasTold({.source = *status, .kind = "StateChanged:showing"}));
}

}  // namespace
}  // namespace vantrel::desk
