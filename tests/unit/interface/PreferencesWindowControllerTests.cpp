#include "Vantrel/Interface/PreferencesWindowController.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "tests/fakes/FakePreferencesWindowView.hpp"

namespace vantrel {
namespace {

using Calls = std::vector<std::string>;

class Queue final : public MainQueue {
  public:
    void async(std::function<void()> /*task*/) override {}
    void asyncAfter(Seconds /*delay*/, std::shared_ptr<DispatchWorkItem> /*item*/) override {}
    [[nodiscard]] bool isMainThread() const override { return onMainThread; }

    bool onMainThread = true;
};

class Delegate final : public PreferencesWindowControllerDelegate {
  public:
    explicit Delegate(fake::Journal& calls) : journal_(calls) {}

    void preferencesDidRecordShortcut(const KeyboardShortcut& shortcut) override {
        journal_.push_back("didRecordShortcut(" + shortcut.displayText() + ")");
    }
    void preferencesDidResetShortcut() override { journal_.emplace_back("didResetShortcut"); }
    void preferencesDidChangeMode(VantrelMode mode) override {
        journal_.push_back("didChangeMode(" + std::string(rawValue(mode)) + ")");
    }
    void preferencesDidChangeAnimation(AnimationStyle style) override {
        journal_.push_back("didChangeAnimation(" + std::string(rawValue(style)) + ")");
    }
    void preferencesDidChangeSound(bool enabled) override {
        journal_.push_back(std::string("didChangeSound(") + (enabled ? "true" : "false") + ")");
    }
    void preferencesDidClearSavedPoints() override { journal_.emplace_back("didClearSavedPoints"); }
    void preferencesWindowFailed(const std::string& problem, const std::string& flashText) override {
        journal_.push_back("failed(" + problem + ", " + flashText + ")");
    }

  private:
    fake::Journal& journal_;
};

std::vector<SavedPoint> points(std::size_t count) {
    std::vector<SavedPoint> result(count);
    for (std::size_t index = 0; index < count; ++index) {
        result[index].name = "Point " + std::to_string(index + 1);
        result[index].point = VantrelPoint(static_cast<double>(index), 0);
    }
    return result;
}

class PreferencesWindowControllerTest : public testing::Test {
  protected:
    PreferencesWindowControllerTest() {
        auto made = factory.makePreferencesWindowView();
        controller = PreferencesWindowController::create(std::move(made.view), queue);
        controller->setDelegate(delegate);
        journal.clear();
    }

    fake::FakePreferencesWindowView& view() { return *factory.view; }
    const PreferencesWindowContent& content() { return view().content; }
    Calls takeCalls() { return std::exchange(journal, {}); }

