#include "Vantrel/Desktop/SettingsWindow/RemoteSettingsWindow.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/unit/channel/ChannelEnds.hpp"
#include "tests/unit/helpers/Turns.hpp"

namespace vantrel::desktop {
namespace {

using Kind = WindowReport::Kind;
using Calls = std::vector<std::string>;

/// Notes what the window asks for, with what the window then says.
class Delegate final : public PreferencesWindowViewDelegate {
  public:
    void resetShortcut() override { calls.emplace_back("reset"); }
    void modeChanged(std::int64_t chosenIndex) override { note("mode", chosenIndex); }
    void animationChanged(std::int64_t chosenIndex) override { note("animation", chosenIndex); }
    void soundChanged(bool isChecked) override { note("sound", isChecked ? 1 : 0); }
    void clearSavedPoints() override { calls.emplace_back("clear"); }
    void windowFailed(const std::string& problem, const std::string& flashText) override {
        calls.push_back("failed: " + problem + " | " + flashText);
    }
    [[nodiscard]] std::size_t numberOfRows() const override { return rows; }
    [[nodiscard]] std::optional<std::string> textForRow(std::int64_t row) const override {
        return row < 3 ? std::optional("Point " + std::to_string(row) + longName) : std::nullopt;
    }

    Calls calls;
    std::size_t rows = 3;
    std::string longName;

  private:
    void note(const std::string& what, std::int64_t value) { calls.push_back(what + " " + std::to_string(value)); }
};

class Recorder final : public ShortcutRecorderButtonDelegate {
  public:
    void toggleRecording() override { calls.emplace_back("toggle"); }
    void viewWillMoveToWindow(bool hasWindow) override { calls.emplace_back(hasWindow ? "shown" : "hidden"); }

    Calls calls;
};

/// What a windowing system does for recordings.
class Keyboard final : public KeyboardCapture {
  public:
    void setRecording(bool isRecording) override { recordings.push_back(isRecording); }
    [[nodiscard]] bool capturesKeys() const override { return captures; }
    void setCaptureEvents(CaptureEvents newEvents) override { events = std::move(newEvents); }

    std::vector<bool> recordings;  ///< what was told of them, in order
    bool captures = false;
    CaptureEvents events;
};

/// The agent's side of the window, with the test at the program's end of the channel.
class RemoteSettingsWindowTest : public testing::Test {
  protected:
    RemoteSettingsWindowTest() {
        window.setDelegate(delegate);
        window.shortcutRecorderButton().setDelegate(recorder);
        window.shortcutRecorderButton().setTitle("Hyper + D");
        controls.selectedMode = 0;
        window.setContent(controls);
    }

    Channel start() {
        ++starts;
        ChannelEnds ends;
        program = std::move(ends.helper);
        return isInstalled ? std::move(ends.agent) : Channel();
    }

    void show() {
        window.showWindow();
        receive();
        report(Kind::shown, 1);
        takeTurns();
        receive();
        recorder->calls.clear();
    }

    /// Takes in all that the agent has sent.
    void receive() {
        while (const auto message = program.receive()) {
            names.push_back(message->name);
            if (auto newContent = valueOf<WindowContent>(*message)) {
                content = *newContent;
            } else if (auto text = valueOf<WindowRowText>(*message)) {
                rowText = *text;
            } else if (auto newPlace = valueOf<WindowPlace>(*message)) {
                place = *newPlace;
            } else if (auto key = valueOf<WindowKey>(*message)) {
                capturedKey = *key;
            }
        }
    }

    void report(Kind kind, std::int32_t value = 0, const KeyEvent& key = {}) {
        program.send(messageOf(WindowReport{.number = ++reports, .kind = kind, .value = value, .key = key}));
    }

    void reportAndReceive(Kind kind, std::int32_t value = 0, const KeyEvent& key = {}) {
        report(kind, value, key);
        takeTurns();
        receive();
    }

