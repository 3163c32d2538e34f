#include <limits>

#include "tests/unit/controller/ControllerTest.hpp"

namespace vantrel {
namespace {

using fake::Journal;

/// The controller with its settings window, both real; only what draws is a fake.
class PreferencesWindowUpdatesTest : public ControllerTest {
  protected:
    void launchAndOpenSettings() {
        launch();
        controller->openSettings();
        fakes.journal.clear();
    }

    fake::FakePreferencesWindowView& view() { return *fakes.preferencesWindowViews.view; }

    void record(std::uint32_t keyCode, std::uint32_t flags) {
        view().recorderButton.click();
        view().recorderButton.type({KeyEventType::keyDown, keyCode, flags});
    }

    PreferencesWindowViewDelegate& window() { return *view().delegate.lock(); }
};

constexpr std::uint32_t controlOption = KeyEvent::controlFlag | KeyEvent::optionFlag;

TEST_F(PreferencesWindowUpdatesTest, refresh_neverOpened_doesNothing) {
    launch();
    controller->refreshPreferencesWindow();
    EXPECT_EQ(fakes.journal, Journal{});
}

TEST_F(PreferencesWindowUpdatesTest, refresh_pointThatCannotBeShown_isNoConcernUntilDrawn) {
    launchAndOpenSettings();
    controller->saveCurrentPoint();
    fakes.pointer.location.x = std::numeric_limits<double>::quiet_NaN();
    controller->saveCurrentPoint();
    EXPECT_EQ(view().content.savedPointsSummary, "2 saved cursor points.");
}

TEST_F(PreferencesWindowUpdatesTest, refresh_listChangesAfterwards_windowKeepsItsCopy) {
    launchAndOpenSettings();
    controller->saveCurrentPoint();
    controller->saveCurrentPoint();
    std::size_t rowsBeforeTheRefresh = 0;
    fakes.defaults.whenStoring = [&] { rowsBeforeTheRefresh = view().drawnRows().size(); };
    controller->clearSavedPoints();
    EXPECT_EQ(rowsBeforeTheRefresh, 2U);
    EXPECT_TRUE(view().drawnRows().empty());
}

TEST_F(PreferencesWindowUpdatesTest, record_freeChord_isAppliedShownAndStored) {
    launchAndOpenSettings();
    record(49, controlOption);
    EXPECT_EQ(calls({"window.setContent", "setObjects", "setMenu", "setTitle"}),
              (Journal{"window.setContent(Checking Ctrl + Option + Space..., secondary)",
                       "setObjects(primaryHotKeyCode=49, primaryHotKeyModifiers=6144)", "setMenu",
                       "window.setContent(Ready. Use Ctrl + Option + Space., secondary)", "setTitle(Shortcut saved)"}));
    EXPECT_EQ(view().recorderButton.title, "Ctrl + Option + Space");
    EXPECT_EQ(shortcutLine(), "Shortcut: Ctrl + Option + Space");
}

TEST_F(PreferencesWindowUpdatesTest, record_chordHeldByAnother_isRestoredAndSaid) {
    launchAndOpenSettings();
    fakes.hotKeys.refusals[{49, 0x1800}] = eventHotKeyExistsErr;
    record(49, controlOption);
    EXPECT_EQ(calls({"window.setContent"}),
              (Journal{"window.setContent(Checking Ctrl + Option + Space..., secondary)",
                       "window.setContent(Ctrl + Option + Space is unavailable. Restored Hyper + D., "
                       "secondary)"}));
    EXPECT_EQ(view().recorderButton.title, "Hyper + D");
}

TEST_F(PreferencesWindowUpdatesTest, record_chordAndRestoreRefused_isSaidInRed) {
    launchAndOpenSettings();
    fakes.hotKeys.refusals[{49, 0x1800}] = eventHotKeyExistsErr;
    fakes.hotKeys.refusals[{2, 0x1B00}] = eventHotKeyInvalidErr;
    record(49, controlOption);
    EXPECT_EQ(view().content.shortcutStatus,
              "Ctrl + Option + Space is unavailable, and Hyper + D could not be restored. macOS returned -9878.");
    EXPECT_EQ(view().content.shortcutStatusColor, SemanticColor::systemRed);
    EXPECT_EQ(shortcutLine(), "Shortcut unavailable: Hyper + D");
}

TEST_F(PreferencesWindowUpdatesTest, record_whileRecording_refreshLeavesThePrompt) {
    launchAndOpenSettings();
    view().recorderButton.click();
    controller->toggleSound();
    EXPECT_EQ(view().recorderButton.title, "Press shortcut...");
}

TEST_F(PreferencesWindowUpdatesTest, reset_anyShortcut_appliesHyperD) {
    launchAndOpenSettings();
    controller->applyPrimaryShortcut({49, 0x1800});
    window().resetShortcut();
    EXPECT_EQ(shortcutLine(), "Shortcut: Hyper + D");
    EXPECT_EQ(view().recorderButton.title, "Hyper + D");
    EXPECT_EQ(view().content.shortcutStatus, "Ready. With Raycast Hyper Key, use Caps Lock + D.");
}

TEST_F(PreferencesWindowUpdatesTest, mode_chosen_isSetStoredAndShownInOrder) {
    launchAndOpenSettings();
    window().modeChanged(1);
    EXPECT_EQ(calls({"setObjects", "setMenu", "window.reloadSavedPoints"}),
              (Journal{"setObjects(mode=manual)", "setMenu", "window.reloadSavedPoints"}));
    EXPECT_EQ(modeLine(), "Mode: Manual: saved points");
}

TEST_F(PreferencesWindowUpdatesTest, animation_chosen_isSetStoredAndShownInOrder) {
    launchAndOpenSettings();
    window().animationChanged(0);
    EXPECT_EQ(calls({"setObjects", "setMenu", "window.reloadSavedPoints"}),
              (Journal{"setObjects(animation=none)", "setMenu", "window.reloadSavedPoints"}));
    EXPECT_EQ(view().content.selectedAnimation, 0);
}

TEST_F(PreferencesWindowUpdatesTest, sound_switched_isSetStoredAndShownInOrder) {
    launchAndOpenSettings();
    window().soundChanged(false);
    EXPECT_EQ(calls({"setObjects", "setMenu", "window.reloadSavedPoints"}),
              (Journal{"setObjects(soundEnabled=0)", "setMenu", "window.reloadSavedPoints"}));
    EXPECT_FALSE(view().content.isSoundChecked);
}

TEST_F(PreferencesWindowUpdatesTest, clear_pressed_emptiesStoresShowsAndFlashesInOrder) {
    launchAndOpenSettings();
    for (int point = 0; point < 3; ++point) {
        controller->saveCurrentPoint();
    }
    EXPECT_EQ(view().content.savedPointsSummary, "3 saved cursor points.");
    fakes.journal.clear();
    window().clearSavedPoints();
    EXPECT_EQ(storedData("savedPoints"), "[]");
    EXPECT_EQ(calls({"setObjects", "setMenu", "window.reloadSavedPoints", "setTitle"}),
              (Journal{"setObjects(savedPoints=[])", "setMenu", "window.reloadSavedPoints", "setTitle(Cleared)"}));
    EXPECT_EQ(view().content.savedPointsSummary, "No saved cursor points.");
    EXPECT_EQ(view().drawnRows(), std::vector<std::string>());
}

TEST_F(PreferencesWindowUpdatesTest, window_controllerGone_doesNothing) {
    launchAndOpenSettings();
    // The window outlives its delegate only while somebody else still holds it.
    const auto held = view().delegate.lock();
    controller.reset();
    fakes.journal.clear();
    held->resetShortcut();
    held->modeChanged(1);
    held->animationChanged(0);
    held->soundChanged(false);
    held->clearSavedPoints();
    EXPECT_EQ(fakes.journal, Journal{});
}

}  // namespace
}  // namespace vantrel
