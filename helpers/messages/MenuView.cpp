#include "helpers/messages/MenuView.hpp"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <string>
#include <utility>

#include "helpers/messages/Palette.hpp"

namespace vantrel::overlay {

namespace {

constexpr Font rowFont{.points = 10, .isSemibold = false};
constexpr double rowPadding = 4;  // above and below the text of a row
constexpr double sidePadding = 16;
constexpr double hintGap = 32;
constexpr double cornerRadiusAtUsualResolution = 6;
constexpr int widestRow = 560;

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

MenuView::MenuView(const Typesetter& typesetter, std::vector<MenuRow> rows, Events events)
    : typesetter_(typesetter),
      rows_(std::move(rows)),
      events_(std::move(events)),
      measures_{.row = typesetter.line("Vantrel", rowFont, widestRow).size().height + 2 * typesetter.scaled(rowPadding),
                .separator = typesetter.scaled(9),
                .margin = typesetter.scaled(5)},
      layout_(rows_, measures_) {}

void MenuView::setRows(std::vector<MenuRow> rows) {
    rows_ = std::move(rows);
    layout_ = MenuLayout(rows_, measures_);
    if (pointedRow_ && (*pointedRow_ >= rows_.size() || !rows_[*pointedRow_].isEnabled)) {
        pointedRow_.reset();
    }
}

Size MenuView::size() const {
    const int widest = typesetter_.scaled(widestRow);
    int titles = 0;
    int hints = 0;
    for (const MenuRow& row : rows_) {
        titles = std::max(titles, typesetter_.line(row.title, rowFont, widest).size().width);
        if (const std::string hint = hintText(row); !hint.empty()) {
            hints = std::max(hints, typesetter_.line(hint, rowFont, widest).size().width + typesetter_.scaled(hintGap));
        }
    }
    return {.width = titles + hints + 2 * typesetter_.scaled(sidePadding), .height = layout_.height()};
}

void MenuView::placeAt(Point point, const Rect& display) {
    const Size wanted = size();
    bounds_ = menuBounds(point, wanted.width, wanted.height, display);
}

void MenuView::placeInTheMiddleOf(const Rect& display) {
    const Size wanted = size();
    placeAt(
        {.x = display.x + (display.width - wanted.width) / 2, .y = display.y + (display.height - wanted.height) / 2},
        display);
}

int MenuView::cornerRadius() const {
    return typesetter_.scaled(cornerRadiusAtUsualResolution);
}

void MenuView::draw(cairo_t* context, bool isTranslucent) const {
    drawGround(context, bounds_.width, bounds_.height, cornerRadius(), isTranslucent);
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        drawRow(context, row);
    }
}

void MenuView::drawRow(cairo_t* context, std::size_t row) const {
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
    const int side = typesetter_.scaled(sidePadding);
    const int padding = typesetter_.scaled(rowPadding);
    const int widest = typesetter_.scaled(widestRow);
    typesetter_.line(item.title, rowFont, widest).draw(context, side, top + padding);
    if (const std::string hint = hintText(item); !hint.empty()) {
        const TextLine line = typesetter_.line(hint, rowFont, widest);
        line.draw(context, bounds_.width - side - line.size().width, top + padding);
    }
}

bool MenuView::isInside(std::optional<Point> place) const {
    return place && place->x >= bounds_.x && place->x < bounds_.x + bounds_.width && place->y >= bounds_.y &&
           place->y < bounds_.y + bounds_.height;
}

std::optional<std::size_t> MenuView::choiceAt(std::optional<Point> place) const {
    const auto row = isInside(place) ? layout_.rowAt(place->y - bounds_.y) : std::nullopt;
    return row && rows_[*row].isEnabled ? row : std::nullopt;
}

void MenuView::pointerMoved(std::optional<Point> place) {
    const auto row = choiceAt(place);
    isArmed_ = isArmed_ || row.has_value();
    pointAt(row);
}

void MenuView::buttonPressed(std::optional<Point> place) {
    if (!isInside(place)) {
        leave();
        return;
    }
    isArmed_ = true;
    pointAt(choiceAt(place));
}

void MenuView::buttonReleased(std::optional<Point> place) {
    if (const auto row = choiceAt(place); isArmed_ && row) {
        end(row);
    }
}

void MenuView::pointAt(std::optional<std::size_t> row) {
    if (std::exchange(pointedRow_, row) != row) {
        events_.changed();
    }
}

void MenuView::keyPressed(std::span<const std::uint32_t> ofKey, bool isControlHeld) {
    if (isControlHeld) {
        chooseByKeyEquivalent(ofKey);
        return;
    }
    const std::uint32_t key = ofKey.empty() ? 0 : ofKey.front();
    switch (key) {
        case XKB_KEY_Escape:
            leave();
            break;
        case XKB_KEY_Up:
        case XKB_KEY_Down:
            pointAt(nextChoice(rows_, pointedRow_, key == XKB_KEY_Down));
            break;
        case XKB_KEY_Home:
        case XKB_KEY_End:
            pointAt(nextChoice(rows_, std::nullopt, key == XKB_KEY_Home));
            break;
        case XKB_KEY_Return:
        case XKB_KEY_KP_Enter:
        case XKB_KEY_space:
            if (pointedRow_) {
                end(pointedRow_);
            }
            break;
        default:
            break;
    }
}

void MenuView::chooseByKeyEquivalent(std::span<const std::uint32_t> ofKey) {
    const auto row = std::find_if(rows_.begin(), rows_.end(), [&](const MenuRow& candidate) {
        return candidate.isEnabled && candidate.keyEquivalent.size() == 1 &&
               std::find(ofKey.begin(), ofKey.end(), static_cast<unsigned char>(candidate.keyEquivalent.front())) !=
                   ofKey.end();
    });
    if (row != rows_.end()) {
        end(static_cast<std::size_t>(row - rows_.begin()));
    }
}

void MenuView::end(std::optional<std::size_t> row) {
    // The menu may end in the call.
    if (const auto ended = std::exchange(events_.ended, nullptr)) {
        ended(row);
    }
}

}  // namespace vantrel::overlay
