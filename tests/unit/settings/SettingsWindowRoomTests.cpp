// The window on screens that have no room for all of it.
#include <gtest/gtest.h>

#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <set>

#include "tests/unit/settings/SettingsWindowFixture.hpp"

namespace vantrel::qt {
namespace {

class WindowRoomTest : public SettingsWindowTest {
  protected:
    using SettingsWindowTest::SettingsWindowTest;

    void showInFont(double points) {
        setFontSize(points);
        makeWindow();
        setSavedPoints(1);
        show();
        window->activateWindow();
        QApplication::processEvents();
    }

    QScrollArea& scroller() { return *window->findChild<QScrollArea*>(); }

    /// Whether all of it can be seen, or as much as there is room for.
    bool isInSight(const QWidget& control) {
        const QWidget& viewport = *scroller().viewport();
        const QRect place(control.mapTo(&viewport, QPoint(0, 0)), control.size());
        return place.intersected(viewport.rect()).size() == place.size().boundedTo(viewport.size());
    }

    /// Goes through all controls with the keyboard, and says how many there were.
    std::size_t tabThroughAll(Qt::Key key, Qt::KeyboardModifiers modifiers) {
        std::set<const QWidget*> seen;
        while (seen.insert(QApplication::focusWidget()).second) {
            SCOPED_TRACE(QApplication::focusWidget()->metaObject()->className());
            EXPECT_TRUE(isInSight(*QApplication::focusWidget()));
            QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        }
        return seen.size();
    }
};

class LargeScreenTest : public WindowRoomTest {};

class SmallScreenTest : public WindowRoomTest {
  protected:
    SmallScreenTest() : WindowRoomTest("small") {}
};

class TinyScreenTest : public WindowRoomTest {
  protected:
    TinyScreenTest() : WindowRoomTest("tiny") {}
};

TEST_F(LargeScreenTest, window_largeFont_showsAllWithoutScrolling) {
    showInFont(18);
    EXPECT_EQ(scroller().verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(scroller().horizontalScrollBar()->maximum(), 0);
    EXPECT_FALSE(scroller().verticalScrollBar()->isVisible());
}

TEST_F(SmallScreenTest, window_largeFont_staysOnTheScreenAndScrolls) {
    showInFont(18);
    EXPECT_TRUE(window->screen()->availableGeometry().contains(window->geometry()));
    EXPECT_GT(window->height(), 500) << "less than there is room for";
    EXPECT_EQ(window->minimumSize(), window->maximumSize());
    EXPECT_GT(scroller().verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(scroller().horizontalScrollBar()->maximum(), 0) << "the vertical bar takes its room from the rows";
}

TEST_F(SmallScreenTest, tab_largeFont_keepsTheFocusedControlInSight) {
    showInFont(18);
    EXPECT_EQ(tabThroughAll(Qt::Key_Tab, Qt::NoModifier), 7U);
    EXPECT_EQ(tabThroughAll(Qt::Key_Backtab, Qt::ShiftModifier), 7U);
}

TEST_F(SmallScreenTest, focus_movedByAnotherWay_comesIntoSight) {
    showInFont(18);
    QPushButton& last = withText<QPushButton>("Clear Saved Points");
    EXPECT_FALSE(isInSight(last));
    last.setFocus(Qt::OtherFocusReason);
    EXPECT_TRUE(isInSight(last));
}

TEST_F(SmallScreenTest, escape_largeFont_closes) {
    showInFont(18);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(TinyScreenTest, window_ordinaryFont_scrollsBothWays) {
    showInFont(9);
    EXPECT_TRUE(window->screen()->availableGeometry().contains(window->geometry()));
    EXPECT_GT(scroller().verticalScrollBar()->maximum(), 0);
    EXPECT_GT(scroller().horizontalScrollBar()->maximum(), 0);
    EXPECT_EQ(tabThroughAll(Qt::Key_Tab, Qt::NoModifier), 7U);
}

TEST_F(SmallScreenTest, status_growsBeyondTheScreen_windowDoesNot) {
    showInFont(11);
    std::string text;
    for (int count = 0; count < 30; ++count) {
        text += "The shortcut is unavailable. ";
    }
    const int before = scroller().verticalScrollBar()->maximum();
    setStatus(text, SemanticColor::systemRed);
    EXPECT_TRUE(QTest::qWaitFor([&] { return scroller().verticalScrollBar()->maximum() > before; }));
    EXPECT_TRUE(window->screen()->availableGeometry().contains(window->geometry()));
}

}  // namespace
}  // namespace vantrel::qt
