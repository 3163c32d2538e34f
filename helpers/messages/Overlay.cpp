#include "helpers/messages/Overlay.hpp"

#include <poll.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace vantrel::overlay {

namespace {

Font fontOf(const ScreenText& text) {
    return {.points = std::clamp(text.fontSize, 6.0, 72.0), .isSemibold = text.isSemibold};
}

bool isAboutText(const Message& message) {
    return valueOf<ScreenText>(message).has_value() || message.is(screen_messages::hideText, "()");
}

}  // namespace

Overlay::Overlay(std::unique_ptr<Stage> stage, Channel agent) : agent_(std::move(agent)), stage_(std::move(stage)) {}

void Overlay::run() {
    for (;;) {
        serveAgent();
        if (const auto due = stage_->nextWork(); due && *due <= Stage::Clock::now()) {
            stage_->doDueWork();
        }
        // Last, because waiting for the server's answers may have brought events in.
        stage_->serve();
        if (!agent_.isOpen() || stage_->isLost()) {
            return;
        }
        wait();
    }
}

void Overlay::serveAgent() {
    // Of texts that come at once nobody sees but the last. Each would be painted on every display, and a compositor
    // hangs up on a program that does not read for so long.
    std::optional<Message> text;
    while (auto message = agent_.receive()) {
        if (isAboutText(*message)) {
            text = std::move(message);
        } else {
            obey(*message);
        }
    }
    if (text) {
        obey(*text);
    }
}

void Overlay::obey(const Message& message) {
    if (const auto text = valueOf<ScreenText>(message)) {
        stage_->showText(text->text, fontOf(*text));
    } else if (message.is(screen_messages::hideText, "()")) {
        stage_->hideText();
    } else if (auto menu = valueOf<OpenMenu>(message)) {
        stage_->openMenu(std::move(menu->rows), [this](std::optional<std::size_t> row) { menuEnded(row); });
    } else if (auto update = valueOf<UpdateMenu>(message)) {
        stage_->updateMenu(std::move(update->rows));
    }
}

void Overlay::menuEnded(std::optional<std::size_t> row) {
    if (row) {
        agent_.send(messageOf(ChosenRow{.row = static_cast<std::uint32_t>(*row)}));
    }
    agent_.send(Message(screen_messages::menuClosed));
}

int Overlay::waitingTime() const {
    const auto next = stage_->nextWork();
    if (!next) {
        return -1;
    }
    const auto time = std::chrono::ceil<std::chrono::milliseconds>(*next - Stage::Clock::now());
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(time.count(), 0));
}

void Overlay::wait() {
    pollfd descriptors[] = {{.fd = agent_.descriptor(), .events = POLLIN, .revents = 0},
                            {.fd = stage_->descriptor(), .events = POLLIN, .revents = 0}};
    poll(descriptors, std::size(descriptors), waitingTime());
}

}  // namespace vantrel::overlay
