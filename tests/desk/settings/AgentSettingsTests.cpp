// The settings window as people meet it: drawn by its program, beside the agent with its hot keys, menu and store.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <vector>

#include "tests/desk/settings/WindowManagerProbe.hpp"
#include "tests/desk/status/PanelItem.hpp"
#include "tests/desk/status/TestPanel.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/HelperProcess.hpp"
#include "tests/desk/support/KeyGrab.hpp"
#include "tests/desk/support/ProcessActivity.hpp"
#include "tests/desk/support/TemporaryDirectory.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

class AgentSettings : public testing::Test {
  protected:
    AgentSettings() : panel(desk.bus().address()) { desk.pointer().moveTo(onMain); }

    void startAgent() {
        agent = desk.startAgent();
        ASSERT_TRUE(panel.waitForRegistrations(1));
        item = std::make_unique<PanelItem>(panel.bus(), panel.items().back());
        ASSERT_TRUE(waitOnBus([this] { return item->rows().size() == 16; }));
    }

    /// Chooses "Settings..." in the menu and waits until the window has the keyboard.
    void openSettings() {
        item->click(settingsRow);
        ASSERT_TRUE(waitUntil([this] { return windowManager.titleOf(windowManager.activeWindow()) == title; }))
            << agent->standardError();
    }

    bool windowIsGone() {
        return waitUntil([this] { return windowManager.stackedWindows().empty(); });
    }

    bool waitForRow(std::size_t row, const std::string& label) {
        return waitOnBus([&] { return item->rows().at(row - 1).label == label; });
    }

    bool waitForStored(const std::string& key, const std::string& value) {
        return waitUntil([&] { return desk.defaults().read(key) == value; });
    }

    void type(const Chord& chord) { desk.keyboard().type(chord); }

    static constexpr auto title = "Vantrel Settings";

    Desk desk{{.hasSessionBus = true, .hasWindowManager = true}};
    TestPanel panel;
    WindowManagerProbe windowManager{desk.connection()};
    std::unique_ptr<AgentProcess> agent;
    std::unique_ptr<PanelItem> item;
};

TEST_F(AgentSettings, row_settings_opensOneWindow) {
    startAgent();
    openSettings();
    const xcb_window_t window = windowManager.activeWindow();
    openSettings();
    // Another window would come later.
    ASSERT_TRUE(waitUntilAtRest(*helperOf(agent->processId(), "vantrel-settings")));
    EXPECT_EQ(windowManager.stackedWindows(), std::vector<std::uint32_t>{window});
    type({keys::escape});
    ASSERT_TRUE(windowIsGone());
    openSettings();
    EXPECT_EQ(windowManager.activeWindow(), window);
    EXPECT_EQ(agent->standardError(), "");
}

// Whether or not the icons are installed where the desktop looks for them.
TEST_F(AgentSettings, window_runWhereItWasBuilt_hasItsIcon) {
    startAgent();
    openSettings();
    const std::vector<std::uint32_t> widths = windowManager.iconWidths(windowManager.activeWindow());
    EXPECT_TRUE(std::ranges::find(widths, 16U) != widths.end());
    EXPECT_TRUE(std::ranges::find(widths, 32U) != widths.end());
}

TEST_F(AgentSettings, secondStart_panelShowsTheItem_opensTheWindow) {
    startAgent();
    EXPECT_EQ(desk.startProgram()->waitForExit(), ordinaryEnd);
    EXPECT_TRUE(waitUntil([this] { return windowManager.titleOf(windowManager.activeWindow()) == title; }));
}

TEST_F(AgentSettings, controls_used_changeStoreAndMenuAtOnce) {
    startAgent();
    openSettings();
    type({keys::tab});
    type({keys::tab});
    type({keys::down});
    EXPECT_TRUE(waitForStored("mode", "manual"));
    EXPECT_TRUE(waitForRow(13, "Mode: Manual: saved points"));
    type({keys::tab});
    type({keys::down});
    EXPECT_TRUE(waitForStored("animation", "glide"));
    type({keys::tab});
    type({keys::space});
    EXPECT_TRUE(waitForStored("soundEnabled", "1"));
}

