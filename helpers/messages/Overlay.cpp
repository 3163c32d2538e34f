#include "helpers/messages/Overlay.hpp"

#include <poll.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "Vantrel/Channel/ScreenMessages.hpp"

namespace vantrel::overlay {

namespace {

Font fontOf(const ScreenText& text) {
    return {.points = std::clamp(text.fontSize, 6.0, 72.0), .isSemibold = text.isSemibold};
}

}  // namespace

Overlay::Overlay(std::unique_ptr<Screen> screen, Channel agent)
    : screen_(std::move(screen)),
      agent_(std::move(agent)),
      typesetter_(screen_->dotsPerInch()),
      flashText_(*screen_, typesetter_) {}

void Overlay::run() {
    for (;;) {
        serveAgent();
        serveTimers();
        // Last, because waiting for the server's answers may have brought events in.
        serveScreen();
        endedMenu_.reset();
        xcb_flush(screen_->connection());
        if (!agent_.isOpen() || screen_->isLost()) {
            return;
        }
        wait();
    }
}

void Overlay::serveAgent() {
    while (const auto message = agent_.receive()) {
        obey(*message);
    }
}

void Overlay::obey(const Message& message) {
    if (const auto text = screen_messages::shownText(message)) {
        flashText_.show(text->text, fontOf(*text));
    } else if (message.is(screen_messages::hideText, "()")) {
        flashText_.hide();
    } else if (const auto rows = screen_messages::openedMenu(message)) {
        openMenu(*rows);
    } else if (const auto others = screen_messages::updatedMenu(message); others && menu_) {
        menu_->setRows(*others);
    }
}

void Overlay::openMenu(const std::vector<MenuRow>& rows) {
    menu_.reset();
    if (!rows.empty()) {
        menu_ = std::make_unique<PopupMenu>(*screen_, typesetter_, rows,
                                            [this](std::optional<std::size_t> row) { menuEnded(row); });
    }
}

void Overlay::menuEnded(std::optional<std::size_t> row) {
    endedMenu_ = std::move(menu_);
    if (row) {
        agent_.send(screen_messages::chooseRow(static_cast<std::uint32_t>(*row)));
    }
    agent_.send(Message(screen_messages::menuClosed));
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
    pollfd descriptors[] = {{.fd = agent_.descriptor(), .events = POLLIN, .revents = 0},
                            {.fd = xcb_get_file_descriptor(screen_->connection()), .events = POLLIN, .revents = 0}};
    poll(descriptors, std::size(descriptors), waitingTime());
}

}  // namespace vantrel::overlay
