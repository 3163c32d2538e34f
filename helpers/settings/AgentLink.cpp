#include "helpers/settings/AgentLink.hpp"

#include <utility>

namespace vantrel::qt {

namespace {

constexpr std::uint32_t recordedEvents = eventMask(KeyEventType::keyDown) | eventMask(KeyEventType::flagsChanged);

}  // namespace

std::shared_ptr<AgentLink> AgentLink::create(Channel agent, std::function<void()> agentGone) {
    auto link = std::make_shared<AgentLink>(CreationKey(), std::move(agent), std::move(agentGone));
    link->window_.setDelegate(link);
    link->window_.shortcutRecorderButton().setDelegate(link);
    return link;
}

AgentLink::AgentLink(CreationKey /*key*/, Channel agent, std::function<void()> agentGone)
    : agentGone_(std::move(agentGone)),
      agent_(std::move(agent)),
      notifier_(agent_.descriptor(), QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { receive(); });
}

AgentLink::~AgentLink() = default;

void AgentLink::receive() {
    while (const auto message = agent_.receive()) {
        obey(*message);
    }
    if (!agent_.isOpen()) {
        notifier_.setEnabled(false);
        agentGone_();
    }
}

void AgentLink::obey(const Message& message) {
    if (const auto content = settings_messages::contentOf(message)) {
        // What is older than the last thing that the person did here would flip that back for a moment.
        if (content->lastReport >= lastReport_) {
            show(*content);
        }
    } else if (const auto text = settings_messages::rowTextOf(message)) {
        takeRowText(*text);
    } else if (const auto place = settings_messages::placeOf(message)) {
        window_.putBack({place->x, place->y});
    } else if (message.is(settings_messages::show, "()")) {
        window_.showWindow();
    } else if (message.is(settings_messages::bringToFront, "()")) {
        window_.makeKeyAndOrderFront();
    } else if (message.is(settings_messages::focusRecorder, "()")) {
        window_.shortcutRecorderButton().makeFirstResponder();
    }
}

void AgentLink::show(const WindowContent& content) {
    const WindowContent last = std::exchange(content_, content);
    if (content.modes != last.modes) {
        window_.setTitles(PreferencesPopUp::mode, content.modes);
    }
    if (content.animations != last.animations) {
        window_.setTitles(PreferencesPopUp::animation, content.animations);
    }
    window_.shortcutRecorderButton().setTitle(content.recorderTitle);
    window_.setShortcutStatus(content.shortcutStatus, static_cast<SemanticColor>(content.shortcutStatusColor));
    window_.selectItem(PreferencesPopUp::mode, static_cast<std::size_t>(content.selectedMode));
    window_.selectItem(PreferencesPopUp::animation, static_cast<std::size_t>(content.selectedAnimation));
    window_.setSoundChecked(content.isSoundChecked);
    window_.setSavedPointsSummary(content.savedPointsSummary);
    window_.setSavedPointsEmptyLabelHidden(content.isEmptyLabelHidden);
    window_.setSavedPointsTableHidden(content.isTableHidden);
    window_.setClearSavedPointsEnabled(content.isClearingEnabled);
    if (content.rowsVersion != last.rowsVersion) {
        rowTexts_.clear();
        window_.reloadSavedPoints();
    }
    recordKeys(content.recordedEvents);
}

std::optional<std::string> AgentLink::textForRow(std::int64_t row) const {
    const auto number = static_cast<std::uint32_t>(row);
    const auto [text, isNew] = rowTexts_.try_emplace(number);
    if (isNew) {
        agent_.send(settings_messages::wantRow({.rowsVersion = content_.rowsVersion, .row = number}));
    }
    return text->second;
}

void AgentLink::takeRowText(const WindowRowText& text) {
    if (text.row.rowsVersion == content_.rowsVersion) {
        rowTexts_[text.row.row] = text.text;
        window_.redrawSavedPoint(text.row.row);
    }
}

void AgentLink::modeChanged() {
    report(WindowReport::Kind::modeChosen, window_.indexOfSelectedItem(PreferencesPopUp::mode));
}

void AgentLink::animationChanged() {
    report(WindowReport::Kind::animationChosen, window_.indexOfSelectedItem(PreferencesPopUp::animation));
}

void AgentLink::soundChanged() {
    report(WindowReport::Kind::soundChosen, window_.isSoundChecked() ? 1 : 0);
}

void AgentLink::toggleRecording() {
    // The keyboard at once, not only when the agent has answered: what is typed meanwhile is for the recorder.
    recordKeys(recordedEvents);
    report(WindowReport::Kind::recorderPressed);
}

void AgentLink::viewWillMoveToWindow(bool hasWindow) {
    if (!hasWindow) {
        keyMonitor_.reset();
        agent_.send(settings_messages::place({.x = window_.x(), .y = window_.y()}));
    }
    report(WindowReport::Kind::shown, hasWindow ? 1 : 0);
}

void AgentLink::recordKeys(std::uint32_t events) {
    if (events == 0) {
        keyMonitor_.reset();
    } else if (!keyMonitor_) {
        keyMonitor_ = window_.shortcutRecorderButton().addLocalMonitorForEvents(
            events, [this](const KeyEvent& event) -> std::optional<KeyEvent> {
                send({.kind = WindowReport::Kind::key,
                      .value = static_cast<std::int32_t>(event.type),
                      .key = event.keyCode,
                      .flags = event.modifierFlags});
                return std::nullopt;
            });
    }
}

void AgentLink::report(WindowReport::Kind kind, std::int64_t value) {
    send({.kind = kind, .value = static_cast<std::int32_t>(value)});
}

void AgentLink::send(WindowReport report) {
    report.number = ++lastReport_;
    agent_.send(settings_messages::report(report));
}

}  // namespace vantrel::qt
