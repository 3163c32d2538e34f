#include "Vantrel/Desktop/SettingsWindow/RemoteSettingsWindow.hpp"

#include <algorithm>
#include <utility>

namespace vantrel::desktop {

namespace {

/// For a person who closes the window and opens it again, it comes at once.
constexpr std::chrono::seconds lingeringTime{60};

/// As much of a row's text as any window can show, without a character that is cut in two.
std::string beginning(const std::string& text) {
    constexpr std::size_t mostBytes = 4000;
    const GCharPointer valid(g_utf8_make_valid(text.data(), static_cast<gssize>(std::min(text.size(), mostBytes))));
    return valid.get();
}

}  // namespace

RemoteSettingsWindow::RemoteSettingsWindow(Helper::Start start, KeyboardCapture& keyboard)
    : keyboard_(keyboard),
      program_(std::move(start), {.received = [this](const Message& message) { obey(message); },
                                  .ended = [this](const std::string& otherVersion) { ended(otherVersion); }}) {
    keyboard_.setCaptureEvents({.key =
                                    [this](const CapturedKey& key) {
                                        program_.send(messageOf(WindowKey{
                                            .keycode = key.keycode, .state = key.state, .isPressed = key.isPressed}));
                                    },
                                .ended = [this] { captureEnded(); }});
}

RemoteSettingsWindow::~RemoteSettingsWindow() {
    keyboard_.setCaptureEvents({});
}

void RemoteSettingsWindow::setDelegate(std::weak_ptr<PreferencesWindowViewDelegate> delegate) {
    delegate_ = std::move(delegate);
    reloadSavedPoints();
}

void RemoteSettingsWindow::setDelegate(std::weak_ptr<ShortcutRecorderButtonDelegate> delegate) {
    recorder_ = std::move(delegate);
}

void RemoteSettingsWindow::setContent(const PreferencesWindowContent& content) {
    content_.controls = content;
    sendContentSoon();
}

void RemoteSettingsWindow::setTitle(const std::string& title) {
    content_.recorderTitle = title;
    sendContentSoon();
}

void RemoteSettingsWindow::reloadSavedPoints() {
    const auto delegate = delegate_.lock();
    content_.rows = delegate ? static_cast<std::uint32_t>(delegate->numberOfRows()) : 0;
    ++content_.rowsVersion;
    sendContentSoon();
}

void RemoteSettingsWindow::showWindow() {
    isWanted_ = true;
    const bool isNew = !program_.isRunning();
    if (!program_.start()) {
        fail("the settings cannot be shown: their program does not start", "Settings unavailable");
        return;
    }
    if (isNew && place_) {
        program_.send(messageOf(*place_));
    }
    sendContent();
    program_.send(Message(settings_messages::show));
}

void RemoteSettingsWindow::makeKeyAndOrderFront() {
    program_.send(Message(settings_messages::bringToFront));
}

void RemoteSettingsWindow::makeFirstResponder() {
    program_.send(Message(settings_messages::focusRecorder));
}

std::unique_ptr<EventMonitor> RemoteSettingsWindow::addLocalMonitorForEvents(std::uint32_t mask, EventHandler handler) {
    recordedEvents_ = mask;
    recordedEventHandler_ = std::move(handler);
    sendContentSoon();
    return std::make_unique<EventMonitor>([this] {
        recordedEvents_ = 0;
        recordedEventHandler_ = nullptr;
        sendContentSoon();
    });
}

void RemoteSettingsWindow::obey(const Message& message) {
    if (const auto report = valueOf<WindowReport>(message)) {
        take(*report);
    } else if (const auto row = valueOf<WindowRow>(message)) {
        giveRow(*row);
    } else if (const auto place = valueOf<WindowPlace>(message)) {
        place_ = place;
    } else if (const auto problem = valueOf<WindowProblem>(message)) {
        program_.end();
        fail("the settings cannot be shown: " + problem->text, "Settings unavailable");
    }
}

void RemoteSettingsWindow::take(const WindowReport& report) {
    using Kind = WindowReport::Kind;
    content_.lastReport = report.number;
    // Every report is answered, also one that changes nothing.
    sendContentSoon();
    const auto delegate = delegate_.lock();
    const auto recorder = recorder_.lock();
    if (!delegate || !recorder) {
        return;
    }
    switch (report.kind) {
        case Kind::shown:
            shown(report.value != 0);
            break;
        case Kind::recorderPressed:
            recorder->toggleRecording();
            break;
        case Kind::keyboardTaken:
            setKeyboardTaken(report.value != 0);
            break;
        case Kind::key:
            typed(report.key);
            break;
        case Kind::resetPressed:
            delegate->resetShortcut();
            break;
        case Kind::modeChosen:
            delegate->modeChanged(report.value);
            break;
        case Kind::animationChosen:
            delegate->animationChanged(report.value);
            break;
        case Kind::soundChosen:
            delegate->soundChanged(report.value != 0);
            break;
        case Kind::clearPressed:
            delegate->clearSavedPoints();
            break;
    }
}

void RemoteSettingsWindow::giveRow(const WindowRow& wanted) {
    const auto delegate = delegate_.lock();
    if (!delegate || wanted.rowsVersion != content_.rowsVersion) {
        return;
    }
    if (const auto text = delegate->textForRow(wanted.row)) {
        program_.send(messageOf(WindowRowText{.row = wanted, .text = beginning(*text)}));
    }
}

void RemoteSettingsWindow::typed(const KeyEvent& event) {
    if ((recordedEvents_ & eventMask(event.type)) != 0) {
        // A copy: the handler may remove its monitor.
        const EventHandler handler = recordedEventHandler_;
        handler(event);
    }
}

void RemoteSettingsWindow::setKeyboardTaken(bool isTaken) {
    if (std::exchange(isKeyboardTaken_, isTaken) != isTaken) {
        keyboard_.setRecording(isTaken);
    }
}

/// As a second press of the recorder's button.
void RemoteSettingsWindow::captureEnded() {
    program_.send(Message(settings_messages::captureEnded));
    const auto recorder = recorder_.lock();
    if (recorder && recordedEvents_ != 0) {
        recorder->toggleRecording();
    }
}

void RemoteSettingsWindow::shown(bool isShown) {
    isWanted_ = isShown;
    isShown_ = isShown;
    if (const auto recorder = recorder_.lock()) {
        recorder->viewWillMoveToWindow(isShown);
    }
    if (isShown) {
        program_.keep();
    } else {
        program_.endAfter(lingeringTime);
    }
}

void RemoteSettingsWindow::ended(const std::string& otherVersion) {
    // The next program counts its reports anew.
    content_.lastReport = 0;
    const bool wasWanted = isWanted_;
    setKeyboardTaken(false);
    shown(false);
    if (!otherVersion.empty()) {
        // An upgrade while the agent runs.
        fail("start Vantrel again to open the settings (they are of version " + otherVersion + ")", "Restart Vantrel");
    } else if (wasWanted) {
        fail("the settings window has ended unexpectedly; the menu opens it again", "Settings ended");
    }
}

void RemoteSettingsWindow::fail(const std::string& problem, const std::string& flashText) {
    if (const auto delegate = delegate_.lock()) {
        delegate->windowFailed(problem, flashText);
    }
}

// Once for all the changes of one turn of the loop.
void RemoteSettingsWindow::sendContentSoon() {
    if (!sending_.isSet() && program_.isRunning()) {
        sending_ = LoopSource::after({}, [this] { sendContent(); });
    }
}

void RemoteSettingsWindow::sendContent() {
    content_.recordsKeys = recordedEvents_ != 0;
    content_.keysAreCaptured = keyboard_.capturesKeys();
    program_.send(messageOf(content_));
}

}  // namespace vantrel::desktop
