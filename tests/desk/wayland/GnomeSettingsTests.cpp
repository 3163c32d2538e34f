// The settings window on GNOME, where the extension captures the recorder's keys.
#include <gtest/gtest.h>

#include "tests/desk/support/HelperProcess.hpp"
#include "tests/desk/support/ProcessActivity.hpp"
#include "tests/desk/wayland/support/GnomeDesk.hpp"
#include "tests/desk/wayland/support/WaylandDesk.hpp"

namespace vantrel::desk {
namespace {

constexpr std::size_t settingsRow = 10;
const Chord controlOptionSpace{keys::control, keys::option, keys::space};

class GnomeSettings : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(desk.waitForTitle("Vantrel"));
        // Again, as a person would, where nothing comes of it: seen once in some hundred runs on a busy machine.
        ASSERT_TRUE(waitUntil([this] {
            openSettings();
            return waitUntil([this] { return hasKeyboard(); }, std::chrono::seconds(15));
        })) << agent->standardError()
            << stateOfTheShell();
        program = helperOf(agent->processId(), "vantrel-settings");
        ASSERT_TRUE(program);
        ASSERT_TRUE(waitUntilAtRest(*program));
    }

    std::string stateOfTheShell() {
        return desk.shell().evaluate(
            "[Main.panel.statusArea.vantrel.menu.isOpen, Main.modalCount, Main.overview.visible, "
            "global.get_window_actors().map(actor => actor.meta_window.title), global.display.focus_window?.title]");
    }

    virtual void openSettings() { desk.chooseRow(settingsRow); }

    bool hasKeyboard() {
        return desk.shell().evaluate("global.display.focus_window?.title ?? null") == "\"Vantrel Settings\"";
    }

    bool isCaptured() { return desk.notice() == "\"Recording a shortcut for Vantrel\""; }

    /// Presses the recorder's button, which has the focus.
    void startRecording() {
        desk.person().type({keys::enter});
        ASSERT_TRUE(waitUntil([this] { return isCaptured(); }));
    }

    bool waitForShortcut(const std::string& shortcut, Duration deadline) {
        return waitUntil([&] { return desk.rows().at(11) == "Shortcut: " + shortcut; }, deadline);
    }

    GnomeDesk desk;
    std::unique_ptr<AgentProcess> agent = desk.startAgent();
    std::optional<pid_t> program;
};

TEST_F(GnomeSettings, chord_recorded_isTheHotKeyFromThenOn) {
    // Again where a busy shell does not answer in time whether the chord is free.
    EXPECT_TRUE(waitUntil([this] {
        startRecording();
        desk.person().type(controlOptionSpace);
        return waitUntil([this] { return !isCaptured(); }) &&
               waitForShortcut("Ctrl + Option + Space", std::chrono::seconds(5));
    }));
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(controlOptionSpace, centreOfSecond));
    EXPECT_EQ(agent->standardError(), "");
}

TEST_F(GnomeSettings, ownHotKey_typedIntoTheRecorder_isRecordedAndNotCarriedOut) {
    desk.person().moveTo(onMain);
    desk.watchTitles();
    // Again where a busy shell does not answer in time whether the chord is free.
    EXPECT_TRUE(waitUntil([this] {
        startRecording();
        desk.person().type(hyper(keys::d));
        return waitUntil([this] { return !isCaptured(); }) &&
               desk.waitForWatchedTitle("Shortcut saved", std::chrono::seconds(5));
    }));
    EXPECT_TRUE(desk.person().staysAt(onMain));
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

TEST_F(GnomeSettings, shellsShortcut_typedIntoTheRecorder_isNotCarriedOut) {
    startRecording();
    desk.person().type({keys::command});
    EXPECT_EQ(desk.shell().evaluate("Main.overview.visible"), "false");
    desk.person().type({keys::command, keys::s});
    EXPECT_TRUE(waitUntil([this] { return !isCaptured(); }));
    EXPECT_EQ(desk.shell().evaluate("Main.overview.visible || Main.panel.statusArea.quickSettings.menu.isOpen"),
              "false");
}

TEST_F(GnomeSettings, escape_endsTheRecordingAndKeysAreTheWindowsAgain) {
    startRecording();
    desk.person().type({keys::escape});
    EXPECT_TRUE(waitUntil([this] { return !isCaptured(); }));
    ASSERT_TRUE(waitUntilAtRest(*program));
    EXPECT_TRUE(hasKeyboard());
    desk.person().type({keys::escape});
    EXPECT_TRUE(waitUntil([this] { return !hasKeyboard(); })) << "it closes the window";
}

TEST_F(GnomeSettings, click_endsTheRecording) {
    startRecording();
    desk.person().moveTo(onMain);
    desk.person().pressButton();
    desk.person().releaseButton();
    EXPECT_TRUE(waitUntil([this] { return !isCaptured(); }));
    ASSERT_TRUE(waitUntilAtRest(*program));
    EXPECT_FALSE(isCaptured());
    EXPECT_EQ(desk.rows().at(11), "Shortcut: Hyper + D");
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

TEST_F(GnomeSettings, extensionOff_endsTheRecording) {
    startRecording();
    desk.shell().switchExtension(false);
    EXPECT_TRUE(waitUntil([this] { return !isCaptured(); }));
    desk.shell().switchExtension(true);
    ASSERT_TRUE(desk.waitForTitle("Vantrel"));
    ASSERT_TRUE(waitUntilAtRest(*program));
    EXPECT_FALSE(isCaptured());
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

TEST_F(GnomeSettings, agentKilled_keyboardIsFree) {
    startRecording();
    agent->kill();
    EXPECT_TRUE(waitUntil([this] { return !isCaptured(); }));
    EXPECT_EQ(desk.shell().evaluate("Main.modalCount"), "0");
}

TEST_F(GnomeSettings, windowsProgramKilled_keyboardIsFree) {
    startRecording();
    ASSERT_EQ(::kill(*program, SIGKILL), 0);
    EXPECT_TRUE(waitUntil([this] { return !isCaptured(); }));
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

class GnomeSettingsByAFurtherStart : public GnomeSettings {
  protected:
    void openSettings() override { EXPECT_EQ(desk.startProgram()->waitForExit(), ordinaryEnd); }
};

TEST_F(GnomeSettingsByAFurtherStart, itemShown_windowHasTheKeyboard) {
    EXPECT_TRUE(agent->isRunning());
    EXPECT_TRUE(hasKeyboard());
}

}  // namespace
}  // namespace vantrel::desk
