#include "helpers/messages/MenuLayout.hpp"

#include <algorithm>

namespace vantrel::overlay {

MenuLayout::MenuLayout(const std::vector<MenuRow>& rows, const MenuMeasures& measures) {
    int y = measures.margin;
    for (const MenuRow& row : rows) {
        tops_.push_back(y);
        y += row.isSeparator ? measures.separator : measures.row;
    }
    tops_.push_back(y);
    height_ = y + measures.margin;
}

int MenuLayout::rowHeight(std::size_t row) const {
    return tops_[row + 1] - tops_[row];
}

std::optional<std::size_t> MenuLayout::rowAt(int y) const {
    if (y < tops_.front() || y >= tops_.back()) {
        return std::nullopt;
    }
    const auto next = std::upper_bound(tops_.begin(), tops_.end(), y);
    return static_cast<std::size_t>(next - tops_.begin()) - 1;
}

std::optional<std::size_t> nextChoice(const std::vector<MenuRow>& rows, std::optional<std::size_t> from,
                                      bool isDownwards) {
    const std::size_t count = rows.size();
    std::size_t row = from.value_or(isDownwards ? count - 1 : 0);
    for (std::size_t step = 0; step < count; ++step) {
        row = isDownwards ? (row + 1) % count : (row + count - 1) % count;
        if (rows[row].isEnabled) {
            return row;
        }
    }
    return std::nullopt;
}

Rect menuBounds(Point point, int width, int height, const Rect& monitor) {
    const int right = monitor.x + monitor.width;
    const int bottom = monitor.y + monitor.height;
    const int x = point.x + width > right ? point.x - width : point.x;
    const int y = point.y + height > bottom ? point.y - height : point.y;
    return {.x = std::max(std::min(x, right - width), monitor.x),
            .y = std::max(std::min(y, bottom - height), monitor.y),
            .width = width,
            .height = height};
}

}  // namespace vantrel::overlay
