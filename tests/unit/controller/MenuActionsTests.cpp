#include "tests/unit/controller/ControllerTest.hpp"

namespace vantrel {
namespace {

using fake::Journal;

using StatusMenuActionsTest = ControllerTest;

MenuItem senderOf(std::variant<std::monostate, std::string, std::int64_t> representedObject) {
    MenuItem sender;
    sender.representedObject = std::move(representedObject);
    return sender;
}

TEST_F(StatusMenuActionsTest, rebuildMenu_state_isReadAfresh) {
    launch();
    ASSERT_EQ(fakes.statusBar.menu.size(), 16U);
    EXPECT_EQ(shortcutLine(), "Shortcut: Hyper + D");
    EXPECT_EQ(modeLine(), "Mode: Automatic: displays");
    EXPECT_EQ(savedPointsLine(), "Saved Points: none");
    bool isStored = false;
    fakes.defaults.whenStoring = [&] {
        isStored = true;
        EXPECT_EQ(modeLine(), "Mode: Automatic: displays") << "no menu is patched in place";
        controller->rebuildMenu();
        EXPECT_EQ(modeLine(), "Mode: Manual: saved points");
    };
    controller->preferencesDidChangeMode(VantrelMode::manual);
    EXPECT_TRUE(isStored);
    fakes.defaults.whenStoring = nullptr;
    controller->applyPrimaryShortcut({40, 0x1900});
    for (int point = 0; point < 12; ++point) {
        controller->saveCurrentPoint();
    }
    EXPECT_EQ(shortcutLine(), "Shortcut: Ctrl + Option + Command + K");
    EXPECT_EQ(modeLine(), "Mode: Manual: saved points");
    EXPECT_EQ(savedPointsLine(), "Saved Points: 12 points");
    EXPECT_TRUE(fakes.statusBar.row("Clear Saved Points")->isEnabled);
}

TEST_F(StatusMenuActionsTest, rebuildMenu_primaryRefusedAtLaunch_saysUnavailable) {
    fakes.hotKeys.refusals[{2, 0x1B00}] = eventHotKeyExistsErr;
    launch();
    EXPECT_EQ(shortcutLine(), "Shortcut unavailable: Hyper + D");
}

TEST_F(StatusMenuActionsTest, rows_chosen_reachTheController) {
    store("animation", "none");
    launch();
    layOutTwoDisplays();
    fakes.statusBar.row("Save Current Point")->action();
    EXPECT_EQ(savedPointsLine(), "Saved Points: 1 point");
    fakes.statusBar.row("Clear Saved Points")->action();
    EXPECT_EQ(savedPointsLine(), "Saved Points: none");
    fakes.statusBar.row("Settings...")->action();
    EXPECT_EQ(calls({"window.showWindow"}).size(), 1U);
    fakes.journal.clear();
    fakes.statusBar.row("Teleport Saved Point")->action();
    EXPECT_EQ(calls({"setTitle"}), Journal{"setTitle(No points)"});
    for (const char* const title : {"Teleport Now", "Next Display", "Previous Display"}) {
        SCOPED_TRACE(title);
        fakes.journal.clear();
        fakes.statusBar.row(title)->action();
        EXPECT_EQ(calls({"CGWarpMouseCursorPosition"}).size(), 1U);
    }
    fakes.journal.clear();
    fakes.statusBar.row("Quit Vantrel")->action();
    EXPECT_EQ(fakes.journal, Journal{"terminate"});
}

TEST_F(StatusMenuActionsTest, row_chosenAfterTheControllerIsGone_doesNothing) {
    launch();
    const Menu menu = fakes.statusBar.menu;
    controller.reset();
    fakes.journal.clear();
    for (const MenuItem& item : menu) {
        if (item.action) {
            item.action();
        }
    }
    EXPECT_EQ(fakes.journal, Journal{});
}

TEST_F(StatusMenuActionsTest, selectMode_rawValue_setsStoresRebuildsAndRefreshesInOrder) {
    launch();
    controller->openSettings();
    fakes.journal.clear();
    controller->selectMode(senderOf(std::string("manual")));
    EXPECT_EQ(calls({"setObjects", "setMenu", "window.reloadSavedPoints"}),
              (Journal{"setObjects(mode=manual)", "setMenu", "window.reloadSavedPoints"}));
    EXPECT_EQ(fakes.preferencesWindowViews.view->content.selectedMode, 1);
    controller->selectMode(senderOf(std::string("automatic")));
    EXPECT_EQ(modeLine(), "Mode: Automatic: displays");
}

TEST_F(StatusMenuActionsTest, selectAnimation_rawValue_setsStoresRebuildsAndRefreshesInOrder) {
    launch();
    controller->openSettings();
    fakes.journal.clear();
    controller->selectAnimation(senderOf(std::string("none")));
    EXPECT_EQ(calls({"setObjects", "setMenu", "window.reloadSavedPoints"}),
              (Journal{"setObjects(animation=none)", "setMenu", "window.reloadSavedPoints"}));
    EXPECT_EQ(fakes.preferencesWindowViews.view->content.selectedAnimation, 0);
    controller->selectAnimation(senderOf(std::string("glide")));
    EXPECT_EQ(fakes.preferencesWindowViews.view->content.selectedAnimation, 1);
}

TEST_F(StatusMenuActionsTest, select_unknownObject_isIgnoredInSilence) {
    launch();
    controller->openSettings();
    fakes.journal.clear();
    for (const MenuItem& sender :
         {senderOf(std::monostate()), senderOf(std::int64_t{1}), senderOf(std::string()),
          senderOf(std::string("Manual")), senderOf(std::string("NONE")), senderOf(std::string("manual "))}) {
        controller->selectMode(sender);
        controller->selectAnimation(sender);
    }
    controller->selectMode(senderOf(std::string("none")));
    controller->selectAnimation(senderOf(std::string("manual")));
    EXPECT_EQ(fakes.journal, Journal{});
    auto& window = openSettings();
    EXPECT_EQ(window.content.selectedMode, 0) << "automatic";
    EXPECT_EQ(window.content.selectedAnimation, 1) << "glide";
}

TEST_F(StatusMenuActionsTest, toggleSound_twice_returnsToTheStart) {
    launch();
    controller->openSettings();
    fakes.journal.clear();
    controller->toggleSound();
    EXPECT_EQ(calls({"setObjects", "setMenu", "window.reloadSavedPoints"}),
              (Journal{"setObjects(soundEnabled=0)", "setMenu", "window.reloadSavedPoints"}));
    EXPECT_FALSE(fakes.preferencesWindowViews.view->content.isSoundChecked);
    controller->toggleSound();
    EXPECT_TRUE(fakes.preferencesWindowViews.view->content.isSoundChecked);
    EXPECT_TRUE(std::get<bool>(fakes.defaults.values.at("soundEnabled")));
}

TEST_F(StatusMenuActionsTest, openSettings_firstTime_makesRefreshesActivatesAndShowsInOrder) {
    launch();
    controller->openSettings();
    EXPECT_EQ(calls({"window.make", "window.setContent", "window.reloadSavedPoints", "activate", "window.showWindow",
                     "window.makeKeyAndOrderFront"}),
              (Journal{"window.make", "window.setContent(Ready. With Raycast Hyper Key, use Caps Lock + D., secondary)",
                       "window.reloadSavedPoints", "activate(ignoringOtherApps)", "window.showWindow",
                       "window.makeKeyAndOrderFront"}));
}

TEST_F(StatusMenuActionsTest, openSettings_secondTime_bringsTheSameWindowToTheFront) {
    launch();
    controller->openSettings();
    const auto* const window = fakes.preferencesWindowViews.view;
    fakes.journal.clear();
    controller->openSettings();
    EXPECT_EQ(fakes.preferencesWindowViews.view, window);
    EXPECT_EQ(calls({"window.make", "window.reloadSavedPoints", "activate", "window.showWindow",
                     "window.makeKeyAndOrderFront"}),
              (Journal{"window.reloadSavedPoints", "activate(ignoringOtherApps)", "window.showWindow",
                       "window.makeKeyAndOrderFront"}));
}

TEST_F(StatusMenuActionsTest, openSettings_nothingToDrawWith_saysSoAndTriesAgainNextTime) {
    launch();
    fakes.preferencesWindowViews.isInstalled = false;
    testing::internal::CaptureStderr();
    controller->openSettings();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "vantrel: the settings window is not installed\n");
    EXPECT_EQ(fakes.journal, (Journal{"window.make", "setTitle(Install it)", "asyncAfter(1.2)"}));
    fakes.preferencesWindowViews.isInstalled = true;
    controller->openSettings();
    EXPECT_EQ(calls({"window.showWindow"}).size(), 1U);
}

}  // namespace
}  // namespace vantrel
