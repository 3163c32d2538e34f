// The program that draws the settings window, when something happens to it or to the agent.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <iterator>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "tests/desk/settings/WindowManagerProbe.hpp"
#include "tests/desk/status/ItemProcess.hpp"
#include "tests/desk/status/PanelItem.hpp"
#include "tests/desk/status/TestPanel.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/KeyGrab.hpp"
#include "tests/desk/support/ProcessActivity.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

bool exists(pid_t process) {
    return kill(process, 0) == 0;
}

/// The files and sockets that a process has open, but for its standard streams.
std::set<std::string> filesOf(pid_t process) {
    std::set<std::string> files;
    std::error_code gone;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/fd", gone)) {
        const std::string file = std::filesystem::read_symlink(entry.path(), gone);
        const bool isStandardStream = std::stoi(entry.path().filename()) <= STDERR_FILENO;
        if (!gone && !isStandardStream && !file.starts_with("anon_inode:")) {
            files.insert(file);
        }
    }
    return files;
}

std::vector<std::string> shared(const std::set<std::string>& some, const std::set<std::string>& others) {
    std::vector<std::string> both;
    std::set_intersection(some.begin(), some.end(), others.begin(), others.end(), std::back_inserter(both));
    return both;
}

class SettingsProgram : public testing::Test {
  protected:
    SettingsProgram() : panel(desk.bus().address()) {
        desk.pointer().moveTo(onMain);
        agent = desk.startAgent();
        if (!panel.waitForRegistrations(1)) {
            throw std::runtime_error("the agent's item does not register");
        }
        item = std::make_unique<PanelItem>(panel.bus(), panel.items().back());
    }

    void openSettings() {
        ASSERT_TRUE(waitOnBus([this] { return item->rows().size() == 16; }));
        item->click(settingsRow);
        ASSERT_TRUE(waitUntil([this] {
            return windowManager.titleOf(windowManager.activeWindow()) == "Vantrel Settings";
        })) << agent->standardError();
        program = helperOf(agent->processId(), "vantrel-settings");
        ASSERT_TRUE(program);
    }

    /// Closes the window and waits until its program has reported that.
    void closeSettings() {
        desk.keyboard().type({keys::escape});
        ASSERT_TRUE(windowIsGone());
        ASSERT_TRUE(waitUntilAtRest(*program));
    }

    void startRecording() {
        desk.keyboard().type({keys::enter});
        ASSERT_TRUE(waitUntil([this] { return !keyboardIsFree(desk.connection()); }));
    }

    bool windowIsGone() {
        return waitUntil([this] { return windowManager.stackedWindows().empty(); });
    }

    void expectHotKeyWorks() {
        desk.pointer().moveTo(onMain);
        desk.keyboard().type(hyper(keys::d));
        EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond));
    }

    Desk desk{{.hasSessionBus = true, .hasWindowManager = true}};
    TestPanel panel;
    WindowManagerProbe windowManager{desk.connection()};
    std::unique_ptr<AgentProcess> agent;
    std::unique_ptr<PanelItem> item;
    std::optional<pid_t> program;
};

TEST_F(SettingsProgram, killedWhileRecording_keysAreFreeAndTheMenuOpensAnother) {
    openSettings();
    startRecording();
    kill(*program, SIGKILL);
    EXPECT_TRUE(item->waitForLabel("Settings ended"));
    EXPECT_EQ(agent->standardError(), "vantrel: the settings window has ended unexpectedly; the menu opens it again\n");
    EXPECT_TRUE(keyboardIsFree(desk.connection()));
    expectHotKeyWorks();
    const pid_t killed = *program;
    openSettings();
    EXPECT_NE(*program, killed);
    startRecording();
}

TEST_F(SettingsProgram, started_holdsNothingThatTheAgentHolds) {
    openSettings();
    desk.keyboard().type(hyper(keys::s));
    ASSERT_TRUE(waitUntil([this] { return overlayOf(agent->processId()).has_value(); })) << "for the message";
    const auto ofTheAgent = [this] { return filesOf(agent->processId()); };
    const auto store = ofTheAgent();
    ASSERT_TRUE(std::any_of(store.begin(), store.end(),
                            [](const std::string& file) { return file.find(".sqlite3") != std::string::npos; }));
    for (const pid_t helper : {*program, *overlayOf(agent->processId())}) {
        // For a moment the agent still has the helper's end of their channel.
        EXPECT_TRUE(waitUntil([&] { return shared(ofTheAgent(), filesOf(helper)).empty(); }))
            << testing::PrintToString(shared(ofTheAgent(), filesOf(helper)));
    }
}

TEST_F(SettingsProgram, killedWithItsWindowClosed_nothingIsSaid) {
    openSettings();
    closeSettings();
    kill(*program, SIGKILL);
    EXPECT_TRUE(waitUntil([this] { return !exists(*program); })) << "nobody has taken note of its end";
    openSettings();
    EXPECT_EQ(agent->standardError(), "");
}

TEST_F(SettingsProgram, stopped_neitherHoldsTheAgentUpNorItsEnd) {
    openSettings();
    kill(*program, SIGSTOP);
    expectHotKeyWorks();
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    kill(*program, SIGCONT);
    EXPECT_TRUE(windowIsGone());
}

TEST_F(SettingsProgram, agentKilled_endsToo) {
    openSettings();
    startRecording();
    kill(agent->processId(), SIGKILL);
    agent->waitForExit();
    EXPECT_TRUE(windowIsGone());
    EXPECT_TRUE(waitUntil([this] { return keyboardIsFree(desk.connection()); }));
}

TEST_F(SettingsProgram, openedByTheNextOne_standsWhereItStood) {
    openSettings();
    const auto moved = windowManager.moveWindow(windowManager.activeWindow(), 1200, 150);
    closeSettings();
    kill(*program, SIGKILL);
    ASSERT_TRUE(waitUntil([this] { return !exists(*program); }));
    openSettings();
    EXPECT_TRUE(waitUntil([&] { return windowManager.placeOf(windowManager.activeWindow()) == moved; }));
}

}  // namespace
}  // namespace vantrel::desk
