// The window on displays that have no room for all of it.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <set>

#include "tests/desk/settings/SettingsDesk.hpp"
#include "tests/desk/settings/WindowManagerProbe.hpp"

namespace vantrel::desk {
namespace {

class Room : public testing::Test {
  protected:
    /// One display of that size, and 18 points for the desktop's font.
    void openInLargeFont(int width, int height) {
        useDisplay(width, height);
        useLargeFont();
        settings.open();
    }

    static void useLargeFont() {
        QFont font = QApplication::font();
        font.setPointSizeF(18);
        QApplication::setFont(font);
    }

    void useDisplay(int width, int height) {
        settings.desk().layout().apply({{.output = 0, .bounds = {.x = 0, .y = 0, .width = width, .height = height}}});
        waitForWorkArea({0, 0, width, height});
    }

    /// Waits until Qt knows it: the window manager says it some time after the display has changed.
    void waitForWorkArea(const QRect& area) {
        ASSERT_TRUE(settings.turnUntil([&] {
            return QGuiApplication::screens().size() == 1 &&
                   QGuiApplication::primaryScreen()->availableGeometry() == area;
        }));
    }

    /// The window with its frame, as the X server has it.
    bool becomesAllInside(const QRect& area) {
        return settings.turnUntil([&] {
            const QRect frame = settings.window().frameGeometry();
            return frame != settings.window().geometry() && area.contains(frame);
        });
    }

    QScrollBar& scrollBar() { return *settings.window().findChild<QScrollArea*>()->verticalScrollBar(); }

    bool isInSight(const QWidget& control) {
        const QWidget& viewport = *settings.window().findChild<QScrollArea*>()->viewport();
        return viewport.rect().contains({control.mapTo(&viewport, QPoint(0, 0)), control.size()});
    }

    SettingsDesk settings;
};

TEST_F(Room, smallDisplay_largeFont_windowAndFrameAreInside) {
    openInLargeFont(1024, 600);
    EXPECT_TRUE(becomesAllInside({0, 0, 1024, 600}));
    EXPECT_GT(settings.window().frameGeometry().height(), 560);
    EXPECT_GT(scrollBar().maximum(), 0);
    settings.saveScreenshot("small-display-large-font");
}

TEST_F(Room, tab_largeFont_keepsTheFocusedControlInSight) {
    openInLargeFont(1024, 600);
    settings.controller().saveCurrentPoint();
    std::set<const QWidget*> seen;
    while (seen.insert(QApplication::focusWidget()).second) {
        const QWidget* const before = QApplication::focusWidget();
        EXPECT_TRUE(isInSight(*before)) << before->metaObject()->className();
        settings.desk().keyboard().type({"TAB"});
        ASSERT_TRUE(settings.turnUntil([&] { return QApplication::focusWidget() != before; }));
    }
    EXPECT_EQ(seen.size(), 7U);
    settings.saveScreenshot("small-display-last-control");
}

TEST_F(Room, wheel_overAPopUpButton_scrollsTheContent) {
    openInLargeFont(1024, 600);
    settings.turnWheel(*settings.window().findChildren<QComboBox*>().at(0), 1);
    EXPECT_TRUE(settings.turnUntil([&] { return scrollBar().value() > 0; }));
    EXPECT_FALSE(settings.fakes().defaults.objectForKey("mode").has_value());
}

TEST_F(Room, panel_alongTheLowerEdge_staysFree) {
    useDisplay(1512, 982);
    useLargeFont();
    const BottomPanel panel(settings.desk().connection(), 200);
    waitForWorkArea({0, 0, 1512, 782});
    settings.open();
    EXPECT_TRUE(becomesAllInside({0, 0, 1512, 782}));
}

TEST_F(Room, displayWithoutRoom_windowCanBeSeenAndScrolled) {
    settings.desk().layout().apply({{.output = 0, .bounds = {.x = 0, .y = 0, .width = 64, .height = 64}},
                                    {.output = 1, .bounds = {.x = 64, .y = 0, .width = 640, .height = 480}}});
    ASSERT_TRUE(settings.turnUntil([] { return QGuiApplication::primaryScreen()->size() == QSize(64, 64); }));
    settings.open();
    EXPECT_GE(settings.window().width(), 300);
    EXPECT_GE(settings.window().height(), 160);
}

TEST_F(Room, display_becomesSmaller_windowFollows) {
    openInLargeFont(1920, 1200);
    EXPECT_TRUE(becomesAllInside({0, 0, 1920, 1200}));
    EXPECT_EQ(scrollBar().maximum(), 0);
    const int before = settings.window().height();
    useDisplay(1024, 600);
    EXPECT_TRUE(becomesAllInside({0, 0, 1024, 600}));
    useDisplay(1920, 1200);
    EXPECT_TRUE(settings.turnUntil([&] { return settings.window().height() == before; }));
    EXPECT_TRUE(settings.turnUntil([&] { return scrollBar().maximum() == 0; }));
}

TEST_F(Room, status_growsOnAFullDisplay_windowStaysInside) {
    openInLargeFont(1512, 1024);
    ASSERT_TRUE(becomesAllInside({0, 0, 1512, 1024}));
    std::string text;
    for (int line = 0; line < 8; ++line) {
        text += "The shortcut is unavailable, and the other one could not be restored. ";
    }
    settings.window().findChild<QLabel*>("shortcutStatus")->setText(QString::fromStdString(text));
    EXPECT_TRUE(settings.turnUntil([&] { return scrollBar().maximum() > 0; }));
    EXPECT_TRUE(becomesAllInside({0, 0, 1512, 1024}));
}

}  // namespace
}  // namespace vantrel::desk
