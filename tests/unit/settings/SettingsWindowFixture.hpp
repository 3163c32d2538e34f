#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QListView>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "helpers/settings/QtApplication.hpp"
#include "helpers/settings/SettingsWindow.hpp"

namespace vantrel::qt {

using Calls = std::vector<std::string>;

/// The name of what the person did, with the value chosen.
inline std::string nameOf(const WindowReport& report) {
    static const std::vector<std::string> names{"shown",       "recorder",         "keyboard taken", "key",  "reset",
                                                "mode chosen", "animation chosen", "sound chosen",   "clear"};
    return names.at(static_cast<std::size_t>(report.kind)) + " " + std::to_string(report.value);
}

/// The drawn window without a display, without saved points. On a screen with room for every font, or on one of the
/// others in screens/.
class SettingsWindowTest : public testing::Test {
  protected:
    explicit SettingsWindowTest(const std::string& screen = "large")
        : application(QtApplication::start("offscreen:configfile=" VANTREL_SCREENS "/" + screen + ".json", problem)) {
        makeWindow();
    }

    void makeWindow() {
        window.emplace(SettingsWindow::Events{
            .reported = [this](const WindowReport& report) { calls.push_back(nameOf(report)); },
            .textForRow = [](std::uint32_t row) { return "Point " + std::to_string(row) + " - x 0, y 0"; }});
        content = {.recorderTitle = "Hyper + D",
                   .controls = {.shortcutStatus = "Ready. With Raycast Hyper Key, use Caps Lock + D.",
                                .shortcutStatusColor = SemanticColor::secondaryLabel,
                                .selectedMode = 0,
                                .selectedAnimation = 0,
                                .savedPointsSummary = "No saved cursor points."}};
        window->setContent(content);
    }

    void show() {
        window->showWindow();
        QApplication::processEvents();
        calls.clear();
    }

    void setStatus(const std::string& text, SemanticColor color) {
        content.controls.shortcutStatus = text;
        content.controls.shortcutStatusColor = color;
        window->setContent(content);
    }

    void setRecorderTitle(const std::string& title) {
        content.recorderTitle = title;
        window->setContent(content);
    }

    void setSavedPoints(std::uint32_t count) {
        content.rows = count;
        content.controls.savedPointsSummary = std::to_string(count) + " saved cursor points.";
        window->setContent(content);
        window->reloadSavedPoints(count);
    }

    template <typename Widget>
    Widget& withText(const std::string& text) {
        for (Widget* const widget : window->template findChildren<Widget*>()) {
            if (widget->text().toStdString() == text) {
                return *widget;
            }
        }
        throw std::runtime_error("no widget " + text);
    }

    QGroupBox& section(const std::string& title) {
        for (QGroupBox* const box : window->findChildren<QGroupBox*>()) {
            if (box->title().toStdString() == title) {
                return *box;
            }
        }
        throw std::runtime_error("no section " + title);
    }

    QPushButton& recorderButton() { return *window->findChild<QPushButton*>("recorder"); }
    QComboBox& popUp(int index) { return *window->findChildren<QComboBox*>().at(index); }
    /// By its name: pop-up buttons have lists too.
    QListView& table() { return *window->findChild<QListView*>("savedPoints"); }
    QLabel& status() { return *window->findChild<QLabel*>("shortcutStatus"); }

    static void setFontSize(double points) {
        QFont font = QApplication::font();
        font.setPointSizeF(points);
        QApplication::setFont(font);
    }

    QRect inWindow(const QWidget& widget) const {
        return {widget.mapTo(static_cast<const QWidget*>(&*window), QPoint(0, 0)), widget.size()};
    }

    std::string problem;
    std::unique_ptr<QtApplication> application;
    Calls calls;  ///< what the window has reported
    WindowContent content;
    std::optional<SettingsWindow> window;
};

}  // namespace vantrel::qt
