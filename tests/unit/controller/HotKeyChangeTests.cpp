#include "tests/unit/controller/ControllerTest.hpp"

namespace vantrel {
namespace {

/// Changes of the primary shortcut, with the settings window open so that its refresh is seen.
class HotKeyChangeTest : public ControllerTest {
  protected:
    void launchAndOpenSettings() {
        launch();
        controller->openSettings();
        fakes.journal.clear();
    }

    /// Registrations, stores and what the person sees, in order.
    [[nodiscard]] fake::Journal visibleCalls() const {
        return calls(
            {"RegisterEventHotKey", "UnregisterEventHotKey", "setObjects", "setMenu", "window.setContent", "setTitle"});
    }

    /// What the window says of the shortcut.
    [[nodiscard]] const std::string& statusText() const {
        return fakes.preferencesWindowViews.view->content.shortcutStatus;
    }
};

TEST_F(HotKeyChangeTest, apply_freeShortcut_replacesTheOldOneInOrder) {
    launchAndOpenSettings();
    controller->applyPrimaryShortcut({40, controlOptionCommand});
    EXPECT_EQ(visibleCalls(), (fake::Journal{"UnregisterEventHotKey(id 1)", "RegisterEventHotKey(40, 6400, id 1)",
                                             "setObjects(primaryHotKeyCode=40, primaryHotKeyModifiers=6400)", "setMenu",
                                             "window.setContent(Ready. Use Ctrl + Option + Command + K., secondary)",
                                             "setTitle(Shortcut saved)"}));
    EXPECT_EQ(shortcutLine(), "Shortcut: Ctrl + Option + Command + K");
    EXPECT_TRUE(fakes.hotKeys.isRegistered({40, controlOptionCommand}));
    EXPECT_FALSE(fakes.hotKeys.isRegistered({2, hyper}));
    EXPECT_EQ(releasedAtTheEnd(), "id 1, id 2, id 3, id 4, id 5");
}

TEST_F(HotKeyChangeTest, apply_shortcutInForce_releasesRegistersAndStoresItAgain) {
    launchAndOpenSettings();
    controller->applyPrimaryShortcut({2, hyper});
    EXPECT_EQ(visibleCalls(),
              (fake::Journal{"UnregisterEventHotKey(id 1)", "RegisterEventHotKey(2, 6912, id 1)",
                             "setObjects(primaryHotKeyCode=2, primaryHotKeyModifiers=6912)", "setMenu",
                             "window.setContent(Ready. With Raycast Hyper Key, use Caps Lock + D., secondary)",
                             "setTitle(Shortcut saved)"}));
}

TEST_F(HotKeyChangeTest, apply_reservedShortcut_changesNothingAndSaysSo) {
    launchAndOpenSettings();
    controller->applyPrimaryShortcut({20, hyper});
    const std::string text = "Hyper + 3 is already reserved in Raycast. Hyper + 1 through Hyper + 5 are avoided.";
    EXPECT_EQ(visibleCalls(),
              (fake::Journal{"setMenu", "window.setContent(" + text + ", secondary)", "setTitle(Shortcut busy)"}));
    EXPECT_EQ(shortcutLine(), "Shortcut: Hyper + D");
    EXPECT_TRUE(fakes.defaults.values.empty());
}

TEST_F(HotKeyChangeTest, apply_refusedShortcut_restoresThePreviousOne) {
    launchAndOpenSettings();
    fakes.hotKeys.refusals = {{{40, hyper}, eventHotKeyExistsErr}};
    controller->applyPrimaryShortcut({40, hyper});
    EXPECT_EQ(visibleCalls(),
              (fake::Journal{"UnregisterEventHotKey(id 1)", "RegisterEventHotKey(40, 6912, id 1)",
                             "RegisterEventHotKey(2, 6912, id 1)", "setMenu",
                             "window.setContent(Hyper + K is unavailable. Restored Hyper + D., secondary)",
                             "setTitle(Shortcut busy)"}));
    EXPECT_EQ(shortcutLine(), "Shortcut: Hyper + D");
    EXPECT_TRUE(fakes.hotKeys.isRegistered({2, hyper}));
    EXPECT_TRUE(fakes.defaults.values.empty());
    EXPECT_EQ(releasedAtTheEnd(), "id 1, id 2, id 3, id 4, id 5");
}

TEST_F(HotKeyChangeTest, apply_bothRefused_quotesTheStatusOfTheNewOne) {
    launchAndOpenSettings();
    fakes.hotKeys.refusals = {{{40, hyper}, eventHotKeyInvalidErr}, {{2, hyper}, eventHotKeyExistsErr}};
    controller->applyPrimaryShortcut({40, hyper});
    EXPECT_EQ(statusText(), "Hyper + K is unavailable, and Hyper + D could not be restored. macOS returned -9879.");
    EXPECT_EQ(shortcutLine(), "Shortcut unavailable: Hyper + D");
    EXPECT_EQ(fakes.statusBar.title, "Shortcut busy");
    EXPECT_TRUE(fakes.defaults.values.empty());
    EXPECT_EQ(releasedAtTheEnd(), "id 2, id 3, id 4, id 5");
}

TEST_F(HotKeyChangeTest, apply_emptyReference_isARefusalWithStatusZero) {
    launchAndOpenSettings();
    fakes.hotKeys.refusals = {{{40, hyper}, 0}, {{2, hyper}, 0}};
    controller->applyPrimaryShortcut({40, hyper});
    EXPECT_EQ(statusText(), "Hyper + K is unavailable, and Hyper + D could not be restored. macOS returned 0.");
    EXPECT_EQ(shortcutLine(), "Shortcut unavailable: Hyper + D");
}

TEST_F(HotKeyChangeTest, apply_whileNotRegistered_bringsThePreviousOneBack) {
    fakes.hotKeys.refusals = {{{2, hyper}, eventHotKeyExistsErr}, {{40, hyper}, eventHotKeyExistsErr}};
    launchAndOpenSettings();
    ASSERT_EQ(shortcutLine(), "Shortcut unavailable: Hyper + D");
    fakes.hotKeys.refusals.erase({2, hyper});
    controller->applyPrimaryShortcut({40, hyper});
    EXPECT_EQ(calls({"RegisterEventHotKey", "UnregisterEventHotKey"}),
              (fake::Journal{"RegisterEventHotKey(40, 6912, id 1)", "RegisterEventHotKey(2, 6912, id 1)"}));
    EXPECT_EQ(shortcutLine(), "Shortcut: Hyper + D");
    EXPECT_EQ(statusText(), "Hyper + K is unavailable. Restored Hyper + D.");
}

TEST_F(HotKeyChangeTest, apply_freeShortcutWhileNotRegistered_isRegisteredAndStored) {
    fakes.hotKeys.refusals = {{{2, hyper}, eventHotKeyExistsErr}};
    launchAndOpenSettings();
    controller->applyPrimaryShortcut({40, hyper});
    EXPECT_EQ(calls({"RegisterEventHotKey", "UnregisterEventHotKey", "setObjects"}),
              (fake::Journal{"RegisterEventHotKey(40, 6912, id 1)",
                             "setObjects(primaryHotKeyCode=40, primaryHotKeyModifiers=6912)"}));
    EXPECT_EQ(shortcutLine(), "Shortcut: Hyper + K");
    EXPECT_EQ(statusText(), "Ready. With Raycast Hyper Key, use Caps Lock + K.");
    EXPECT_EQ(releasedAtTheEnd(), "id 1, id 2, id 3, id 4, id 5");
}

TEST_F(HotKeyChangeTest, apply_reservedWhileNotRegistered_staysNotRegistered) {
    fakes.hotKeys.refusals = {{{2, hyper}, eventHotKeyExistsErr}};
    launchAndOpenSettings();
    controller->applyPrimaryShortcut({18, hyper});
    EXPECT_EQ(shortcutLine(), "Shortcut unavailable: Hyper + D");
    EXPECT_TRUE(calls({"RegisterEventHotKey"}).empty());
}

TEST_F(HotKeyChangeTest, apply_combinationOfAFixedKey_isRefusedAndRestored) {
    launchAndOpenSettings();
    controller->applyPrimaryShortcut({1, hyper});
    EXPECT_EQ(statusText(), "Hyper + S is unavailable. Restored Hyper + D.");
    EXPECT_TRUE(fakes.hotKeys.isRegistered({1, hyper}));
}

TEST_F(HotKeyChangeTest, apply_shortcutWithoutAnyOfTheFourModifiers_isRefusedAndRestored) {
    launchAndOpenSettings();
    for (const std::uint32_t modifiers : {0U, 0x400U, 0xFFFFE4FFU}) {
        controller->applyPrimaryShortcut({111, modifiers});
        EXPECT_EQ(shortcutLine(), "Shortcut: Hyper + D");
        EXPECT_EQ(statusText(), "F12 is unavailable. Restored Hyper + D.");
        EXPECT_FALSE(fakes.hotKeys.isRegistered({111, modifiers}));
    }
}

TEST_F(HotKeyChangeTest, apply_fixedKeyWithAFurtherBit_isRefusedAndRestored) {
    launchAndOpenSettings();
    controller->applyPrimaryShortcut({124, 0x1900 | 0x400});
    EXPECT_EQ(statusText(), "Ctrl + Option + Command + Right Arrow is unavailable. Restored Hyper + D.");
}

}  // namespace
}  // namespace vantrel
