#include "tests/unit/controller/ControllerTest.hpp"

namespace vantrel {
namespace {

class LifecycleTest : public ControllerTest {};

TEST_F(LifecycleTest, create_nothingElse_makesAnUntitledItemAndBuiltInValues) {
    EXPECT_EQ(fakes.journal, fake::Journal{"statusItem(-1)"});
    EXPECT_EQ(fakes.statusBar.title, "");
    EXPECT_TRUE(fakes.hotKeys.registrations().empty());
    EXPECT_FALSE(fakes.hotKeys.hasHandler());
    EXPECT_EQ(fakes.mainQueue.runningTimers(), 0U);
    EXPECT_EQ(fakes.mainQueue.pendingItems(), 0U);
    EXPECT_EQ(fakes.preferencesWindowViews.view, nullptr);

    controller->rebuildMenu();
    EXPECT_EQ(shortcutLine(), "Shortcut unavailable: Hyper + D");
    EXPECT_EQ(modeLine(), "Mode: Automatic: displays");
    EXPECT_EQ(savedPointsLine(), "Saved Points: none");
    auto& window = openSettings();
    EXPECT_EQ(window.content.shortcutStatus, "Shortcut not registered yet.");
    EXPECT_EQ(window.content.selectedAnimation, 1) << "glide";
    EXPECT_TRUE(window.content.isSoundChecked);
    layOutTwoDisplays();
    controller->teleportNextDisplay();
    EXPECT_EQ(storedPositions().size(), 1U) << "nothing but the display that was left";
}

TEST_F(LifecycleTest, launch_freshInstall_doesEverythingInOrder) {
    fakes.journal.clear();
    controller->applicationDidFinishLaunching();
    EXPECT_EQ(fakes.journal,
              (fake::Journal{"setActivationPolicy(1)", "stringForKey(mode)", "stringForKey(animation)",
                             "objectForKey(soundEnabled)", "objectForKey(primaryHotKeyCode)", "dataForKey(savedPoints)",
                             "dataForKey(rememberedPositions)", "setTitle(Vantrel)", "setToolTip(Vantrel)",
                             "setFont(12, semibold)", "InstallEventHandler", "RegisterEventHotKey(2, 6912, id 1)",
                             "RegisterEventHotKey(124, 6400, id 2)", "RegisterEventHotKey(123, 6400, id 3)",
                             "RegisterEventHotKey(46, 6400, id 4)", "RegisterEventHotKey(1, 6912, id 5)", "setMenu"}));
    EXPECT_EQ(fakes.statusBar.title, "Vantrel");
    EXPECT_EQ(shortcutLine(), "Shortcut: Hyper + D");
    EXPECT_EQ(openSettings().content.shortcutStatus, "Ready. With Raycast Hyper Key, use Caps Lock + D.");
    for (const auto& registration : fakes.hotKeys.registrations()) {
        EXPECT_EQ(registration.hotKeyID.signature, 0x564E544CU);  // "VNTL"
    }
}

TEST_F(LifecycleTest, launch_itemWithoutButton_skipsItsLooks) {
    fakes.statusBar.hasButton = false;
    controller->applicationDidFinishLaunching();
    EXPECT_TRUE(calls({"setTitle", "setToolTip", "setFont"}).empty());
    EXPECT_EQ(calls({"InstallEventHandler", "setMenu"}), (fake::Journal{"InstallEventHandler", "setMenu"}));
}

TEST_F(LifecycleTest, terminate_afterLaunch_releasesInOrder) {
    launch();
    controller->applicationWillTerminate();
    EXPECT_EQ(fakes.journal, (fake::Journal{"UnregisterEventHotKey(id 1)", "UnregisterEventHotKey(id 2)",
                                            "UnregisterEventHotKey(id 3)", "UnregisterEventHotKey(id 4)",
                                            "UnregisterEventHotKey(id 5)", "RemoveEventHandler"}));
    EXPECT_TRUE(fakes.hotKeys.registrations().empty());
    EXPECT_FALSE(fakes.hotKeys.hasHandler());
    controller->rebuildMenu();
    EXPECT_EQ(shortcutLine(), "Shortcut unavailable: Hyper + D");
    EXPECT_TRUE(releasedAtTheEnd().empty()) << "no hot key is released twice";
}

TEST_F(LifecycleTest, terminate_beforeLaunch_callsNothing) {
    fakes.journal.clear();
    controller->applicationWillTerminate();
    EXPECT_TRUE(fakes.journal.empty());
}

TEST_F(LifecycleTest, terminate_glideInProgress_stopsTheTimerFirstAndLeavesThePointer) {
    launch();
    controller->glidePointer({180, 0});
    fakes.mainQueue.advance(Seconds(0.08));
    const CGPoint place = fakes.pointer.location;
    fakes.journal.clear();
    controller->applicationWillTerminate();
    ASSERT_FALSE(fakes.journal.empty());
    EXPECT_EQ(fakes.journal.front(), "invalidate");
    EXPECT_EQ(fakes.mainQueue.runningTimers(), 0U);
    fakes.mainQueue.advance(Seconds(1));
    EXPECT_EQ(fakes.pointer.location, place);
}

TEST_F(LifecycleTest, terminate_flashInProgress_leavesItsReset) {
    launch();
    controller->flashStatus("Saved");
    controller->applicationWillTerminate();
    fakes.mainQueue.advance(Seconds(1.2));
    EXPECT_EQ(fakes.statusBar.title, "Vantrel");
}

TEST_F(LifecycleTest, terminate_always_storesNothing) {
    launch();
    controller->applicationWillTerminate();
    EXPECT_TRUE(calls({"setObjects"}).empty());
    EXPECT_TRUE(fakes.defaults.values.empty());
}

TEST_F(LifecycleTest, destroy_afterLaunch_releasesNoHotKeys) {
    launch();
    controller = nullptr;
    EXPECT_EQ(fakes.hotKeys.registrations().size(), 5U);
    EXPECT_TRUE(fakes.journal.empty());
}

TEST_F(LifecycleTest, reopen_itemNotSeen_popsTheMenuUp) {
    launch();
    fakes.statusBar.isVisible = false;
    controller->applicationDidReopen();
    EXPECT_EQ(fakes.journal, fake::Journal{"popUpMenu"});
    EXPECT_EQ(fakes.preferencesWindowViews.view, nullptr);
}

TEST_F(LifecycleTest, reopen_itemSeen_opensTheSettingsWindow) {
    launch();
    controller->applicationDidReopen();
    EXPECT_TRUE(calls({"popUpMenu"}).empty());
    EXPECT_EQ(calls({"window.showWindow"}).size(), 1U);
}

}  // namespace
}  // namespace vantrel
