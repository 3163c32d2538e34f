#include "Vantrel/Interface/ShortcutRecorderView.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/fakes/FakePreferencesWindowView.hpp"

namespace vantrel {
namespace {

constexpr std::uint32_t hyperFlags =
    KeyEvent::commandFlag | KeyEvent::shiftFlag | KeyEvent::optionFlag | KeyEvent::controlFlag;

using Calls = std::vector<std::string>;

const Calls cancelled{"recorder.removeMonitor", "recorder.setTitle(Hyper + D)", "didCancel recording 0"};
const Calls modifierMissing{"recorder.setTitle(Add modifier...)",
                            "didReject(Use at least one modifier plus a regular key.) recording 1"};

KeyEvent keyDown(std::uint32_t keyCode, std::uint32_t flags) {
    return {KeyEventType::keyDown, keyCode, flags};
}

KeyEvent flagsChanged(std::uint32_t keyCode, std::uint32_t flags) {
    return {KeyEventType::flagsChanged, keyCode, flags};
}

class Owner final : public ShortcutRecorderViewDelegate {
  public:
    explicit Owner(fake::Journal& calls) : journal_(calls) {}

    void shortcutRecorderViewDidRecord(ShortcutRecorderView& view, const KeyboardShortcut& shortcut) override {
        journal_.push_back("didRecord(" + shortcut.displayText() + ") recording " + std::to_string(view.isRecording()));
    }
    void shortcutRecorderViewDidReject(ShortcutRecorderView& view, const std::string& message) override {
        journal_.push_back("didReject(" + message + ") recording " + std::to_string(view.isRecording()));
    }
    void shortcutRecorderViewDidCancel(ShortcutRecorderView& view) override {
        journal_.push_back("didCancel recording " + std::to_string(view.isRecording()));
    }

  private:
    fake::Journal& journal_;
};

class ShortcutRecorderViewTest : public testing::Test {
  protected:
    ShortcutRecorderViewTest() {
        recorder->setRecorderDelegate(owner);
        journal.clear();
    }

    /// What was called since the last time.
    Calls takeCalls() { return std::exchange(journal, {}); }

    void startAndForget() {
        button.click();
        journal.clear();
    }