    bool isInstalled = true;
    int starts = 0;
    std::uint64_t reports = 0;
    Channel program;
    Calls names;
    PreferencesWindowContent controls;
    WindowContent content;  ///< what the program has got
    std::optional<WindowRowText> rowText;
    std::optional<WindowPlace> place;
    std::optional<WindowKey> capturedKey;
    std::shared_ptr<Recorder> recorder = std::make_shared<Recorder>();
    Keyboard keyboard;
    RemoteSettingsWindow window{[this] { return start(); }, keyboard};
    std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>();
};

TEST_F(RemoteSettingsWindowTest, made_notShown_startsNothing) {
    takeTurns();
    EXPECT_EQ(starts, 0);
}

TEST_F(RemoteSettingsWindowTest, showWindow_contentComesFirst) {
    controls.savedPointsSummary = "3 saved cursor points.";
    window.setContent(controls);
    window.showWindow();
    window.makeKeyAndOrderFront();
    takeTurns();
    receive();
    EXPECT_EQ(names, (Calls{"content", "show", "bring-to-front"}));
    EXPECT_EQ(content.recorderTitle, "Hyper + D");
    EXPECT_EQ(content.controls.selectedMode, 0);
    EXPECT_EQ(content.controls.savedPointsSummary, "3 saved cursor points.");
    EXPECT_EQ(content.rows, 3U);
    EXPECT_EQ(starts, 1);
}

TEST_F(RemoteSettingsWindowTest, manyChangesInATurn_areOneContent) {
    show();
    names.clear();
    controls.shortcutStatus = "Checking...";
    window.setContent(controls);
    controls.shortcutStatus = "Taken.";
    controls.shortcutStatusColor = SemanticColor::systemRed;
    window.setContent(controls);
    window.shortcutRecorderButton().setTitle("Press a key...");
    takeTurns();
    receive();
    EXPECT_EQ(names, Calls{"content"});
    EXPECT_EQ(content.controls.shortcutStatus, "Taken.");
    EXPECT_EQ(content.controls.shortcutStatusColor, SemanticColor::systemRed);
    EXPECT_EQ(content.recorderTitle, "Press a key...");
}

TEST_F(RemoteSettingsWindowTest, reports_ofKnownKinds_reachTheDelegateWithTheirValue) {
    show();
    reportAndReceive(Kind::modeChosen, 1);
    reportAndReceive(Kind::animationChosen, 0);
    reportAndReceive(Kind::soundChosen, 1);
    reportAndReceive(Kind::resetPressed);
    reportAndReceive(Kind::clearPressed);
    reportAndReceive(static_cast<Kind>(99), 1);
    EXPECT_EQ(delegate->calls, (Calls{"mode 1", "animation 0", "sound 1", "reset", "clear"}));
}

TEST_F(RemoteSettingsWindowTest, report_isAnsweredWithItsNumberThoughNothingChanges) {
    show();
    names.clear();
    reportAndReceive(Kind::key, 0, {KeyEventType::keyDown, 2, 0});
    EXPECT_EQ(names, Calls{"content"});
    EXPECT_EQ(content.lastReport, reports);
}

TEST_F(RemoteSettingsWindowTest, recorder_monitorInstalled_getsKeysUntilItGoes) {
    show();
    std::vector<KeyEvent> events;
    auto monitor = window.shortcutRecorderButton().addLocalMonitorForEvents(eventMask(KeyEventType::keyDown),
                                                                            [&](const KeyEvent& event) {
                                                                                events.push_back(event);
                                                                                return std::nullopt;
                                                                            });
    takeTurns();
    receive();
    EXPECT_TRUE(content.recordsKeys);
    reportAndReceive(Kind::key, 0, {KeyEventType::keyDown, 2, KeyEvent::shiftFlag});
    reportAndReceive(Kind::key, 0, {KeyEventType::flagsChanged, 56, 0});
    reportAndReceive(Kind::key, 0, {static_cast<KeyEventType>(77), 56, 0});
    EXPECT_EQ(events, (std::vector<KeyEvent>{{KeyEventType::keyDown, 2, KeyEvent::shiftFlag}}));
    monitor.reset();
    takeTurns();
    reportAndReceive(Kind::key, 0, {KeyEventType::keyDown, 3, 0});
    EXPECT_FALSE(content.recordsKeys);
    EXPECT_EQ(events.size(), 1U);
}

TEST_F(RemoteSettingsWindowTest, recorder_pressedAndWindowClosed_areTold) {
    show();
    EXPECT_TRUE(window.shortcutRecorderButton().isInWindow());
    reportAndReceive(Kind::recorderPressed);
    reportAndReceive(Kind::shown, 0);
    EXPECT_EQ(recorder->calls, (Calls{"toggle", "hidden"}));
    EXPECT_FALSE(window.shortcutRecorderButton().isInWindow());
}

TEST_F(RemoteSettingsWindowTest, keyboardTakenAndGivenBack_isToldOnceEach) {
    show();
    reportAndReceive(Kind::keyboardTaken, 1);
    reportAndReceive(Kind::keyboardTaken, 1);
    EXPECT_EQ(keyboard.recordings, std::vector{true});
    reportAndReceive(Kind::keyboardTaken, 0);
    EXPECT_EQ(keyboard.recordings, (std::vector{true, false}));
}

TEST_F(RemoteSettingsWindowTest, programDies_keyboardTaken_isGivenBack) {
    show();
    reportAndReceive(Kind::keyboardTaken, 1);
    program = Channel();
    takeTurns();
    EXPECT_EQ(keyboard.recordings, (std::vector{true, false}));
}

TEST_F(RemoteSettingsWindowTest, desktopCapturesKeys_areHandedOnUntilItEndsThat) {
    keyboard.captures = true;
    show();
    EXPECT_TRUE(content.keysAreCaptured);
    const auto monitor =
        window.shortcutRecorderButton().addLocalMonitorForEvents(~0U, [](const KeyEvent&) { return std::nullopt; });
    keyboard.events.key({.keycode = 40, .state = 4, .isPressed = true});
    receive();
    EXPECT_EQ(capturedKey, (WindowKey{.keycode = 40, .state = 4, .isPressed = true}));
    names.clear();
    keyboard.events.ended();
    receive();
    EXPECT_EQ(names, Calls{"capture-ended"});
    EXPECT_EQ(recorder->calls, Calls{"toggle"});
}

TEST_F(RemoteSettingsWindowTest, captureEnds_nothingIsRecorded_theRecorderStaysAsItIs) {
    show();
    keyboard.events.ended();
    EXPECT_EQ(recorder->calls, Calls{});
}

TEST_F(RemoteSettingsWindowTest, rows_areGivenWhenTheyAreAskedFor) {
    show();
    program.send(messageOf(WindowRow{.rowsVersion = content.rowsVersion, .row = 2}));
    takeTurns();
    receive();
    ASSERT_TRUE(rowText);
    EXPECT_EQ(rowText->text, "Point 2");
    EXPECT_EQ(rowText->row.row, 2U);
}

TEST_F(RemoteSettingsWindowTest, rows_ofOlderRowsOrNone_areNotGiven) {
    show();
    program.send(messageOf(WindowRow{.rowsVersion = content.rowsVersion, .row = 3}));
    const std::uint32_t old = content.rowsVersion;
    window.reloadSavedPoints();
    program.send(messageOf(WindowRow{.rowsVersion = old, .row = 0}));
    takeTurns();
    receive();
    EXPECT_FALSE(rowText);
    EXPECT_NE(content.rowsVersion, old);
}

TEST_F(RemoteSettingsWindowTest, rows_longName_isCutWhereACharacterEnds) {
    delegate->longName = std::string(3992, 'x') + "\u00FC\u00FC\u00FC";
    show();
    program.send(messageOf(WindowRow{.rowsVersion = content.rowsVersion, .row = 0}));
    takeTurns();
    receive();
    ASSERT_TRUE(rowText);
    EXPECT_LT(rowText->text.size(), 4010U);
    EXPECT_TRUE(g_utf8_validate(rowText->text.c_str(), -1, nullptr));
}

TEST_F(RemoteSettingsWindowTest, programDies_recordingEndsAndTheNextShowingStartsAnother) {
    show();
    program.send(messageOf(WindowPlace{.x = 30, .y = 40}));
    program.close();
    takeTurns();
    EXPECT_EQ(recorder->calls, Calls{"hidden"});
    EXPECT_EQ(delegate->calls, Calls{"failed: the settings window has ended unexpectedly; the menu opens it again | "
                                     "Settings ended"});
    reports = 0;
    names.clear();
    window.showWindow();
    receive();
    EXPECT_EQ(starts, 2);
    EXPECT_EQ(names, (Calls{"place", "content", "show"}));
    EXPECT_EQ(place, (WindowPlace{.x = 30, .y = 40}));
    EXPECT_EQ(content.lastReport, 0U);
}

TEST_F(RemoteSettingsWindowTest, programDies_windowClosed_isNotWorthAWord) {
    show();
    reportAndReceive(Kind::shown, 0);
    program.close();
    takeTurns();
    EXPECT_EQ(delegate->calls, Calls{});
}

TEST_F(RemoteSettingsWindowTest, programOfAnotherVersion_isSaid) {
    window.showWindow();
    // What a program of another version says is not even read.
    SocketPair pair;
    program = Channel();
    RemoteSettingsWindow other([&] { return Channel(std::move(pair.first)); }, keyboard);
    other.setDelegate(delegate);
    other.showWindow();
    const std::string packet = encodedPacket({"version", g_variant_new("s", "99.1")});
    ASSERT_GT(::send(pair.second.get(), packet.data(), packet.size(), 0), 0);
    delegate->calls.clear();
    takeTurns();
    EXPECT_NE(
        std::find(delegate->calls.begin(), delegate->calls.end(),
                  "failed: start Vantrel again to open the settings (they are of version 99.1) | Restart Vantrel"),
        delegate->calls.end());
}

TEST_F(RemoteSettingsWindowTest, programDoesNotStart_isSaid) {
    isInstalled = false;
    window.showWindow();
    EXPECT_EQ(delegate->calls,
              Calls{"failed: the settings cannot be shown: their program does not start | Settings unavailable"});
}

TEST_F(RemoteSettingsWindowTest, programCannotShowAWindow_sayingWhyIsPassedOn) {
    window.showWindow();
    program.send(messageOf(WindowProblem{.text = "no plugin"}));
    program.close();
    takeTurns();
    EXPECT_EQ(delegate->calls, Calls{"failed: the settings cannot be shown: no plugin | Settings unavailable"});
}

TEST_F(RemoteSettingsWindowTest, programDoesNotRead_isGivenUpAndNeverWaitedFor) {
    show();
    for (int count = 0; count < 100'000 && delegate->calls.empty(); ++count) {
        controls.savedPointsSummary = std::to_string(count);
        window.setContent(controls);
        takeTurns();
    }
    EXPECT_EQ(delegate->calls.size(), 1U);
}

}  // namespace
}  // namespace vantrel::desktop
