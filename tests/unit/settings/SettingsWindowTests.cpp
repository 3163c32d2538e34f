#include "helpers/settings/SettingsWindow.hpp"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QTest>
#include <QWheelEvent>
#include <memory>
#include <string>
#include <vector>

#include "tests/unit/settings/SettingsWindowFixture.hpp"

namespace vantrel::qt {
namespace {

constexpr const char* longestStatus =
    "Ctrl + Option + Command + Right Arrow is unavailable, and Ctrl + Option + Command + Left Arrow could not be "
    "restored. macOS returned -9878.";

TEST_F(SettingsWindowTest, window_fresh_hasTheLayoutsSize) {
    EXPECT_EQ(window->windowTitle(), "Vantrel Settings");
    EXPECT_EQ(window->width(), 560);
    EXPECT_GE(window->height(), 560);
    EXPECT_EQ(window->minimumSize(), window->maximumSize());
    EXPECT_FALSE(window->isVisible());
    const Qt::WindowFlags flags = window->windowFlags();
    EXPECT_TRUE(flags.testFlag(Qt::WindowCloseButtonHint));
    EXPECT_FALSE(flags.testFlag(Qt::WindowMinimizeButtonHint));
    EXPECT_FALSE(flags.testFlag(Qt::WindowMaximizeButtonHint));
}

TEST_F(SettingsWindowTest, window_fresh_standsCentredOnADisplay) {
    const QRect display = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_NEAR(window->geometry().center().x(), display.center().x(), 1);
    EXPECT_NEAR(window->geometry().center().y(), display.center().y(), 1);
}

TEST_F(SettingsWindowTest, layout_shown_hasTheNumbers) {
    show();
    const QRect title = inWindow(withText<QLabel>("Vantrel"));
    EXPECT_EQ(title.left(), 22);
    EXPECT_EQ(title.top(), 20);
    EXPECT_EQ(withText<QLabel>("Vantrel").font().pixelSize(), 20);
    EXPECT_EQ(withText<QLabel>("Vantrel").font().weight(), QFont::DemiBold);

    const QRect subtitle = inWindow(
        withText<QLabel>("Tune the shortcut, cursor behavior, and saved points for quick Mac to Sidecar movement."));
    EXPECT_EQ(subtitle.top() - (title.top() + title.height()), 4);

    const QRect shortcut = inWindow(section("Shortcut"));
    const QRect behavior = inWindow(section("Behavior"));
    const QRect points = inWindow(section("Saved Points"));
    EXPECT_EQ(shortcut.top() - (subtitle.top() + subtitle.height()), 16);
    EXPECT_EQ(behavior.top() - (shortcut.top() + shortcut.height()), 16);
    EXPECT_EQ(points.top() - (behavior.top() + behavior.height()), 16);
    for (const QRect& box : {shortcut, behavior, points}) {
        EXPECT_EQ(box.left(), 22);
        EXPECT_EQ(box.width(), 560 - 2 * 22);
    }
    EXPECT_LE(points.top() + points.height(), window->height() - 22);
}

TEST_F(SettingsWindowTest, layout_shownSections_haveTheNumbers) {
    show();
    const QGroupBox& behavior = section("Behavior");
    const QRect inside = behavior.contentsRect();
    const QLabel& modeLabel = withText<QLabel>("Mode");
    EXPECT_EQ(modeLabel.mapTo(&behavior, QPoint(0, 0)).x(), inside.left() + 14);
    EXPECT_EQ(popUp(0).mapTo(&behavior, QPoint(0, 0)).y(), inside.top() + 14);
    for (const char* const text : {"Primary", "Mode", "Animation", "Feedback"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(withText<QLabel>(text).width(), 92);
    }
    EXPECT_EQ(inWindow(popUp(0)).left() - inWindow(modeLabel).right() - 1, 12);
    EXPECT_EQ(popUp(0).mapTo(&behavior, QPoint(popUp(0).width(), 0)).x(), inside.right() + 1 - 14);
    EXPECT_EQ(inWindow(popUp(1)).top() - (inWindow(popUp(0)).top() + popUp(0).height()), 10);

    EXPECT_EQ(recorderButton().width(), 190);
    EXPECT_EQ(recorderButton().font().pixelSize(), 13);
    EXPECT_EQ(recorderButton().font().weight(), QFont::Medium);
    EXPECT_EQ(inWindow(withText<QPushButton>("Reset")).left() - inWindow(recorderButton()).right() - 1, 8);
    // In one line, as exactly as two heights of which one may be odd allow.
    EXPECT_NEAR(inWindow(withText<QPushButton>("Reset")).center().y(), inWindow(recorderButton()).center().y(), 1);

    const QRect clear = inWindow(withText<QPushButton>("Clear Saved Points"));
    EXPECT_EQ(clear.left(), inWindow(section("Saved Points")).left() + inside.left() + 14);
}

TEST_F(SettingsWindowTest, layout_everyFontSize_cutsNothing) {
    for (const double points : {6.0, 9.0, 11.0, 13.0, 18.0, 24.0}) {
        for (const char* const title : {"Hyper + D", "Press shortcut...", "Ctrl + Option + Command + Right Arrow"}) {
            SCOPED_TRACE(testing::Message() << points << " points, " << title);
            setFontSize(points);
            makeWindow();
            setStatus(longestStatus, SemanticColor::systemRed);
            setRecorderTitle(title);
            show();
            for (const QLabel* const label : window->findChildren<QLabel*>()) {
                SCOPED_TRACE(label->text().toStdString());
                const int neededHeight =
                    label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().height();
                EXPECT_GE(label->height(), neededHeight);
                if (!label->wordWrap()) {
                    EXPECT_GE(label->width(), label->sizeHint().width());
                }
            }
            for (const QAbstractButton* const button : window->findChildren<QAbstractButton*>()) {
                SCOPED_TRACE(button->text().toStdString());
                EXPECT_GE(button->height(), button->sizeHint().height());
                EXPECT_GE(button->width(), button->sizeHint().width());
                EXPECT_LE(inWindow(*button).right(), window->width() - 22);
            }
            // As wide as designed, or as far beyond as a row needs in large or wide letters.
            int rowsEnd = 0;
            for (const QWidget* const control : window->findChildren<QWidget*>()) {
                if (qobject_cast<const QAbstractButton*>(control) != nullptr ||
                    qobject_cast<const QComboBox*>(control) != nullptr) {
                    const int width = std::max(control->sizeHint().width(), control->minimumWidth());
                    rowsEnd = std::max(rowsEnd, inWindow(*control).left() + width);
                }
            }
            const int besideRows = window->width() - 1 - inWindow(popUp(0)).right();
            EXPECT_EQ(window->width(), std::max(560, rowsEnd + besideRows));
            const QRect last = inWindow(section("Saved Points"));
            EXPECT_LE(last.bottom(), window->height() - 22);
        }
    }
}

TEST_F(SettingsWindowTest, recorder_longShortcut_isBrokenNotCut) {
    // Longer than a shortcut can be, so that it is too long in any font.
    const QString title =
        "Ctrl + Option + Command + Right Arrow + Ctrl + Option + Command + Right Arrow + Ctrl + Option + Command";
    setRecorderTitle(title.toStdString());
    show();
    const QStringList lines = recorderButton().text().split('\n');
    EXPECT_GT(lines.size(), 1);
    EXPECT_EQ(lines.join(' '), title);
    for (const QString& line : lines) {
        EXPECT_LT(recorderButton().fontMetrics().horizontalAdvance(line), recorderButton().width());
    }
    EXPECT_GE(recorderButton().height(), lines.size() * recorderButton().fontMetrics().height());
    EXPECT_EQ(recorderButton().accessibleName(), title);
}

TEST_F(SettingsWindowTest, status_growsToThreeLines_windowGrowsAndDoesNotShrink) {
    show();
    const int before = window->height();
    const int labelBefore = status().height();
    std::string text;
    for (int count = 0; count < 6; ++count) {
        text += longestStatus;
    }
    setStatus(text, SemanticColor::systemRed);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->height() > before; }));
    const int grown = window->height();
    setStatus("Ready.", SemanticColor::secondaryLabel);
    EXPECT_TRUE(QTest::qWaitFor([&] { return status().height() == labelBefore; }));
    EXPECT_EQ(window->height(), grown);
}

