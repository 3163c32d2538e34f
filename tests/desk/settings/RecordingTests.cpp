#include <gtest/gtest.h>

#include <algorithm>

#include "tests/desk/settings/RecordingFixture.hpp"
#include "tests/desk/settings/WindowManagerProbe.hpp"
#include "tests/desk/support/KeyGrab.hpp"

namespace vantrel::desk {
namespace {

constexpr std::string_view digit1 = "AE01", f4 = "FK04", k = "AC08";

TEST_F(Recording, chord_typed_isAppliedShownAndStored) {
    openAndRecord();
    settings.saveScreenshot("recording");
    keyboard().hold({keys::control, keys::option});
    EXPECT_TRUE(titleBecomes("Press a key..."));
    keyboard().letGo();
    expectRecorded({keys::control, keys::option, keys::space}, "Ctrl + Option + Space");
    EXPECT_EQ(settings.fakes().statusBar.menu.at(11).title, "Shortcut: Ctrl + Option + Space");
    EXPECT_EQ(settings.fakes().defaults.integerForKey("primaryHotKeyCode"), 49);
    EXPECT_EQ(settings.fakes().defaults.integerForKey("primaryHotKeyModifiers"), 0x1800);
    EXPECT_TRUE(settings.desk().waitForHotKey({keys::control, keys::option, keys::space}));
    EXPECT_TRUE(keyboardBecomesFree());
}

TEST_F(Recording, shortcutInForce_typed_isRecordedNotCarriedOut) {
    openAndRecord();
    settings.fakes().journal.clear();
    keyboard().type(hyper(keys::d));
    EXPECT_TRUE(settings.turnUntil([&] { return settings.fakes().statusBar.title == "Shortcut saved"; }));
    EXPECT_EQ(settings.status(), "Ready. With Raycast Hyper Key, use Caps Lock + D.");
    const auto& journal = settings.fakes().journal;
    EXPECT_TRUE(settings.holds([&] {
        return std::find(journal.begin(), journal.end(), "setTitle(No display)") == journal.end();
    })) << "the hot key went off";
}

TEST_F(Recording, windowManagersChord_typed_reachesTheRecorderAndIsRefused) {
    settings.waitForWindowManagersChord({keys::option, f4});
    openAndRecord();
    keyboard().type({keys::option, f4});
    EXPECT_TRUE(statusBecomes("Option + F4 is unavailable. Restored Hyper + D.")) << settings.status();
    EXPECT_FALSE(settings.statusIsRed());
    EXPECT_TRUE(settings.window().isVisible()) << "the window manager closed the window";
    EXPECT_TRUE(settings.desk().waitForHotKey(hyper(keys::d)));
    settings.saveScreenshot("restored");
}

TEST_F(Recording, keyWithoutModifier_typed_isRejectedAndRecordingGoesOn) {
    openAndRecord();
    keyboard().type({keys::d});
    EXPECT_TRUE(statusBecomes("Use at least one modifier plus a regular key."));
    EXPECT_TRUE(settings.statusIsRed());
    EXPECT_EQ(settings.recorderTitle(), "Add modifier...");
    settings.saveScreenshot("rejected");
    expectRecorded({keys::command, k}, "Command + K");
}

TEST_F(Recording, keyWithoutModifier_heldDown_isRejectedOnceAndItsRepeatsAreNotRecorded) {
    openAndRecord();
    keyboard().hold({keys::d});
    EXPECT_TRUE(titleBecomes("Add modifier..."));
    keyboard().hold({keys::control});
    EXPECT_TRUE(titleBecomes("Press a key..."));
    // Longer than it takes a held key to repeat.
    EXPECT_TRUE(
        settings.holds([&] { return settings.recorderTitle() == "Press a key..."; }, std::chrono::milliseconds(900)));
    keyboard().letGo();
    expectRecorded({keys::control, keys::d}, "Ctrl + D");
}

TEST_F(Recording, reservedDigit_typed_stopsWithItsMessage) {
    openAndRecord();
    keyboard().type(hyper(digit1));
    EXPECT_TRUE(statusBecomes("Hyper + 1 through Hyper + 5 are already reserved in Raycast."));
    EXPECT_TRUE(settings.statusIsRed());
    EXPECT_EQ(settings.recorderTitle(), "Hyper + D");
    EXPECT_TRUE(keyboardBecomesFree());
}

TEST_F(Recording, escape_heldDown_cancelsAndNeverClosesTheWindow) {
    openAndRecord();
    keyboard().hold({keys::escape});
    EXPECT_TRUE(statusBecomes("Shortcut recording cancelled."));
    EXPECT_FALSE(settings.statusIsRed());
    // Longer than it takes a held key to repeat.
    EXPECT_TRUE(settings.holds([&] { return settings.window().isVisible(); }, std::chrono::milliseconds(900)));
    keyboard().letGo();
    EXPECT_TRUE(keyboardBecomesFree());
    keyboard().type({keys::escape});
    EXPECT_TRUE(settings.turnUntil([&] { return !settings.window().isVisible(); }));
}

TEST_F(Recording, secondClick_any_cancels) {
    openAndRecord();
    settings.click(settings.recorder());
    EXPECT_TRUE(statusBecomes("Shortcut recording cancelled."));
    EXPECT_EQ(settings.recorderTitle(), "Hyper + D");
    EXPECT_TRUE(keyboardBecomesFree());
}

TEST_F(Recording, window_closedByTheWindowManager_cancels) {
    openAndRecord();
    WindowManagerProbe(settings.desk().connection()).closeWindow(static_cast<xcb_window_t>(settings.window().winId()));
    EXPECT_TRUE(settings.turnUntil([&] { return !settings.window().isVisible(); }));
    EXPECT_TRUE(settings.turnUntil([&] { return settings.status() == "Shortcut recording cancelled."; }));
    EXPECT_EQ(settings.recorderTitle(), "Hyper + D");
    EXPECT_TRUE(keyboardBecomesFree());
}

TEST_F(Recording, locks_on_changeNothing) {
    keyboard().type({keys::capsLock});
    keyboard().type({keys::numLock});
    openAndRecord();
    expectRecorded({keys::control, keys::d}, "Ctrl + D");
}

TEST_F(Recording, capsLock_asTheOnlyModifier_isNone) {
    keyboard().type({keys::capsLock});
    openAndRecord();
    keyboard().type({keys::d});
    EXPECT_TRUE(statusBecomes("Use at least one modifier plus a regular key."));
}

TEST_F(Recording, otherLayouts_sameKey_isTheSameShortcut) {
    for (const char* const layout : {"ru", "de", "us(dvorak)", "fr"}) {
        SCOPED_TRACE(layout);
        setKeyboardMap(settings.desk().server().displayName(), layout);
        settings.open();
        settings.startRecording();
        expectRecorded({keys::control, keys::shift, keys::d}, "Ctrl + Shift + D");
        settings.startRecording();
        expectRecorded({keys::command, keys::shift, "AE06"}, "Shift + Command + 6");
    }
}

TEST_F(Recording, layoutChange_whileRecording_isFollowed) {
    openAndRecord();
    setKeyboardMap(settings.desk().server().displayName(), "us", "altwin:swap_alt_win");
    expectRecorded({"LALT", k}, "Command + K");
}

TEST_F(Recording, layoutSwitchOnAltShift_chordWithBoth_keepsBoth) {
    setKeyboardMap(settings.desk().server().displayName(), "us,ru", "grp:alt_shift_toggle");
    openAndRecord();
    expectRecorded({keys::control, keys::option, keys::shift, keys::m}, "Ctrl + Option + Shift + M");
}

TEST_F(Recording, keyThatStartedIt_heldDown_isNotRecorded) {
    settings.open();
    keyboard().hold({keys::enter});
    EXPECT_TRUE(titleBecomes("Press shortcut..."));
    // Longer than it takes a held key to repeat.
    EXPECT_TRUE(settings.holds([&] { return settings.recorderTitle() == "Press shortcut..."; },
                               std::chrono::milliseconds(900)));
    keyboard().letGo();
    expectRecorded({keys::command, keys::enter}, "Command + Return");
}

TEST_F(Recording, keysWithoutVirtualKeyCode_typed_areIgnored) {
    openAndRecord();
    keyboard().type({"I172"});
    EXPECT_TRUE(settings.holds([&] { return settings.recorderTitle() == "Press shortcut..."; }));
    expectRecorded({keys::control, "PRSC"}, "Ctrl + Key 105");
}

TEST_F(Recording, focus_lostAndRegained_letsGoAndWaits) {
    openAndRecord();
    EXPECT_FALSE(keyboardIsFree(settings.desk().connection()));
    {
        OtherWindow other(settings.desk().connection());
        EXPECT_TRUE(keyboardBecomesFree());
        keyboard().type({keys::control, keys::m});
        EXPECT_TRUE(settings.turnUntil([&] { return other.keyPresses() > 0; }));
        EXPECT_TRUE(settings.holds([&] { return settings.recorderTitle() == "Press shortcut..."; }));
    }
    settings.open();
    EXPECT_TRUE(settings.turnUntil([&] { return !keyboardIsFree(settings.desk().connection()); }));
    expectRecorded({keys::control, keys::m}, "Ctrl + M");
}

TEST_F(Recording, chordOfAnotherProgram_typed_isRefusedAndRestored) {
    XConnection other(settings.desk().server().displayName());
    const KeyGrab grab(other, {keys::control, keys::space});
    openAndRecord();
    keyboard().type({keys::control, keys::space});
    EXPECT_TRUE(statusBecomes("Ctrl + Space is unavailable. Restored Hyper + D.")) << settings.status();
    EXPECT_FALSE(settings.statusIsRed());
    EXPECT_TRUE(settings.desk().waitForHotKey(hyper(keys::d)));
    EXPECT_EQ(settings.recorderTitle(), "Hyper + D");
    EXPECT_EQ(settings.fakes().statusBar.title, "Shortcut busy");
}

TEST_F(Recording, reset_clicked_bringsHyperDBack) {
    openAndRecord();
    expectRecorded({keys::control, keys::m}, "Ctrl + M");
    settings.click(settings.button("Reset"));
    EXPECT_TRUE(statusBecomes("Ready. With Raycast Hyper Key, use Caps Lock + D."));
    EXPECT_EQ(settings.recorderTitle(), "Hyper + D");
    EXPECT_TRUE(settings.desk().waitForHotKey(hyper(keys::d)));
}

TEST_F(Recording, chordHeldOn_afterwards_doesNotPressButtons) {
    openAndRecord();
    keyboard().hold({keys::control, keys::space});
    EXPECT_TRUE(statusBecomes("Ready. Use Ctrl + Space."));
    EXPECT_TRUE(
        settings.holds([&] { return settings.recorderTitle() == "Ctrl + Space"; }, std::chrono::milliseconds(900)));
    keyboard().letGo();
    EXPECT_TRUE(settings.holds([&] { return settings.recorderTitle() == "Ctrl + Space"; }));
    EXPECT_TRUE(keyboardBecomesFree());
}

TEST(RecordingRefused, shortcutAndItsPredecessor_bothHeldByOthers_areSaidInRed) {
    SettingsDesk settings({.hasSessionBus = false, .hasWindowManager = true},
                          {hyper(keys::d), {keys::control, keys::space}});
    settings.open();
    EXPECT_EQ(settings.status(), "Hyper + D is unavailable right now. macOS returned -9878.");
    EXPECT_TRUE(settings.statusIsRed());
    settings.saveScreenshot("unavailable");
    settings.startRecording();
    settings.desk().keyboard().type({keys::control, keys::space});
    EXPECT_TRUE(settings.turnUntil([&] {
        return settings.status() ==
               "Ctrl + Space is unavailable, and Hyper + D could not be restored. macOS returned -9878.";
    })) << settings.status();
    EXPECT_TRUE(settings.statusIsRed());
    EXPECT_EQ(settings.fakes().statusBar.menu.at(11).title, "Shortcut unavailable: Hyper + D");
}

}  // namespace
}  // namespace vantrel::desk