    fake::Journal journal;
    fake::FakeShortcutRecorderButton button{journal};
    std::shared_ptr<Owner> owner = std::make_shared<Owner>(journal);
    std::shared_ptr<ShortcutRecorderView> recorder = ShortcutRecorderView::create(button);
};

TEST_F(ShortcutRecorderViewTest, create_fresh_showsTheDefaultShortcutAtRest) {
    EXPECT_EQ(button.title, "Hyper + D");
    EXPECT_EQ(recorder->shortcut(), (KeyboardShortcut{2, 0x1B00}));
    EXPECT_FALSE(recorder->isRecording());
}

TEST_F(ShortcutRecorderViewTest, setShortcut_atRest_showsItAtOnce) {
    recorder->setShortcut({49, 0x1800});
    EXPECT_EQ(button.title, "Ctrl + Option + Space");
}

TEST_F(ShortcutRecorderViewTest, setShortcut_whileRecording_leavesThePromptUntilTheEnd) {
    button.click();
    recorder->setShortcut({49, 0x1800});
    EXPECT_EQ(button.title, "Press shortcut...");
    button.click();
    EXPECT_EQ(button.title, "Ctrl + Option + Space");
}

TEST_F(ShortcutRecorderViewTest, click_atRest_startsRecordingInOrder) {
    button.click();
    EXPECT_TRUE(recorder->isRecording());
    EXPECT_EQ(takeCalls(),
              (Calls{"recorder.setTitle(Press shortcut...)", "recorder.makeFirstResponder", "recorder.addMonitor"}));
    EXPECT_EQ(button.monitorMask, 5120U);
}

TEST_F(ShortcutRecorderViewTest, click_withoutWindow_takesNoFocus) {
    button.hasWindow = false;
    button.click();
    EXPECT_EQ(takeCalls(), (Calls{"recorder.setTitle(Press shortcut...)", "recorder.addMonitor"}));
}

TEST_F(ShortcutRecorderViewTest, click_whileRecording_cancels) {
    startAndForget();
    button.click();
    EXPECT_EQ(takeCalls(), cancelled);
    EXPECT_FALSE(recorder->isRecording());
}

TEST_F(ShortcutRecorderViewTest, click_monitorRefused_stillCancelsAtTheSecondClick) {
    button.refusesMonitor = true;
    startAndForget();
    EXPECT_TRUE(recorder->isRecording());
    button.click();
    EXPECT_EQ(takeCalls(), (Calls{"recorder.setTitle(Hyper + D)", "didCancel recording 0"}));
}

TEST_F(ShortcutRecorderViewTest, stopRecording_atRest_doesNothingAtAll) {
    recorder->stopRecording(true);
    recorder->stopRecording(false);
    EXPECT_EQ(takeCalls(), Calls{});
}

TEST_F(ShortcutRecorderViewTest, stopRecording_withoutNotice_isSilent) {
    startAndForget();
    recorder->stopRecording(false);
    EXPECT_EQ(takeCalls(), (Calls{"recorder.removeMonitor", "recorder.setTitle(Hyper + D)"}));
}

TEST_F(ShortcutRecorderViewTest, event_afterRecordingButStillDelivered_passesThrough) {
    button.click();
    const auto handler = button.handler;
    button.click();
    const KeyEvent event = keyDown(2, hyperFlags);
    EXPECT_EQ(handler(event), event);
}

TEST_F(ShortcutRecorderViewTest, event_keyUpWhileRecording_passesThrough) {
    startAndForget();
    const KeyEvent event{KeyEventType::keyUp, 2, hyperFlags};
    // Past the mask, as a careless monitor might deliver it.
    EXPECT_EQ(button.handler(event), event);
    EXPECT_EQ(takeCalls(), Calls{});
}

TEST_F(ShortcutRecorderViewTest, event_recorderGone_isSwallowed) {
    button.click();
    const auto handler = button.handler;
    recorder.reset();
    EXPECT_EQ(handler(keyDown(2, hyperFlags)), std::nullopt);
}

TEST_F(ShortcutRecorderViewTest, event_modifierChange_promptsForAKey) {
    startAndForget();
    EXPECT_EQ(button.type(flagsChanged(59, KeyEvent::controlFlag)), std::nullopt);
    EXPECT_EQ(button.type(flagsChanged(59, 0)), std::nullopt);
    EXPECT_EQ(takeCalls(), (Calls{"recorder.setTitle(Press a key...)", "recorder.setTitle(Press a key...)"}));
    EXPECT_TRUE(recorder->isRecording());
}

TEST_F(ShortcutRecorderViewTest, event_chord_isRecordedOnceAndTheTitleStaysInForce) {
    startAndForget();
    button.type(flagsChanged(59, KeyEvent::controlFlag));
    button.type(flagsChanged(58, KeyEvent::controlFlag | KeyEvent::optionFlag));
    EXPECT_EQ(button.title, "Press a key...");
    takeCalls();
    EXPECT_EQ(button.type(keyDown(49, KeyEvent::controlFlag | KeyEvent::optionFlag)), std::nullopt);
    EXPECT_EQ(takeCalls(), (Calls{"recorder.removeMonitor", "recorder.setTitle(Hyper + D)",
                                  "didRecord(Ctrl + Option + Space) recording 0"}));
}

TEST_F(ShortcutRecorderViewTest, event_escape_cancelsWithAnyModifiers) {
    for (const std::uint32_t flags : {0U, KeyEvent::commandFlag, hyperFlags}) {
        startAndForget();
        EXPECT_EQ(button.type(keyDown(53, flags)), std::nullopt);
        EXPECT_EQ(takeCalls(), cancelled);
    }
}

TEST_F(ShortcutRecorderViewTest, event_keyWithoutModifier_isRejectedAndRecordingGoesOn) {
    // The last are all flags but the four modifiers'.
    for (const std::uint32_t flags : {0U, KeyEvent::capsLockFlag, KeyEvent::functionFlag, 0xFFE1FFFFU}) {
        SCOPED_TRACE(flags);
        startAndForget();
        EXPECT_EQ(button.type(keyDown(2, flags)), std::nullopt);
        EXPECT_EQ(takeCalls(), modifierMissing);
        recorder->stopRecording(false);
    }
}

TEST_F(ShortcutRecorderViewTest, event_modifierKeysOwnCode_isRejectedAndRecordingGoesOn) {
    for (std::uint32_t keyCode = 54; keyCode <= 63; ++keyCode) {
        SCOPED_TRACE(keyCode);
        startAndForget();
        button.type(keyDown(keyCode, hyperFlags));
        EXPECT_EQ(takeCalls(), modifierMissing);
        recorder->stopRecording(false);
    }
}

TEST_F(ShortcutRecorderViewTest, event_reservedDigit_stopsAndIsNotReported) {
    for (const std::uint32_t keyCode : {18U, 19U, 20U, 21U, 23U}) {
        SCOPED_TRACE(keyCode);
        startAndForget();
        EXPECT_EQ(button.type(keyDown(keyCode, hyperFlags)), std::nullopt);
        EXPECT_EQ(takeCalls(),
                  (Calls{"recorder.removeMonitor", "recorder.setTitle(Hyper + D)",
                         "didReject(Hyper + 1 through Hyper + 5 are already reserved in Raycast.) recording 0"}));
    }
}

TEST_F(ShortcutRecorderViewTest, event_flags_becomeCarbonBitsOneByOne) {
    struct Chord {
        KeyEvent typed;
        KeyboardShortcut recorded;
    };
    const std::vector<Chord> chords{
        {keyDown(22, hyperFlags), {22, 0x1B00}},
        {keyDown(0, KeyEvent::commandFlag), {0, 0x100}},
        {keyDown(0, KeyEvent::shiftFlag), {0, 0x200}},
        {keyDown(0, KeyEvent::optionFlag), {0, 0x800}},
        {keyDown(0, KeyEvent::controlFlag), {0, 0x1000}},
        {keyDown(18, KeyEvent::controlFlag | KeyEvent::optionFlag | KeyEvent::commandFlag), {18, 0x1900}},
        {keyDown(107, KeyEvent::commandFlag | KeyEvent::capsLockFlag | KeyEvent::functionFlag), {107, 0x100}},
        {keyDown(52, KeyEvent::commandFlag), {52, 0x100}},
        {keyDown(64, KeyEvent::shiftFlag), {64, 0x200}},
    };
    for (const auto& [typed, recorded] : chords) {
        startAndForget();
        button.type(typed);
        EXPECT_EQ(takeCalls().back(), "didRecord(" + recorded.displayText() + ") recording 0");
    }
}

TEST_F(ShortcutRecorderViewTest, window_goesWhileRecording_cancels) {
    startAndForget();
    button.moveToWindow(false);
    EXPECT_EQ(takeCalls(), cancelled);
}

TEST_F(ShortcutRecorderViewTest, window_goesAtRest_doesNothing) {
    button.moveToWindow(false);
    EXPECT_EQ(takeCalls(), Calls{});
}

TEST_F(ShortcutRecorderViewTest, window_comesWhileRecording_changesNothing) {
    startAndForget();
    button.moveToWindow(true);
    EXPECT_EQ(takeCalls(), Calls{});
    EXPECT_TRUE(recorder->isRecording());
}

TEST_F(ShortcutRecorderViewTest, owner_gone_behavesTheSameInSilence) {
    const std::weak_ptr<Owner> weakOwner = owner;
    owner.reset();
    EXPECT_TRUE(weakOwner.expired());
    startAndForget();
    button.type(keyDown(2, 0));
    EXPECT_TRUE(recorder->isRecording());
    EXPECT_EQ(button.title, "Add modifier...");
    button.type(keyDown(18, hyperFlags));
    EXPECT_FALSE(recorder->isRecording());
    button.click();
    button.type(keyDown(2, hyperFlags));
    EXPECT_FALSE(recorder->isRecording());
    button.click();
    button.click();
    EXPECT_EQ(button.title, "Hyper + D");
}

TEST_F(ShortcutRecorderViewTest, recorder_goneWhileRecording_givesTheKeysFree) {
    startAndForget();
    recorder.reset();
    EXPECT_EQ(takeCalls(), Calls{"recorder.removeMonitor"});
    EXPECT_FALSE(button.handler);
}

TEST(ShortcutRecorderViewDeathTest, initWithCoder_always_isFatal) {
    EXPECT_DEATH(ShortcutRecorderView::initWithCoder(), "init\\(coder:\\) has not been implemented");
}

}  // namespace
}  // namespace vantrel
