// Whether everybody can make out what is in the window: by eye, by ear.
#include <gtest/gtest.h>

#include <QAccessible>
#include <string>
#include <utility>
#include <vector>

#include "helpers/settings/SemanticColors.hpp"
#include "tests/unit/settings/SettingsWindowFixture.hpp"

namespace vantrel::qt {
namespace {

TEST_F(SettingsWindowTest, colors_themeChanges_stayReadable) {
    show();
    setStatus("Refused.", SemanticColor::systemRed);
    for (const auto& [text, background] :
         {std::pair{QColor(Qt::black), QColor(239, 239, 239)}, std::pair{QColor(238, 238, 236), QColor(40, 40, 40)}}) {
        QPalette palette;
        palette.setColor(QPalette::WindowText, text);
        palette.setColor(QPalette::Window, background);
        QApplication::setPalette(palette);
        QApplication::processEvents();
        for (const QLabel* const label : window->findChildren<QLabel*>()) {
            SCOPED_TRACE(label->text().toStdString());
            EXPECT_GE(contrastRatio(label->palette().color(QPalette::WindowText), background), 4.5);
        }
        const QColor red = status().palette().color(QPalette::WindowText);
        EXPECT_GT(red.red(), red.green() + 60);
    }
}

QString nameOf(QObject* object) {
    return QAccessible::queryAccessibleInterface(object)->text(QAccessible::Name);
}

QAccessible::Role roleOf(QObject* object) {
    return QAccessible::queryAccessibleInterface(object)->role();
}

TEST_F(SettingsWindowTest, accessibility_controls_haveNamesAndRoles) {
    show();
    EXPECT_EQ(nameOf(&*window), "Vantrel Settings");
    EXPECT_EQ(roleOf(&*window), QAccessible::Dialog);
    EXPECT_EQ(nameOf(&recorderButton()), "Hyper + D");
    EXPECT_EQ(roleOf(&recorderButton()), QAccessible::Button);
    EXPECT_EQ(nameOf(&withText<QPushButton>("Reset")), "Reset");
    EXPECT_EQ(roleOf(&popUp(0)), QAccessible::ComboBox);
    EXPECT_EQ(nameOf(&withText<QCheckBox>("Play feedback sound")), "Play feedback sound");
    EXPECT_EQ(roleOf(&withText<QCheckBox>("Play feedback sound")), QAccessible::CheckBox);
    EXPECT_EQ(nameOf(&table()), "Saved Points");
    EXPECT_EQ(nameOf(&status()), "Ready. With Raycast Hyper Key, use Caps Lock + D.");
    EXPECT_EQ(roleOf(&status()), QAccessible::Notification);
}

TEST_F(SettingsWindowTest, accessibility_formLabels_nameTheirControls) {
    show();
    const std::vector<std::pair<const char*, QWidget*>> rows{{"Primary", &recorderButton()},
                                                             {"Mode", &popUp(0)},
                                                             {"Animation", &popUp(1)},
                                                             {"Feedback", &withText<QCheckBox>("Play feedback sound")}};
    for (const auto& [text, control] : rows) {
        SCOPED_TRACE(text);
        bool isTied = false;
        for (const auto& [other, relation] : QAccessible::queryAccessibleInterface(control)->relations()) {
            isTied = isTied || (other->object() == &withText<QLabel>(text) && relation.testFlag(QAccessible::Label));
        }
        EXPECT_TRUE(isTied);
    }
}

TEST_F(SettingsWindowTest, sound_toggledByAScreenReader_isReported) {
    show();
    auto* const actions =
        QAccessible::queryAccessibleInterface(&withText<QCheckBox>("Play feedback sound"))->actionInterface();
    actions->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(withText<QCheckBox>("Play feedback sound").isChecked());
    EXPECT_EQ(calls, Calls{"sound chosen 1"});
}

}  // namespace
}  // namespace vantrel::qt
