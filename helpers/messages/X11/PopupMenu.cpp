#include "helpers/messages/X11/PopupMenu.hpp"

#include <array>
#include <utility>

namespace vantrel::overlay {

namespace {

constexpr xcb_button_t lastRealButton = 3;  // the next ones are the wheel's
constexpr std::chrono::milliseconds attemptInterval(20);
constexpr std::chrono::seconds longestAttempt(2);

}  // namespace

PopupMenu::PopupMenu(const Screen& screen, const Typesetter& typesetter, std::vector<MenuRow> rows,
                     std::function<void(std::optional<std::size_t>)> ended)
    : screen_(screen),
      view_(typesetter, std::move(rows), {.changed = [this] { draw(); }, .ended = std::move(ended)}),
      origin_(screen.pointer()),
      window_(screen, "Vantrel menu", "_NET_WM_WINDOW_TYPE_POPUP_MENU", PopupWindow::Input::pointer),
      grab_(screen),
      lastAttempt_(Clock::now() + longestAttempt) {
    place();
    attempt();
}

void PopupMenu::attempt() {
    nextAttempt_.reset();
    if (grab_.take()) {
        window_.show();
        return;
    }
    if (Clock::now() > lastAttempt_) {
        // Without the input the menu could not be left.
        view_.leave();
        return;
    }
    nextAttempt_ = Clock::now() + attemptInterval;
}

void PopupMenu::setRows(std::vector<MenuRow> rows) {
    view_.setRows(std::move(rows));
    place();
}

void PopupMenu::place() {
    view_.placeAt(origin_, screen_.monitorAt(origin_));
    draw();
}

void PopupMenu::draw() {
    window_.place(view_.bounds(), view_.cornerRadius(),
                  [this](cairo_t* context) { view_.draw(context, window_.hasAlpha()); });
}

void PopupMenu::handleEvent(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7F) {
        case XCB_MOTION_NOTIFY: {
            const auto& motion = reinterpret_cast<const xcb_motion_notify_event_t&>(event);
            view_.pointerMoved(Point{.x = motion.root_x, .y = motion.root_y});
            break;
        }
        case XCB_BUTTON_PRESS: {
            const auto& press = reinterpret_cast<const xcb_button_press_event_t&>(event);
            if (press.detail <= lastRealButton) {
                view_.buttonPressed(Point{.x = press.root_x, .y = press.root_y});
            }
            break;
        }
        case XCB_BUTTON_RELEASE: {
            const auto& release = reinterpret_cast<const xcb_button_release_event_t&>(event);
            if (release.detail <= lastRealButton) {
                view_.buttonReleased(Point{.x = release.root_x, .y = release.root_y});
            }
            break;
        }
        case XCB_KEY_PRESS: {
            const auto& press = reinterpret_cast<const xcb_key_press_event_t&>(event);
            pressKey(press.detail, press.state);
            break;
        }
        default:
            break;
    }
}

void PopupMenu::pressKey(std::uint8_t keycode, std::uint16_t modifiers) {
    xcb_connection_t* connection = screen_.connection();
    const auto reply = x11::adopt(
        xcb_get_keyboard_mapping_reply(connection, xcb_get_keyboard_mapping(connection, keycode, 1), nullptr));
    std::array<std::uint32_t, 2> ofLayouts{};
    for (std::size_t layout = 0; reply && layout < ofLayouts.size(); ++layout) {
        // The core protocol has each layout's keysym with Shift behind the one without.
        if (2 * layout < reply->keysyms_per_keycode) {
            ofLayouts[layout] = xcb_get_keyboard_mapping_keysyms(reply.get())[2 * layout];
        }
    }
    view_.keyPressed(ofLayouts, (modifiers & XCB_MOD_MASK_CONTROL) != 0);
}

}  // namespace vantrel::overlay