TEST_F(SettingsWindowTest, controls_used_areReported) {
    show();
    setSavedPoints(1);
    withText<QPushButton>("Reset").click();
    QTest::keyClick(&popUp(0), Qt::Key_Down);
    QTest::keyClick(&popUp(1), Qt::Key_Down);
    withText<QCheckBox>("Play feedback sound").click();
    withText<QPushButton>("Clear Saved Points").click();
    recorderButton().click();
    EXPECT_EQ(calls,
              (Calls{"reset 0", "mode chosen 1", "animation chosen 1", "sound chosen 1", "clear 0", "recorder 0"}));
}

TEST_F(SettingsWindowTest, wheel_overAPopUpButton_choosesNothing) {
    show();
    content.controls.selectedAnimation = 1;
    window->setContent(content);
    for (QComboBox* const button : {&popUp(0), &popUp(1)}) {
        for (const int turn : {120, -120}) {
            const QPointF place = button->rect().center();
            QWheelEvent event(place, button->mapToGlobal(place), {}, {0, turn}, Qt::NoButton, Qt::NoModifier,
                              Qt::NoScrollPhase, false);
            QApplication::sendEvent(button, &event);
        }
        EXPECT_FALSE(button->hasFocus());
    }
    EXPECT_EQ(popUp(0).currentIndex(), 0);
    EXPECT_EQ(popUp(1).currentIndex(), 1);
    EXPECT_EQ(calls, Calls{});
}

