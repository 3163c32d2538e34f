// The settings window in a sway session.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/desk/status/ItemProcess.hpp"
#include "tests/desk/status/PanelItem.hpp"
#include "tests/desk/status/TestPanel.hpp"
#include "tests/desk/support/ProcessActivity.hpp"
#include "tests/desk/support/SessionBus.hpp"
#include "tests/desk/wayland/support/SwayDesk.hpp"

namespace vantrel::desk {
namespace {

constexpr int settingsRow = 11;
constexpr std::string_view space = "SPCE", escape = "ESC", enter = "RTRN";
constexpr LayoutPoint onMain = SwayDesk::onMain;
constexpr LayoutPoint centreOfSecond = SwayDesk::centreOfSecond;

/// The name of the window that has the keyboard; empty for none.
std::string focusedWindow(const nlohmann::json& tree) {
    if (tree.value("focused", false)) {
        return tree["name"].is_string() && tree.contains("pid") ? tree["name"].get<std::string>() : "";
    }
    for (const char* const children : {"nodes", "floating_nodes"}) {
        for (const auto& child : tree.value(children, nlohmann::json::array())) {
            if (auto name = focusedWindow(child); !name.empty()) {
                return name;
            }
        }
    }
    return "";
}

class SwaySettings : public testing::Test {
  protected:
    SwaySettings() : panel(bus.address()) {
        desk.environment().set("DBUS_SESSION_BUS_ADDRESS", bus.address());
        agent = desk.startAgent();
        if (!panel.waitForRegistrations(1)) {
            throw std::runtime_error("the agent's item does not register");
        }
        item = std::make_unique<PanelItem>(panel.bus(), panel.items().back());
    }

    void openSettings() {
        ASSERT_TRUE(waitOnBus([this] { return item->rows().size() == 16; }));
        item->click(settingsRow);
        ASSERT_TRUE(waitUntil([this] { return hasKeyboard(); })) << agent->standardError();
        program = helperOf(agent->processId(), "vantrel-settings");
        ASSERT_TRUE(program);
    }

    bool hasKeyboard() {
        constexpr std::uint32_t getTree = 4;
        return focusedWindow(nlohmann::json::parse(desk.control().ask(getTree))) == "Vantrel Settings";
    }

    /// Presses the recorder's button, which has the focus, and waits until all that comes of it is done.
    void startRecording() {
        desk.person().type({enter});
        ASSERT_TRUE(waitUntilAtRest(*program));
    }

    /// Closes the window, once its program has taken in what was recorded: until then it swallows keys.
    void close() {
        ASSERT_TRUE(waitUntilAtRest(*program));
        desk.person().type({escape});
        ASSERT_TRUE(waitUntil([this] { return !hasKeyboard(); }));
    }

    bool waitForShortcut(const std::string& shortcut) {
        return waitOnBus([&] { return item->rows().at(11).label == "Shortcut: " + shortcut; });
    }

    SwayDesk desk;
    SessionBus bus;
    TestPanel panel;
    std::unique_ptr<AgentProcess> agent;
    std::unique_ptr<PanelItem> item;
    std::optional<pid_t> program;
};

TEST_F(SwaySettings, chord_recorded_isTheHotKeyFromThenOn) {
    openSettings();
    startRecording();
    desk.person().type({keys::control, keys::option, space});
    EXPECT_TRUE(waitForShortcut("Ctrl + Option + Space"));
    close();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump({keys::control, keys::option, space}, centreOfSecond));
}

TEST_F(SwaySettings, ownHotKey_typedIntoTheRecorder_isRecordedAndNotCarriedOut) {
    desk.person().moveTo(onMain);
    openSettings();
    startRecording();
    desk.person().type({keys::control, keys::option, space});
    ASSERT_TRUE(waitForShortcut("Ctrl + Option + Space"));
    ASSERT_TRUE(item->waitForLabel("Vantrel"));
    startRecording();
    desk.person().type({keys::control, keys::option, space});
    EXPECT_TRUE(item->waitForLabel("Shortcut saved"));
    close();
    EXPECT_TRUE(desk.person().waitFor(onMain))
        << "the chord was carried out while it was recorded: " << desk.person().pointer().value_or(LayoutPoint{});
}

TEST_F(SwaySettings, openedAgainBehindAnotherWindow_getsTheKeyboard) {
    openSettings();
    desk.control().run("workspace 9");
    ASSERT_TRUE(waitUntil([this] { return !hasKeyboard(); }));
    // Until its program knows, too.
    ASSERT_TRUE(waitUntilAtRest(*program));
    openSettings();
}

TEST_F(SwaySettings, closedWhileRecording_compositorsShortcutsAreBack) {
    openSettings();
    startRecording();
    desk.person().type({escape});
    close();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

}  // namespace
}  // namespace vantrel::desk