    fake::Journal journal;
    Queue queue;
    fake::FakePreferencesWindowViewFactory factory{journal};
    std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>(journal);
    std::shared_ptr<PreferencesWindowController> controller;
};

TEST_F(PreferencesWindowControllerTest, create_fresh_isWiredAndEmpty) {
    EXPECT_EQ(view().delegate.lock(), controller);
    EXPECT_EQ(content(), PreferencesWindowContent());
    EXPECT_EQ(controller->numberOfRows(), 0U);
}

TEST_F(PreferencesWindowControllerTest, refresh_stateGiven_pushesItInOrder) {
    controller->refresh({.primaryShortcut = {46, 0x1900},
                         .primaryShortcutIsRegistered = true,
                         .primaryShortcutStatusText = "Ready. Use Ctrl + Option + Command + M.",
                         .mode = VantrelMode::manual,
                         .animationStyle = AnimationStyle::none,
                         .soundEnabled = false,
                         .savedPoints = points(3)});
    EXPECT_EQ(takeCalls(), (Calls{"recorder.setTitle(Ctrl + Option + Command + M)",
                                  "window.setContent(Ready. Use Ctrl + Option + Command + M., secondary)",
                                  "window.reloadSavedPoints"}));
    EXPECT_EQ(content().selectedMode, 1);
    EXPECT_EQ(content().selectedAnimation, 0);
    EXPECT_FALSE(content().isSoundChecked);
    EXPECT_EQ(content().savedPointsSummary, "3 saved cursor points.");
    EXPECT_EQ(view().drawnRows(), (Calls{"Point 1 - x 0, y 0", "Point 2 - x 1, y 0", "Point 3 - x 2, y 0"}));
}

TEST_F(PreferencesWindowControllerTest, refresh_noPoints_showsTheEmptyState) {
    PreferencesWindowState state;
    state.primaryShortcutStatusText = "Shortcut not registered yet.";
    controller->refresh(state);
    EXPECT_EQ(content().shortcutStatus, "Shortcut not registered yet.");
    EXPECT_EQ(content().shortcutStatusColor, SemanticColor::systemRed);
    EXPECT_EQ(content().savedPointsSummary, "No saved cursor points.");
    EXPECT_EQ(view().drawnRows(), Calls{});
    EXPECT_EQ(content().selectedMode, 0);
    EXPECT_EQ(content().selectedAnimation, 1);
    EXPECT_TRUE(content().isSoundChecked);
}

TEST_F(PreferencesWindowControllerTest, refresh_whileRecording_leavesThePrompt) {
    view().recorderButton.click();
    PreferencesWindowState state;
    state.primaryShortcut = {46, 0x1900};
    controller->refresh(state);
    EXPECT_EQ(view().recorderButton.title, "Press shortcut...");
}

TEST_F(PreferencesWindowControllerTest, refresh_valueOutsideTheLists_leavesTheSelection) {
    PreferencesWindowState state;
    state.mode = VantrelMode::manual;
    state.animationStyle = AnimationStyle::none;
    controller->refresh(state);
    state.mode = static_cast<VantrelMode>(7);
    state.animationStyle = static_cast<AnimationStyle>(7);
    controller->refresh(state);
    EXPECT_EQ(content().selectedMode, 1);
    EXPECT_EQ(content().selectedAnimation, 0);
}

TEST_F(PreferencesWindowControllerTest, resetShortcut_pressed_asksTheDelegate) {
    controller->resetShortcut();
    EXPECT_EQ(takeCalls(), Calls{"didResetShortcut"});
}

TEST_F(PreferencesWindowControllerTest, modeChanged_eachIndex_givesItsMode) {
    for (const std::int64_t index : {1, 0}) {
        controller->modeChanged(index);
    }
    EXPECT_EQ(takeCalls(), (Calls{"didChangeMode(manual)", "didChangeMode(automatic)"}));
}

TEST_F(PreferencesWindowControllerTest, animationChanged_eachIndex_givesItsStyle) {
    for (const std::int64_t index : {1, 0}) {
        controller->animationChanged(index);
    }
    EXPECT_EQ(takeCalls(), (Calls{"didChangeAnimation(glide)", "didChangeAnimation(none)"}));
}

TEST_F(PreferencesWindowControllerTest, popUpChanged_indexOutOfRange_isIgnored) {
    for (const std::int64_t index : {std::int64_t{-1}, std::int64_t{2}, std::numeric_limits<std::int64_t>::max(),
                                     std::numeric_limits<std::int64_t>::min()}) {
        controller->modeChanged(index);
        controller->animationChanged(index);
    }
    EXPECT_EQ(takeCalls(), Calls{});
}

TEST_F(PreferencesWindowControllerTest, soundChanged_eachState_isHandedOn) {
    for (const bool checked : {true, false}) {
        controller->soundChanged(checked);
    }
    EXPECT_EQ(takeCalls(), (Calls{"didChangeSound(true)", "didChangeSound(false)"}));
}

TEST_F(PreferencesWindowControllerTest, clearSavedPoints_pressed_asksTheDelegateAtOnce) {
    controller->clearSavedPoints();
    EXPECT_EQ(takeCalls(), Calls{"didClearSavedPoints"});
}

TEST_F(PreferencesWindowControllerTest, recorder_recorded_showsCheckingBeforeAsking) {
    view().recorderButton.click();
    takeCalls();
    view().recorderButton.type({KeyEventType::keyDown, 49, KeyEvent::controlFlag | KeyEvent::optionFlag});
    EXPECT_EQ(takeCalls(), (Calls{"recorder.removeMonitor", "recorder.setTitle(Hyper + D)",
                                  "window.setContent(Checking Ctrl + Option + Space..., secondary)",
                                  "didRecordShortcut(Ctrl + Option + Space)"}));
}

TEST_F(PreferencesWindowControllerTest, recorder_rejected_showsTheMessageInRed) {
    view().recorderButton.click();
    view().recorderButton.type({KeyEventType::keyDown, 49, 0});
    EXPECT_EQ(content().shortcutStatus, "Use at least one modifier plus a regular key.");
    EXPECT_EQ(content().shortcutStatusColor, SemanticColor::systemRed);
}

TEST_F(PreferencesWindowControllerTest, recorder_cancelled_showsItInTheSecondaryColour) {
    view().recorderButton.click();
    view().recorderButton.click();
    EXPECT_EQ(content().shortcutStatus, "Shortcut recording cancelled.");
    EXPECT_EQ(content().shortcutStatusColor, SemanticColor::secondaryLabel);
}

TEST_F(PreferencesWindowControllerTest, actions_delegateGone_doNothingButSayChecking) {
    const std::weak_ptr<Delegate> weakDelegate = delegate;
    delegate.reset();
    EXPECT_TRUE(weakDelegate.expired());
    controller->resetShortcut();
    controller->modeChanged(0);
    controller->animationChanged(0);
    controller->soundChanged(true);
    controller->clearSavedPoints();
    EXPECT_EQ(takeCalls(), Calls{});
    controller->shortcutRecorderViewDidRecord(controller->shortcutRecorder(), {49, 0x1800});
    EXPECT_EQ(takeCalls(), Calls{"window.setContent(Checking Ctrl + Option + Space..., secondary)"});
}

TEST_F(PreferencesWindowControllerTest, textForRow_rowThatDoesNotExist_isNone) {
    PreferencesWindowState state;
    state.savedPoints = points(2);
    controller->refresh(state);
    EXPECT_EQ(controller->textForRow(-1), std::nullopt);
    EXPECT_EQ(controller->textForRow(std::numeric_limits<std::int64_t>::min()), std::nullopt);
    EXPECT_EQ(controller->textForRow(2), std::nullopt);
    EXPECT_EQ(controller->textForRow(1), "Point 2 - x 1, y 0");
}

TEST_F(PreferencesWindowControllerTest, destruction_whileRecording_leavesNothingBehind) {
    view().recorderButton.click();
    const std::weak_ptr<PreferencesWindowController> weakController = controller;
    controller.reset();
    EXPECT_TRUE(weakController.expired());
}

using PreferencesWindowControllerDeathTest = PreferencesWindowControllerTest;

TEST_F(PreferencesWindowControllerDeathTest, refresh_coordinateWithoutInteger_isFatalOnlyWhenDrawn) {
    PreferencesWindowState state;
    state.savedPoints = points(2);
    state.savedPoints[1].point = VantrelPoint(std::numeric_limits<double>::infinity(), 0);
    controller->refresh(state);
    EXPECT_EQ(controller->textForRow(0), "Point 1 - x 0, y 0");
    EXPECT_DEATH((void)controller->textForRow(1), "cannot be rounded");
}

TEST_F(PreferencesWindowControllerDeathTest, operations_anotherThread_areFatal) {
    queue.onMainThread = false;
    EXPECT_DEATH(controller->refresh({}), "refresh must be called on the main thread");
    EXPECT_DEATH(controller->resetShortcut(), "resetShortcut must be called on the main thread");
    EXPECT_DEATH(controller->modeChanged(0), "modeChanged must be called on the main thread");
    EXPECT_DEATH(controller->animationChanged(0), "animationChanged must be called on the main thread");
    EXPECT_DEATH(controller->soundChanged(true), "soundChanged must be called on the main thread");
    EXPECT_DEATH(controller->clearSavedPoints(), "clearSavedPoints must be called on the main thread");
    EXPECT_DEATH((void)controller->numberOfRows(), "numberOfRows must be called on the main thread");
    EXPECT_DEATH((void)controller->textForRow(0), "textForRow must be called on the main thread");
    view().recorderButton.click();
    EXPECT_DEATH(view().recorderButton.click(), "shortcutRecorderViewDidCancel must be called on the main thread");
}

TEST_F(PreferencesWindowControllerDeathTest, initFromElsewhere_always_isFatal) {
    EXPECT_DEATH(PreferencesWindowController::initWithCoder(), "init\\(coder:\\) has not been implemented");
    EXPECT_DEATH(PreferencesWindowController::initWithWindow(), "init\\(window:\\) has not been implemented");
}

}  // namespace
}  // namespace vantrel
