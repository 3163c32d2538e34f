#include "helpers/messages/Overlay.hpp"

#include <poll.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string>
#include <utility>

namespace vantrel::overlay {

namespace {

/// The number, or 0 when the text is none. Needs no locale.
double numberFromText(const std::string& text) {
    double number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// The font that the message names in two fields from `first` on.
Font fontFromFields(const std::vector<std::string>& fields, std::size_t first) {
    Font font{.points = 12, .isSemibold = true};
    if (first + 1 < fields.size()) {
        font = {.points = std::clamp(numberFromText(fields[first]), 6.0, 72.0),
                .isSemibold = fields[first + 1] == "semibold"};
    }
    return font;
}

}  // namespace

Overlay::Overlay(std::unique_ptr<Screen> screen)
    : screen_(std::move(screen)), typesetter_(screen_->dotsPerInch()), flashText_(*screen_, typesetter_) {}

void Overlay::run() {
    while (!agent_.isClosed() && !screen_->isLost()) {
        serveAgent();
        serveTimers();
        // Last, because waiting for the server's answers may have brought events in.
        serveScreen();
        endedMenu_.reset();
        xcb_flush(screen_->connection());
        wait();
    }
}

void Overlay::serveAgent() {
    while (const auto message = agent_.receive()) {
        obey(*message);
    }
}

void Overlay::obey(const OverlayMessage& message) {
    using Kind = OverlayMessage::Kind;
    switch (message.kind) {
        case Kind::showText:
            if (!message.fields.empty()) {
                flashText_.show(message.fields.front(), fontFromFields(message.fields, 1));
            }
            break;
        case Kind::hideText:
            flashText_.hide();
            break;
        case Kind::openMenu:
            openMenu(desktop::rowsFromFields(message.fields));
            break;
        case Kind::updateMenu:
            if (menu_) {
                menu_->setRows(desktop::rowsFromFields(message.fields));
            }
            break;
        case Kind::rowChosen:
        case Kind::menuClosed:
            break;
    }
}

void Overlay::openMenu(const std::vector<OverlayRow>& rows) {
    menu_.reset();
    if (!rows.empty()) {
        menu_ = std::make_unique<PopupMenu>(*screen_, typesetter_, rows,
                                            [this](std::optional<std::size_t> row) { menuEnded(row); });
    }
}

void Overlay::menuEnded(std::optional<std::size_t> row) {
    endedMenu_ = std::move(menu_);
    if (row) {
        agent_.send({.kind = OverlayMessage::Kind::rowChosen, .fields = {std::to_string(*row)}});
    }
    agent_.send({.kind = OverlayMessage::Kind::menuClosed, .fields = {}});
}

void Overlay::serveScreen() {
    while (const auto event = x11::adopt(xcb_poll_for_event(screen_->connection()))) {
        if (menu_) {
            menu_->handleEvent(*event);
        }
    }
}

void Overlay::serveTimers() {
    const auto now = Clock::now();
    if (flashText_.nextLook() && *flashText_.nextLook() <= now) {
        flashText_.look();
    }
    if (menu_ && menu_->nextAttempt() && *menu_->nextAttempt() <= now) {
        menu_->attempt();
    }
}

int Overlay::waitingTime() const {
    std::optional<Clock::time_point> next = flashText_.nextLook();
    if (menu_ && menu_->nextAttempt()) {
        next = next ? std::min(*next, *menu_->nextAttempt()) : menu_->nextAttempt();
    }
    if (!next) {
        return -1;
    }
    const auto time = std::chrono::ceil<std::chrono::milliseconds>(*next - Clock::now());
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(time.count(), 0));
}

void Overlay::wait() {
    pollfd descriptors[] = {{.fd = AgentLink::descriptor, .events = POLLIN, .revents = 0},
                            {.fd = xcb_get_file_descriptor(screen_->connection()), .events = POLLIN, .revents = 0}};
    poll(descriptors, std::size(descriptors), waitingTime());
}

}  // namespace vantrel::overlay
