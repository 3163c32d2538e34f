#include "helpers/messages/X11/X11Stage.hpp"

#include <algorithm>
#include <utility>

namespace vantrel::overlay {

std::unique_ptr<Stage> X11Stage::connect() {
    auto screen = Screen::connect();
    if (!screen) {
        return nullptr;
    }
    return std::unique_ptr<Stage>(new X11Stage(std::move(screen)));  // NOLINT: private constructor
}

X11Stage::X11Stage(std::unique_ptr<Screen> screen)
    : screen_(std::move(screen)), typesetter_(screen_->dotsPerInch()), flashText_(*screen_, typesetter_) {}

void X11Stage::openMenu(std::vector<MenuRow> rows, Chosen chosen) {
    menu_.reset();
    if (!rows.empty()) {
        menu_ = std::make_unique<PopupMenu>(*screen_, typesetter_, std::move(rows),
                                            [this, chosen = std::move(chosen)](std::optional<std::size_t> row) {
                                                endedMenu_ = std::move(menu_);
                                                chosen(row);
                                            });
    }
}

void X11Stage::updateMenu(std::vector<MenuRow> rows) {
    if (menu_) {
        menu_->setRows(std::move(rows));
    }
}

void X11Stage::serve() {
    while (const auto event = x11::adopt(xcb_poll_for_event(screen_->connection()))) {
        if (menu_) {
            menu_->handleEvent(*event);
        }
    }
    endedMenu_.reset();
    xcb_flush(screen_->connection());
}

std::optional<Stage::Clock::time_point> X11Stage::nextWork() const {
    const auto look = flashText_.nextLook();
    const auto attempt = menu_ ? menu_->nextAttempt() : std::nullopt;
    return look && attempt ? std::min(*look, *attempt) : look ? look : attempt;
}

void X11Stage::doDueWork() {
    const auto now = Clock::now();
    if (flashText_.nextLook() && *flashText_.nextLook() <= now) {
        flashText_.look();
    }
    if (menu_ && menu_->nextAttempt() && *menu_->nextAttempt() <= now) {
        menu_->attempt();
    }
}

}  // namespace vantrel::overlay