TEST_F(SettingsWindowTest, controls_setByTheAgent_areNoReports) {
    show();
    content.controls.selectedMode = 1;
    content.controls.selectedAnimation = 1;
    for (const bool isChecked : {true, false}) {
        content.controls.isSoundChecked = isChecked;
        window->setContent(content);
        EXPECT_EQ(withText<QCheckBox>("Play feedback sound").isChecked(), isChecked);
    }
    EXPECT_EQ(popUp(0).currentIndex(), 1);
    EXPECT_EQ(popUp(1).currentIndex(), 1);
    EXPECT_EQ(calls, Calls{});
}

TEST_F(SettingsWindowTest, popUps_fresh_haveTheTitlesInOrder) {
    EXPECT_EQ(popUp(0).itemText(0), "Automatic: displays");
    EXPECT_EQ(popUp(0).itemText(1), "Manual: saved points");
    EXPECT_EQ(popUp(1).itemText(0), "Instant");
    EXPECT_EQ(popUp(1).itemText(1), "Glide");
    EXPECT_EQ(popUp(0).count() + popUp(1).count(), 4);
}

TEST_F(SettingsWindowTest, keys_enterAndSpace_pressButtons) {
    show();
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        QTest::keyClick(&withText<QPushButton>("Reset"), key);
        QTest::keyClick(&recorderButton(), key);
    }
    EXPECT_EQ(calls, (Calls{"reset 0", "recorder 0", "reset 0", "recorder 0", "reset 0", "recorder 0"}));
}

TEST_F(SettingsWindowTest, keys_tab_goesFromTopToBottom) {
    setSavedPoints(1);
    show();
    const std::vector<const QWidget*> order{&recorderButton(),
                                            &withText<QPushButton>("Reset"),
                                            &popUp(0),
                                            &popUp(1),
                                            &withText<QCheckBox>("Play feedback sound"),
                                            &table(),
                                            &withText<QPushButton>("Clear Saved Points"),
                                            &recorderButton()};
    window->activateWindow();
    for (const QWidget* const expected : order) {
        EXPECT_EQ(QApplication::focusWidget(), expected);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
}

TEST_F(SettingsWindowTest, keys_escape_closesFromEveryControl) {
    setSavedPoints(1);
    for (QWidget* const control : std::initializer_list<QWidget*>{
             &recorderButton(), &popUp(0), &withText<QCheckBox>("Play feedback sound"), &table()}) {
        show();
        QTest::keyClick(control, Qt::Key_Escape);
        EXPECT_FALSE(window->isVisible());
    }
}

TEST_F(SettingsWindowTest, close_any_hidesAndComesBackAsItWas) {
    show();
    content.controls.selectedMode = 1;
    window->setContent(content);
    const QPoint place = window->pos();
    window->close();
    EXPECT_EQ(calls, Calls{"shown 0"});
    window->showWindow();
    window->makeKeyAndOrderFront();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->pos(), place);
    EXPECT_EQ(popUp(0).currentIndex(), 1);
    EXPECT_EQ(calls, (Calls{"shown 0", "shown 1"}));
}

TEST_F(SettingsWindowTest, savedPoints_noneAndSome_changeWhatIsShown) {
    show();
    EXPECT_TRUE(withText<QLabel>("No saved points yet.").isVisible());
    EXPECT_FALSE(table().isVisible());
    EXPECT_FALSE(withText<QPushButton>("Clear Saved Points").isEnabled());
    setSavedPoints(3);
    EXPECT_FALSE(withText<QLabel>("No saved points yet.").isVisible());
    EXPECT_TRUE(withText<QLabel>("3 saved cursor points.").isVisible());
    EXPECT_EQ(table().model()->rowCount(), 3);
    EXPECT_TRUE(table().isVisible());
    EXPECT_TRUE(withText<QPushButton>("Clear Saved Points").isEnabled());
}

}  // namespace
}  // namespace vantrel::qt