TEST_F(AgentSettings, chord_recorded_isTheHotKeyFromThenOn) {
    startAgent();
    openSettings();
    type({keys::enter});
    ASSERT_TRUE(waitUntil([this] { return !keyboardIsFree(desk.connection()); }));
    type({keys::control, keys::option, keys::space});
    EXPECT_TRUE(waitForRow(12, "Shortcut: Ctrl + Option + Space"));
    EXPECT_TRUE(waitForStored("primaryHotKeyCode", "49"));
    EXPECT_TRUE(waitForStored("primaryHotKeyModifiers", "6144"));
    EXPECT_TRUE(item->waitForLabel("Shortcut saved"));
    ASSERT_TRUE(waitUntil([this] { return keyboardIsFree(desk.connection()); }));
    EXPECT_TRUE(desk.pointer().staysAt(onMain)) << "the chord was carried out while it was recorded";
    type({keys::control, keys::option, keys::space});
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond));
}

TEST_F(AgentSettings, window_closed_nothingWakesTheAgent) {
    startAgent();
    openSettings();
    type({keys::tab});
    type({keys::escape});
    ASSERT_TRUE(windowIsGone());
    EXPECT_TRUE(waitUntilAtRest(agent->processId(), std::chrono::seconds(3)));
}

TEST_F(AgentSettings, end_windowOpen_isTheOrdinaryEnd) {
    startAgent();
    openSettings();
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    EXPECT_EQ(agent->standardError(), "");
    EXPECT_TRUE(windowIsGone());
}

TEST_F(AgentSettings, end_windowClosed_isTheOrdinaryEnd) {
    startAgent();
    openSettings();
    type({keys::escape});
    ASSERT_TRUE(windowIsGone());
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    EXPECT_EQ(agent->standardError(), "");
}

TEST_F(AgentSettings, end_whileRecording_givesTheKeyboardFree) {
    startAgent();
    openSettings();
    type({keys::enter});
    ASSERT_TRUE(waitUntil([this] { return !keyboardIsFree(desk.connection()); }));
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    EXPECT_TRUE(waitUntil([this] { return keyboardIsFree(desk.connection()); }));
}

TEST_F(AgentSettings, xServer_goesAwayWithTheWindowOpen_isSaidAndExitsWithOne) {
    startAgent();
    openSettings();
    desk.server().stop();
    EXPECT_EQ(agent->waitForExit(), (ExitStatus{.code = 1, .signal = std::nullopt}));
    // Whichever of the agent and Qt notices first says so, in its words.
    const std::string words = agent->standardError();
    EXPECT_TRUE(words.find("vantrel: the X server went away\n") != std::string::npos ||
                words.find("The X11 connection broke") != std::string::npos)
        << words;
}

/// The agent without the program, as where only the agent's package is installed.
TEST_F(AgentSettings, program_missing_isSaidAndTheAgentLivesOn) {
    const TemporaryDirectory installation("program");
    const auto program = installation.path() / "bin" / "vantrel";
    std::filesystem::create_directory(program.parent_path());
    std::filesystem::copy_file(VANTREL_PROGRAM, program);
    ChildProcessOptions options;
    options.arguments = {program.native()};
    options.environment = desk.environment();
    options.standardError = installation.path() / "stderr";
    ChildProcess process(options);
    ASSERT_TRUE(panel.waitForRegistrations(1));
    item = std::make_unique<PanelItem>(panel.bus(), panel.items().back());
    ASSERT_TRUE(waitOnBus([this] { return item->rows().size() == 16; }));
    item->click(settingsRow);
    EXPECT_TRUE(item->waitForLabel("Install vantrel-settings"));
    EXPECT_TRUE(item->waitForLabel("Vantrel"));
    std::ostringstream complaint;
    complaint << std::ifstream(options.standardError).rdbuf();
    EXPECT_EQ(complaint.str().find("vantrel: install the package vantrel-settings to open the settings ("), 0U)
        << complaint.str();
    type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond));
    EXPECT_TRUE(process.isRunning());
}

}  // namespace
}  // namespace vantrel::desk
