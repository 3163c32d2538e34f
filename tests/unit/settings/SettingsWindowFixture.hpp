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

/// Notes what the window asks for.
class Delegate final : public PreferencesWindowViewDelegate {
  public:
    void resetShortcut() override { calls.emplace_back("resetShortcut"); }
    void modeChanged() override { calls.emplace_back("modeChanged"); }
    void animationChanged() override { calls.emplace_back("animationChanged"); }
    void soundChanged() override { calls.emplace_back("soundChanged"); }
    void clearSavedPoints() override { calls.emplace_back("clearSavedPoints"); }
    void windowFailed(const std::string& /*problem*/, const std::string& /*flashText*/) override {}
    [[nodiscard]] std::size_t numberOfRows() const override { return rows; }
    [[nodiscard]] std::optional<std::string> textForRow(std::int64_t row) const override {
        return "Point " + std::to_string(row) + " - x 0, y 0";
    }

    Calls calls;
    std::size_t rows = 0;
};

/// Notes what the recorder's button asks for.
class Recorder final : public ShortcutRecorderButtonDelegate {
  public:
    void toggleRecording() override { calls.emplace_back("toggleRecording"); }
    void viewWillMoveToWindow(bool hasWindow) override { calls.emplace_back(hasWindow ? "shown" : "hidden"); }

    Calls calls;
};

/// The drawn window without a display, without saved points. On a screen with room for every font, or on one of the
/// others in screens/.
class SettingsWindowTest : public testing::Test {
  protected:
    explicit SettingsWindowTest(const std::string& screen = "large")
        : application(QtApplication::start("offscreen:configfile=" VANTREL_SCREENS "/" + screen + ".json", problem)) {
        makeWindow();
    }

    void makeWindow() {
        window.emplace();
        window->setDelegate(delegate);
        window->shortcutRecorderButton().setDelegate(recorder);
        window->setTitles(PreferencesPopUp::mode, {"Automatic: displays", "Manual: saved points"});
        window->setTitles(PreferencesPopUp::animation, {"Instant", "Glide"});
        window->shortcutRecorderButton().setTitle("Hyper + D");
        window->setShortcutStatus("Ready. With Raycast Hyper Key, use Caps Lock + D.", SemanticColor::secondaryLabel);
        window->setSavedPointsSummary("No saved cursor points.");
        window->setSavedPointsTableHidden(true);
        window->setClearSavedPointsEnabled(false);
    }

    void show() {
        window->showWindow();
        QApplication::processEvents();
        delegate->calls.clear();
        recorder->calls.clear();
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

    RecorderButton& recorderButton() { return static_cast<RecorderButton&>(window->shortcutRecorderButton()); }
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
    std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>();
    std::shared_ptr<Recorder> recorder = std::make_shared<Recorder>();
    std::optional<SettingsWindow> window;
};

}  // namespace vantrel::qt
