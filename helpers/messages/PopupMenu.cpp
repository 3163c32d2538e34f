#include "helpers/messages/PopupMenu.hpp"

#include <algorithm>
#include <string>
#include <utility>

#include "helpers/messages/Keysyms.hpp"
#include "helpers/messages/Palette.hpp"

namespace vantrel::overlay {

namespace {

constexpr Font rowFont{.points = 10, .isSemibold = false};
constexpr double rowPadding = 4;  // above and below the text of a row
constexpr double sidePadding = 16;
constexpr double hintGap = 32;
constexpr double cornerRadius = 6;
constexpr int widestRow = 560;
constexpr xcb_button_t lastRealButton = 3;  // the next ones are the wheel's
constexpr std::chrono::milliseconds attemptInterval(20);
constexpr std::chrono::seconds longestAttempt(2);

std::string hintText(const MenuRow& row) {
    if (row.keyEquivalent.empty()) {
        return {};
    }
    std::string key = row.keyEquivalent;
    std::transform(key.begin(), key.end(), key.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    });
    return "Ctrl+" + key;
}

}  // namespace

PopupMenu::PopupMenu(const Screen& screen, const Typesetter& typesetter, std::vector<MenuRow> rows,
                     std::function<void(std::optional<std::size_t>)> chosen)
    : screen_(screen),
      typesetter_(typesetter),
      rows_(std::move(rows)),
      chosen_(std::move(chosen)),
      origin_(screen.pointer()),
      measures_{.row = typesetter.line("Vantrel", rowFont, widestRow).size().height + 2 * screen.scaled(rowPadding),
                .separator = screen.scaled(9),
                .margin = screen.scaled(5)},
      layout_(rows_, measures_),
      window_(screen, "Vantrel", "_NET_WM_WINDOW_TYPE_POPUP_MENU", PopupWindow::Input::pointer),
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
        choose(std::nullopt);
        return;
    }
    nextAttempt_ = Clock::now() + attemptInterval;
}

void PopupMenu::setRows(std::vector<MenuRow> rows) {
    rows_ = std::move(rows);
    layout_ = MenuLayout(rows_, measures_);
    if (pointedRow_ && (*pointedRow_ >= rows_.size() || !rows_[*pointedRow_].isEnabled)) {
        pointedRow_.reset();
    }
    place();
}

void PopupMenu::place() {
    int titles = 0;
    int hints = 0;
    for (const MenuRow& row : rows_) {
        titles = std::max(titles, typesetter_.line(row.title, rowFont, screen_.scaled(widestRow)).size().width);
        if (const std::string hint = hintText(row); !hint.empty()) {
            hints = std::max(hints, typesetter_.line(hint, rowFont, screen_.scaled(widestRow)).size().width +
                                        screen_.scaled(hintGap));
        }
    }
    bounds_ = menuBounds(origin_, titles + hints + 2 * screen_.scaled(sidePadding), layout_.height(),
                         screen_.monitorAt(origin_));
    window_.place(bounds_, screen_.scaled(cornerRadius), [this](cairo_t* context) { draw(context); });
}

void PopupMenu::draw(cairo_t* context) const {
    drawGround(context, bounds_.width, bounds_.height, screen_.scaled(cornerRadius), window_.hasAlpha());
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        drawRow(context, row);
    }
}

void PopupMenu::drawRow(cairo_t* context, std::size_t row) const {
    const MenuRow& item = rows_[row];
    const int top = layout_.top(row);
    const int height = layout_.rowHeight(row);
    if (item.isSeparator) {
        setColor(context, rimColor);
        const int middle = top + height / 2;
        cairo_rectangle(context, 1, middle, bounds_.width - 2, 1);
        cairo_fill(context);
        return;
    }
    if (pointedRow_ == row) {
        setColor(context, chosenColor);
        cairo_rectangle(context, 1, top, bounds_.width - 2, height);
        cairo_fill(context);
    }
    setColor(context, item.isEnabled ? textColor : disabledTextColor);
    const int side = screen_.scaled(sidePadding);
    const int padding = screen_.scaled(rowPadding);
    typesetter_.line(item.title, rowFont, screen_.scaled(widestRow)).draw(context, side, top + padding);
    if (const std::string hint = hintText(item); !hint.empty()) {
        const TextLine line = typesetter_.line(hint, rowFont, screen_.scaled(widestRow));
        line.draw(context, bounds_.width - side - line.size().width, top + padding);
    }
}

