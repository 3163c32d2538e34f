#include "tests/desk/settings/SettingsDesk.hpp"

#include <glib.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <stdexcept>

#include "Vantrel/Desktop/SettingsWindow/RemoteSettingsWindow.hpp"
#include "tests/unit/channel/ChannelEnds.hpp"

namespace vantrel::desk {

namespace {

/// The test's own process is the agent here.
void enter(const Environment& environment) {
    for (const char* const name : {"QT_QPA_PLATFORM", "QT_QPA_PLATFORMTHEME", "QT_STYLE_OVERRIDE", "QT_IM_MODULE",
                                   "GTK_THEME", "SESSION_MANAGER", "WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP"}) {
        unsetenv(name);
    }
    for (const std::string& entry : environment.entries()) {
        const auto equals = entry.find('=');
        setenv(entry.substr(0, equals).c_str(), entry.substr(equals + 1).c_str(), 1);
    }
}

Platform withRealHotKeys(Platform platform, x11::X11Session& x11, PreferencesWindowViewFactory& windows) {
    return Platform{platform.application,
                    platform.displays,
                    platform.pointerReader,
                    platform.pointerWarper,
                    x11.hotKeys(),
                    platform.mainQueue,
                    platform.runLoop,
                    platform.standardUserDefaults,
                    platform.systemStatusBar,
                    platform.sounds,
                    platform.uuids,
                    platform.urls,
                    windows};
}

}  // namespace

PreferencesWindowViewResult WindowInThisProcess::makePreferencesWindowView() {
    return {.view = std::make_unique<desktop::RemoteSettingsWindow>(
                [this] {
                    SocketPair pair;
                    link = std::make_unique<qt::AgentLink>(Channel(std::move(pair.second)), [] {});
                    return Channel(std::move(pair.first));
                },
                keyboard_),
            .problem = {},
            .flashText = {}};
}

SettingsDesk::SettingsDesk(const DeskOptions& options, const std::vector<Chord>& takenChords)
    : desk_(options), otherProgram_(desk_.server().displayName()) {
    for (const Chord& chord : takenChords) {
        takenChords_.push_back(std::make_unique<KeyGrab>(otherProgram_, chord));
    }
    enter(desk_.environment());
    std::string error;
    x11_ = x11::X11Session::connect(error);
    if (!x11_) {
        throw std::runtime_error(error);
    }
    x11_->attach({.ended = [](const std::string&) {}, .opened = [](const std::vector<std::string>&) {}});
    qt_ = qt::QtApplication::start("xcb", problem_);
    if (!qt_) {
        throw std::runtime_error(problem_);
    }
    controller_ = AppDelegate::create(withRealHotKeys(fakes_.platform(), *x11_, windows_), vantrelHotKeySignature,
                                      AppDelegate::hotKeyPressed);
    controller_->applicationDidFinishLaunching();
}

SettingsDesk::~SettingsDesk() {
    controller_->applicationWillTerminate();
}

void SettingsDesk::open() {
    if (!colors_) {
        colors_.emplace();
    }
    controller_->openSettings();
    if (!turnUntil([&] { return windows_.link && window().isVisible() && window().isActiveWindow(); })) {
        throw std::runtime_error("the settings window does not get the keyboard");
    }
    settle();
}

void SettingsDesk::settle() {
    xcb_connection_t* const server = desk_.connection().get();
    const auto isWhereQtTakesItToBe = [&] {
        const XReply<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
            server,
            xcb_translate_coordinates(server, static_cast<xcb_window_t>(window().winId()), desk_.connection().root(), 0,
                                      0),
            nullptr));
        if (!place) {
            return false;
        }
        // At other scales than 1 Qt's places are rounded.
        const double scale = window().devicePixelRatioF();
        const QPoint difference = QPoint(place->dst_x, place->dst_y) - window().mapToGlobal(QPoint(0, 0)) * scale;
        return std::max(std::abs(difference.x()), std::abs(difference.y())) < scale;
    };
    if (!turnUntil(isWhereQtTakesItToBe)) {
        throw std::runtime_error("the settings window does not come to rest");
    }
}

bool SettingsDesk::turnUntil(const std::function<bool()>& condition, Duration deadline) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        if (!g_main_context_iteration(nullptr, FALSE)) {
            g_usleep(500);
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        fakes_.mainQueue.turn();
    }
    return true;
}

bool SettingsDesk::holds(const std::function<bool()>& condition, Duration time) {
    return !turnUntil([&] { return !condition(); }, time);
}

QAbstractButton& SettingsDesk::recorder() {
    return *window().findChild<QAbstractButton*>("recorder");
}

std::string SettingsDesk::recorderTitle() {
    return recorder().text().replace('\n', ' ').toStdString();
}

QAbstractButton& SettingsDesk::button(const std::string& text) {
    const auto buttons = window().findChildren<QAbstractButton*>();
    const auto found = std::find_if(buttons.begin(), buttons.end(), [&](const QAbstractButton* button) {
        return button->text().toStdString() == text;
    });
    if (found == buttons.end()) {
        throw std::runtime_error("no button " + text);
    }
    return **found;
}

std::string SettingsDesk::status() {
    return window().findChild<QLabel*>("shortcutStatus")->text().toStdString();
}

bool SettingsDesk::statusIsRed() {
    const QColor color = window().findChild<QLabel*>("shortcutStatus")->palette().color(QPalette::WindowText);
    return color.red() > 2 * color.green() && color.red() > 2 * color.blue();
}

void SettingsDesk::click(const QWidget& widget, QPoint place) {
    pressPointerButton(widget, place, XCB_BUTTON_INDEX_1, 1);
}

void SettingsDesk::turnWheel(const QWidget& widget, int clicks) {
    const std::uint8_t button = clicks < 0 ? XCB_BUTTON_INDEX_4 : XCB_BUTTON_INDEX_5;
    pressPointerButton(widget, widget.rect().center(), button, std::abs(clicks));
}

void SettingsDesk::pressPointerButton(const QWidget& widget, QPoint place, std::uint8_t button, int times) {
    settle();
    const QPoint onScreen = widget.mapToGlobal(place) * widget.devicePixelRatio();
    xcb_connection_t* const server = desk_.connection().get();
    xcb_test_fake_input(server, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, desk_.connection().root(),
                        static_cast<std::int16_t>(onScreen.x()), static_cast<std::int16_t>(onScreen.y()), 0);
    for (int count = 0; count < times; ++count) {
        xcb_test_fake_input(server, XCB_BUTTON_PRESS, button, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        xcb_test_fake_input(server, XCB_BUTTON_RELEASE, button, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    }
    desk_.connection().synchronise();
}

void SettingsDesk::startRecording() {
    click(recorder());
    if (!turnUntil([&] { return recorderTitle() == "Press shortcut..."; })) {
        throw std::runtime_error("the recorder does not start");
    }
}

void SettingsDesk::waitForWindowManagersChord(const Chord& chord) {
    desk_.keyboard().type({keys::shift});
    const auto isHeld = [&] { return isHeldByAnotherProgram(otherProgram_, chord); };
    if (!turnUntil([&] { return holds(isHeld); })) {
        throw std::runtime_error("the window manager does not hold its chord");
    }
}

void SettingsDesk::saveScreenshot(const std::string& name) {
    if (const char* const folder = std::getenv("VANTREL_SCREENSHOTS")) {
        holds([] { return true; });
        desk_.saveScreenshot(std::string(folder) + "/" + name + ".png");
    }
}

}  // namespace vantrel::desk
