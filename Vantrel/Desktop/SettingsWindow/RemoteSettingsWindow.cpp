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

RemoteSettingsWindow::RemoteSettingsWindow(Helper::Start start)
    : recorder_({.changed = [this] { sendContentSoon(); },
                 .focusWanted = [this] { program_.send(Message(settings_messages::focusRecorder)); }}),
      program_(std::move(start), {.received = [this](const Message& message) { obey(message); },
                                  .ended = [this](const std::string& otherVersion) { ended(otherVersion); }}) {}

void RemoteSettingsWindow::setDelegate(std::weak_ptr<PreferencesWindowViewDelegate> delegate) {
    delegate_ = std::move(delegate);
    reloadSavedPoints();
}

void RemoteSettingsWindow::setShortcutStatus(const std::string& text, SemanticColor color) {
    content_.shortcutStatus = text;
    content_.shortcutStatusColor = static_cast<std::uint32_t>(color);
    sendContentSoon();
}

void RemoteSettingsWindow::setTitles(PreferencesPopUp popUp, const std::vector<std::string>& titles) {
    (popUp == PreferencesPopUp::mode ? content_.modes : content_.animations) = titles;
    sendContentSoon();
}

void RemoteSettingsWindow::selectItem(PreferencesPopUp popUp, std::size_t index) {
    (popUp == PreferencesPopUp::mode ? content_.selectedMode : content_.selectedAnimation) =
        static_cast<std::int32_t>(index);
    sendContentSoon();
}

std::int64_t RemoteSettingsWindow::indexOfSelectedItem(PreferencesPopUp popUp) const {
    return popUp == PreferencesPopUp::mode ? content_.selectedMode : content_.selectedAnimation;
}

void RemoteSettingsWindow::setSoundChecked(bool checked) {
    content_.isSoundChecked = checked;
    sendContentSoon();
}

void RemoteSettingsWindow::setSavedPointsSummary(const std::string& text) {
    content_.savedPointsSummary = text;
    sendContentSoon();
}

void RemoteSettingsWindow::setSavedPointsEmptyLabelHidden(bool hidden) {
    content_.isEmptyLabelHidden = hidden;
    sendContentSoon();
}

void RemoteSettingsWindow::setSavedPointsTableHidden(bool hidden) {
    content_.isTableHidden = hidden;
    sendContentSoon();
}

void RemoteSettingsWindow::setClearSavedPointsEnabled(bool enabled) {
    content_.isClearingEnabled = enabled;
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
        program_.send(settings_messages::place(*place_));
    }
    sendContent();
    program_.send(Message(settings_messages::show));
}

void RemoteSettingsWindow::makeKeyAndOrderFront() {
    program_.send(Message(settings_messages::bringToFront));
}

void RemoteSettingsWindow::obey(const Message& message) {
    if (const auto report = settings_messages::reportOf(message)) {
        take(*report);
    } else if (const auto row = settings_messages::wantedRowOf(message)) {
        giveRow(*row);
    } else if (const auto place = settings_messages::placeOf(message)) {
        place_ = place;
    } else if (message.is(settings_messages::problem, "s")) {
        const std::string problem = g_variant_get_string(message.body.get(), nullptr);
        program_.end();
        fail("the settings cannot be shown: " + problem, "Settings unavailable");
    }
}

void RemoteSettingsWindow::take(const WindowReport& report) {
    using Delegate = PreferencesWindowViewDelegate;
    using Kind = WindowReport::Kind;
    content_.lastReport = report.number;
    // Every report is answered, also one that changes nothing.
    sendContentSoon();
    switch (report.kind) {
        case Kind::shown:
            shown(report.value != 0);
            break;
        case Kind::recorderPressed:
            recorder_.pressed();
            break;
        case Kind::key:
            recorder_.keyEvent({static_cast<KeyEventType>(report.value), report.key, report.flags});
            break;
        case Kind::resetPressed:
            tell(&Delegate::resetShortcut);
            break;
        case Kind::modeChosen:
            content_.selectedMode = report.value;
            tell(&Delegate::modeChanged);
            break;
        case Kind::animationChosen:
            content_.selectedAnimation = report.value;
            tell(&Delegate::animationChanged);
            break;
        case Kind::soundChosen:
            content_.isSoundChecked = report.value != 0;
            tell(&Delegate::soundChanged);
            break;
        case Kind::clearPressed:
            tell(&Delegate::clearSavedPoints);
            break;
    }
}

void RemoteSettingsWindow::giveRow(const WindowRow& wanted) {
    const auto delegate = delegate_.lock();
    if (!delegate || wanted.rowsVersion != content_.rowsVersion) {
        return;
    }
    if (const auto text = delegate->textForRow(wanted.row)) {
        program_.send(settings_messages::rowText({.row = wanted, .text = beginning(*text)}));
    }
}

void RemoteSettingsWindow::shown(bool isShown) {
    isWanted_ = isShown;
    recorder_.windowShown(isShown);
    if (isShown) {
        program_.keep();
    } else {
        program_.endAfter(lingeringTime);
    }
}

void RemoteSettingsWindow::ended(const std::string& otherVersion) {
    // The next program counts its reports anew.
    content_.lastReport = 0;
    recorder_.windowShown(false);
    if (!otherVersion.empty()) {
        // An upgrade while the agent runs.
        fail("start Vantrel again to open the settings (they are of version " + otherVersion + ")", "Restart Vantrel");
    } else if (std::exchange(isWanted_, false)) {
        fail("the settings window has ended unexpectedly; the menu opens it again", "Settings ended");
    }
}

void RemoteSettingsWindow::fail(const std::string& problem, const std::string& flashText) {
    if (const auto delegate = delegate_.lock()) {
        delegate->windowFailed(problem, flashText);
    }
}

void RemoteSettingsWindow::tell(Action action) {
    if (const auto delegate = delegate_.lock()) {
        (delegate.get()->*action)();
    }
}

// Once for all the changes of one turn of the loop.
void RemoteSettingsWindow::sendContentSoon() {
    if (!sending_.isSet() && program_.isRunning()) {
        sending_ = LoopSource::after({}, [this] { sendContent(); });
    }
}

void RemoteSettingsWindow::sendContent() {
    content_.recorderTitle = recorder_.title();
    content_.recordedEvents = recorder_.recordedEvents();
    program_.send(settings_messages::content(content_));
}

}  // namespace vantrel::desktop
