#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QListView>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Vantrel/Backends/X11/X11Session.hpp"
#include "Vantrel/Controller/AppDelegate.hpp"
#include "Vantrel/Platform/KeyboardCapture.hpp"
#include "helpers/settings/AgentLink.hpp"
#include "helpers/settings/DesktopColors.hpp"
#include "helpers/settings/QtApplication.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/KeyGrab.hpp"
#include "tests/fakes/FakePlatform.hpp"

namespace vantrel::desk {

/// Makes settings windows whose program runs in this process, where its widgets can be looked at. Every word between
/// the controller and the window goes through a channel all the same.
class WindowInThisProcess final : public PreferencesWindowViewFactory {
  public:
    PreferencesWindowViewResult makePreferencesWindowView() override;

    std::unique_ptr<qt::AgentLink> link;  ///< of the last window that was shown

  private:
    KeyboardCapture keyboard_;
};

/// The settings window on a private desk, in this process: the real controller with real hot keys; the rest of its
/// platform is in memory. GLib's default main context serves all of it, as in the agent.
class SettingsDesk {
  public:
    /// `takenChords` are held by another program before the controller starts.
    explicit SettingsDesk(const DeskOptions& options = {.hasSessionBus = false, .hasWindowManager = true},
                          const std::vector<Chord>& takenChords = {});
    ~SettingsDesk();
    SettingsDesk(const SettingsDesk&) = delete;
    SettingsDesk& operator=(const SettingsDesk&) = delete;

    Desk& desk() { return desk_; }
    fake::FakePlatform& fakes() { return fakes_; }
    AppDelegate& controller() { return *controller_; }
    qt::SettingsWindow& window() { return windows_.link->window(); }

    /// Opens the settings, in the colours of the desk as it is then, and waits until the window is shown and has the
    /// keyboard.
    void open();

    /// Turns the main loop until the condition holds; false at the deadline.
    bool turnUntil(const std::function<bool()>& condition, Duration deadline = generousDeadline);

    /// Turns the main loop for a while; false as soon as the condition fails.
    bool holds(const std::function<bool()>& condition, Duration time = quietTime);

    /// The recorder, and what it shows, on one line.
    QAbstractButton& recorder();
    std::string recorderTitle();

    /// The button, list or box with that text or accessible name.
    QAbstractButton& button(const std::string& text);

    /// The status line's text, and whether it is red.
    std::string status();
    bool statusIsRed();

    /// Moves the real pointer to the place in the widget, or to its middle, and presses the left button.
    void click(const QWidget& widget, QPoint place);
    void click(const QWidget& widget) { click(widget, widget.rect().center()); }

    /// Moves the real pointer to the widget's middle and turns the wheel by so many of its clicks: downwards, or
    /// upwards when they are negative.
    void turnWheel(const QWidget& widget, int clicks);

    /// Presses the recorder with the mouse and waits for its prompt.
    void startRecording();

    /// Waits until the window manager holds its chord. It lets go of all and takes them anew when the first key of the
    /// test's keyboard tells it of a change of keyboards.
    void waitForWindowManagersChord(const Chord& chord);

    /// A screenshot for people, where VANTREL_SCREENSHOTS names a folder.
    void saveScreenshot(const std::string& name);

  private:
    /// Waits until Qt knows where the window manager put the window.
    void settle();
    void pressPointerButton(const QWidget& widget, QPoint place, std::uint8_t button, int times);

    Desk desk_;
    XConnection otherProgram_;
    std::vector<std::unique_ptr<KeyGrab>> takenChords_;
    fake::FakePlatform fakes_;
    std::unique_ptr<x11::X11Session> x11_;
    std::string problem_;
    std::unique_ptr<qt::QtApplication> qt_;
    std::optional<qt::DesktopColors> colors_;
    WindowInThisProcess windows_;
    std::shared_ptr<AppDelegate> controller_;
};

}  // namespace vantrel::desk
