#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QGuiApplication>
#include <QListView>
#include <QScreen>
#include <QScrollBar>
#include <QStyleFactory>

#include "tests/desk/settings/SettingsDesk.hpp"
#include "tests/desk/settings/WindowManagerProbe.hpp"

namespace vantrel::desk {
namespace {

class WindowTest : public testing::Test {
  protected:
    Keyboard& keyboard() { return settings.desk().keyboard(); }
    WindowManagerProbe windowManager() { return WindowManagerProbe(settings.desk().connection()); }
    xcb_window_t windowId() { return static_cast<xcb_window_t>(settings.window().winId()); }

    /// Goes on to the next control with the keyboard, as often as said.
    void tabForward(int times) {
        for (int count = 0; count < times; ++count) {
            const QWidget* const before = QApplication::focusWidget();
            keyboard().type({keys::tab});
            ASSERT_TRUE(settings.turnUntil([&] { return QApplication::focusWidget() != before; }));
        }
    }

    SettingsDesk settings;
};

TEST_F(WindowTest, openSettings_twice_isOneWindowAtTheFront) {
    settings.open();
    const auto* const first = &settings.window();
    const xcb_window_t id = windowId();
    {
        const OtherWindow other(settings.desk().connection());
        settings.open();
        EXPECT_EQ(&settings.window(), first);
        EXPECT_EQ(windowId(), id);
        EXPECT_TRUE(settings.turnUntil([&] { return windowManager().activeWindow() == id; }));
        EXPECT_TRUE(settings.turnUntil([&] { return windowManager().stackedWindows().back() == id; }));
    }
}

TEST_F(WindowTest, openSettings_fromAnotherWorkspace_comesThere) {
    settings.open();
    windowManager().showDesktop(1);
    EXPECT_TRUE(settings.turnUntil([&] { return windowManager().activeWindow() != windowId(); }));
    settings.open();
    EXPECT_TRUE(settings.turnUntil([&] { return windowManager().desktopOf(windowId()) == 1; }));
    EXPECT_TRUE(settings.turnUntil([&] { return windowManager().activeWindow() == windowId(); }));
    EXPECT_EQ(windowManager().currentDesktop(), 1U);
}

TEST_F(WindowTest, window_shown_isAnAccessorysWindow) {
    settings.open();
    EXPECT_TRUE(settings.turnUntil([&] { return windowManager().hasState(windowId(), "_NET_WM_STATE_SKIP_TASKBAR"); }));
    EXPECT_TRUE(windowManager().hasState(windowId(), "_NET_WM_STATE_SKIP_PAGER"));
    settings.window().close();
    settings.open();
    EXPECT_TRUE(settings.turnUntil([&] { return windowManager().hasState(windowId(), "_NET_WM_STATE_SKIP_TASKBAR"); }));
}

TEST_F(WindowTest, window_closedAndOpened_comesBackAsItWas) {
    settings.open();
    // Inside the main display, so that the window manager has no reason to move it.
    settings.window().move(1200, 150);
    ASSERT_TRUE(settings.turnUntil([&] { return settings.window().frameGeometry().topLeft() == QPoint(1200, 150); }));
    const QPoint place = settings.window().geometry().topLeft();
    const xcb_window_t id = windowId();
    windowManager().closeWindow(id);
    EXPECT_TRUE(settings.turnUntil([&] { return !settings.window().isVisible(); }));
    settings.controller().toggleSound();
    settings.open();
    EXPECT_EQ(windowId(), id);
    // The window manager makes the frame first and then puts it where it was.
    EXPECT_TRUE(settings.turnUntil([&] { return settings.window().geometry().topLeft() == place; }));
    EXPECT_TRUE(settings.turnUntil([&] { return !settings.button("Play feedback sound").isChecked(); }));
}

TEST_F(WindowTest, window_firstOpening_standsOnThePointersDisplay) {
    settings.desk().pointer().moveTo({-500, 400});
    settings.open();
    const QRect leftDisplay(0, 100, 1024, 768);
    EXPECT_NEAR(settings.window().frameGeometry().center().x(), leftDisplay.center().x(), 4);
    EXPECT_NEAR(settings.window().frameGeometry().center().y(), leftDisplay.center().y(), 24);
    // Once, at its creation.
    settings.window().close();
    settings.desk().pointer().moveTo({700, 400});
    const QPoint place = settings.window().geometry().topLeft();
    settings.open();
    // The window manager places the frame first and then tells where the window is in it.
    EXPECT_TRUE(settings.turnUntil([&] { return settings.window().geometry().topLeft() == place; }));
}

TEST_F(WindowTest, keyboardAlone_everyControl_works) {
    settings.open();
    tabForward(2);
    keyboard().type({keys::down});
    EXPECT_TRUE(settings.turnUntil([&] { return settings.fakes().defaults.stringForKey("mode") == "manual"; }));
    EXPECT_EQ(settings.fakes().statusBar.menu.at(12).title, "Mode: Manual: saved points");
    tabForward(1);
    keyboard().type({"UP"});
    EXPECT_TRUE(settings.turnUntil([&] { return settings.fakes().defaults.stringForKey("animation") == "none"; }));
    tabForward(1);
    keyboard().type({keys::space});
    EXPECT_TRUE(settings.turnUntil([&] { return settings.fakes().defaults.objectForKey("soundEnabled").has_value(); }));
    EXPECT_FALSE(settings.fakes().defaults.boolForKey("soundEnabled"));
    keyboard().type({keys::escape});
    EXPECT_TRUE(settings.turnUntil([&] { return !settings.window().isVisible(); }));
}

TEST_F(WindowTest, mouse_everyControl_works) {
    settings.fakes().pointer.location = {100.5, -20.5};
    settings.controller().saveCurrentPoint();
    settings.open();
    settings.click(settings.button("Play feedback sound"), QPoint(8, 8));
    EXPECT_TRUE(settings.turnUntil([&] { return settings.fakes().defaults.objectForKey("soundEnabled").has_value(); }));
    EXPECT_FALSE(settings.fakes().defaults.boolForKey("soundEnabled"));

    const auto popUps = settings.window().findChildren<QComboBox*>();
    settings.click(*popUps.at(0));
    ASSERT_TRUE(settings.turnUntil([] { return QApplication::activePopupWidget() != nullptr; }));
    const QAbstractItemView& list = *popUps.at(0)->view();
    settings.click(*list.viewport(), list.visualRect(list.model()->index(1, 0)).center());
    EXPECT_TRUE(settings.turnUntil([&] { return settings.fakes().defaults.stringForKey("mode") == "manual"; }));
    EXPECT_EQ(settings.fakes().statusBar.menu.at(12).title, "Mode: Manual: saved points");

    EXPECT_EQ(settings.fakes().statusBar.menu.at(13).title, "Saved Points: 1 point");
    settings.click(settings.button("Clear Saved Points"));
    EXPECT_TRUE(settings.turnUntil([&] { return settings.fakes().defaults.dataForKey("savedPoints") == "[]"; }));
    EXPECT_EQ(settings.fakes().statusBar.menu.at(13).title, "Saved Points: none");
    EXPECT_EQ(settings.fakes().statusBar.title, "Cleared");
    EXPECT_TRUE(settings.turnUntil([&] { return !settings.button("Clear Saved Points").isEnabled(); }));
}

TEST_F(WindowTest, wheel_overThePopUpButtons_choosesNothing) {
    for (int count = 0; count < 20; ++count) {
        settings.controller().saveCurrentPoint();
    }
    settings.open();
    for (QComboBox* const popUp : settings.window().findChildren<QComboBox*>()) {
        settings.turnWheel(*popUp, 3);
        settings.turnWheel(*popUp, -3);
    }
    // By the time that the wheel has turned the list of points, it has passed the buttons.
    auto& table = *settings.window().findChild<QListView*>("savedPoints");
    settings.turnWheel(*table.viewport(), 1);
    EXPECT_TRUE(settings.turnUntil([&] { return table.verticalScrollBar()->value() > 0; }));
    EXPECT_FALSE(settings.fakes().defaults.objectForKey("mode").has_value());
    EXPECT_FALSE(settings.fakes().defaults.objectForKey("animation").has_value());
}

TEST_F(WindowTest, recording_dropDownListOpenedMeanwhile_keepsTheKeyboard) {
    settings.open();
    settings.waitForWindowManagersChord({keys::option, "FK04"});
    settings.startRecording();
    settings.click(*settings.window().findChildren<QComboBox*>().at(0));
    ASSERT_TRUE(settings.turnUntil([] { return QApplication::activePopupWidget() != nullptr; }));
    settings.click(settings.window(), QPoint(5, 5));
    ASSERT_TRUE(settings.turnUntil([] { return QApplication::activePopupWidget() == nullptr; }));
    EXPECT_TRUE(settings.turnUntil([&] { return !keyboardIsFree(settings.desk().connection()); }));
    keyboard().type({keys::option, "FK04"});
    EXPECT_TRUE(
        settings.turnUntil([&] { return settings.status() == "Option + F4 is unavailable. Restored Hyper + D."; }));
    EXPECT_TRUE(settings.window().isVisible());
}

TEST_F(WindowTest, savedPoints_thousand_scrollToTheEndAndKeepThePlace) {
    for (int count = 0; count < 1000; ++count) {
        settings.controller().saveCurrentPoint();
    }
    settings.open();
    auto& table = *settings.window().findChild<QListView*>("savedPoints");
    settings.click(*table.viewport());
    ASSERT_TRUE(settings.turnUntil([&] { return table.hasFocus(); }));
    keyboard().type({keys::end});
    EXPECT_TRUE(
        settings.turnUntil([&] { return table.verticalScrollBar()->value() == table.verticalScrollBar()->maximum(); }));
    const int place = table.verticalScrollBar()->value();
    EXPECT_GT(place, 20000);
    settings.controller().toggleSound();
    EXPECT_TRUE(settings.holds([&] { return table.verticalScrollBar()->value() == place; }));
    EXPECT_EQ(table.model()->index(999, 0).data().toString(), "Point 1000 - x 0, y 0");
}

TEST(WindowWithoutWindowManager, openSettings_any_getsTheKeyboard) {
    SettingsDesk settings({.hasSessionBus = false, .hasWindowManager = false});
    settings.open();
    settings.startRecording();
    settings.desk().keyboard().type({keys::control, keys::m});
    EXPECT_TRUE(settings.turnUntil([&] { return settings.status() == "Ready. Use Ctrl + M."; }));
    settings.desk().keyboard().type({keys::escape});
    EXPECT_TRUE(settings.turnUntil([&] { return !settings.window().isVisible(); }));
}

}  // namespace
}  // namespace vantrel::desk