bool PopupMenu::isInside(int x, int y) const {
    return x >= bounds_.x && x < bounds_.x + bounds_.width && y >= bounds_.y && y < bounds_.y + bounds_.height;
}

std::optional<std::size_t> PopupMenu::choiceAt(int x, int y) const {
    const auto row = isInside(x, y) ? layout_.rowAt(y - bounds_.y) : std::nullopt;
    return row && rows_[*row].isEnabled ? row : std::nullopt;
}

void PopupMenu::handleEvent(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7F) {
        case XCB_MOTION_NOTIFY: {
            const auto& motion = reinterpret_cast<const xcb_motion_notify_event_t&>(event);
            isArmed_ = isArmed_ || choiceAt(motion.root_x, motion.root_y).has_value();
            pointAt(choiceAt(motion.root_x, motion.root_y));
            break;
        }
        case XCB_BUTTON_PRESS: {
            const auto& press = reinterpret_cast<const xcb_button_press_event_t&>(event);
            if (press.detail > lastRealButton) {
                break;
            }
            if (!isInside(press.root_x, press.root_y)) {
                choose(std::nullopt);
                break;
            }
            isArmed_ = true;
            pointAt(choiceAt(press.root_x, press.root_y));
            break;
        }
        case XCB_BUTTON_RELEASE: {
            const auto& release = reinterpret_cast<const xcb_button_release_event_t&>(event);
            const auto row = choiceAt(release.root_x, release.root_y);
            if (release.detail <= lastRealButton && isArmed_ && row) {
                choose(row);
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

void PopupMenu::pointAt(std::optional<std::size_t> row) {
    if (std::exchange(pointedRow_, row) != row) {
        window_.place(bounds_, screen_.scaled(cornerRadius), [this](cairo_t* context) { draw(context); });
    }
}

void PopupMenu::pressKey(std::uint8_t keycode, std::uint16_t modifiers) {
    const auto ofKey = keysyms(keycode);
    if ((modifiers & XCB_MOD_MASK_CONTROL) != 0) {
        chooseByKeyEquivalent(ofKey);
        return;
    }
    const std::uint32_t key = ofKey.front();
    switch (key) {
        case keysyms::escape:
            choose(std::nullopt);
            break;
        case keysyms::up:
        case keysyms::down:
            pointAt(nextChoice(rows_, pointedRow_, key == keysyms::down));
            break;
        case keysyms::home:
        case keysyms::end:
            pointAt(nextChoice(rows_, std::nullopt, key == keysyms::home));
            break;
        case keysyms::enter:
        case keysyms::keypadEnter:
        case keysyms::space:
            if (pointedRow_) {
                choose(pointedRow_);
            }
            break;
        default:
            break;
    }
}

void PopupMenu::chooseByKeyEquivalent(const KeysymsOfLayouts& ofKey) {
    const auto row = std::find_if(rows_.begin(), rows_.end(), [&](const MenuRow& candidate) {
        return candidate.isEnabled && candidate.keyEquivalent.size() == 1 &&
               std::find(ofKey.begin(), ofKey.end(), static_cast<unsigned char>(candidate.keyEquivalent.front())) !=
                   ofKey.end();
    });
    if (row != rows_.end()) {
        choose(static_cast<std::size_t>(row - rows_.begin()));
    }
}

PopupMenu::KeysymsOfLayouts PopupMenu::keysyms(std::uint8_t keycode) const {
    xcb_connection_t* connection = screen_.connection();
    const auto reply = x11::adopt(
        xcb_get_keyboard_mapping_reply(connection, xcb_get_keyboard_mapping(connection, keycode, 1), nullptr));
    KeysymsOfLayouts result{};
    for (std::size_t layout = 0; reply && layout < result.size(); ++layout) {
        // The core protocol has each layout's keysym with Shift behind the one without.
        if (2 * layout < reply->keysyms_per_keycode) {
            result[layout] = xcb_get_keyboard_mapping_keysyms(reply.get())[2 * layout];
        }
    }
    return result;
}

void PopupMenu::choose(std::optional<std::size_t> row) {
    // The menu ends in the call.
    if (const auto chosen = std::exchange(chosen_, nullptr)) {
        chosen(row);
    }
}

}  // namespace vantrel::overlay
