#include "helpers/settings/AgentLink.hpp"

#include <utility>

namespace vantrel::qt {

AgentLink::AgentLink(Channel agent, std::function<void()> agentGone)
    : agentGone_(std::move(agentGone)),
      agent_(std::move(agent)),
      notifier_(agent_.descriptor(), QSocketNotifier::Read),
      window_({.reported = [this](const WindowReport& done) { report(done); },
               .textForRow = [this](std::uint32_t row) { return textForRow(row); }}) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { receive(); });
}

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
    if (const auto content = valueOf<WindowContent>(message)) {
        // What is older than the last thing that the person did here would flip that back for a moment.
        if (content->lastReport >= lastReport_) {
            show(*content);
        }
    } else if (const auto text = valueOf<WindowRowText>(message)) {
        takeRowText(*text);
    } else if (const auto place = valueOf<WindowPlace>(message)) {
        window_.putBack({place->x, place->y});
    } else if (const auto key = valueOf<WindowKey>(message)) {
        window_.takeCapturedKey(*key);
    } else if (message.is(settings_messages::captureEnded, "()")) {
        window_.endCapture();
    } else if (message.is(settings_messages::show, "()")) {
        window_.showWindow();
    } else if (message.is(settings_messages::bringToFront, "()")) {
        window_.makeKeyAndOrderFront();
    } else if (message.is(settings_messages::focusRecorder, "()")) {
        window_.focusRecorder();
    }
}

void AgentLink::show(const WindowContent& content) {
    window_.setContent(content);
    if (std::exchange(rowsVersion_, content.rowsVersion) != content.rowsVersion) {
        rowTexts_.clear();
        window_.reloadSavedPoints(content.rows);
    }
}

std::optional<std::string> AgentLink::textForRow(std::uint32_t row) {
    const auto [text, isNew] = rowTexts_.try_emplace(row);
    if (isNew) {
        agent_.send(messageOf(WindowRow{.rowsVersion = rowsVersion_, .row = row}));
    }
    return text->second;
}

void AgentLink::takeRowText(const WindowRowText& text) {
    if (text.row.rowsVersion == rowsVersion_) {
        rowTexts_[text.row.row] = text.text;
        window_.redrawSavedPoint(text.row.row);
    }
}

void AgentLink::report(WindowReport report) {
    if (report.kind == WindowReport::Kind::shown && report.value == 0) {
        agent_.send(messageOf(WindowPlace{.x = window_.x(), .y = window_.y()}));
    }
    report.number = ++lastReport_;
    agent_.send(messageOf(report));
}

}  // namespace vantrel::qt
