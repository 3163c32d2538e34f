#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "Vantrel/Channel/ScreenMessages.hpp"
#include "helpers/messages/Rect.hpp"

namespace vantrel::overlay {

/// The heights (pixels) that a menu is made of.
struct MenuMeasures {
    int row = 24;
    int separator = 9;
    int margin = 5;  ///< above the first and below the last row
};

/// Where the rows of a menu stand, counted from the menu's top.
class MenuLayout {
  public:
    MenuLayout(const std::vector<MenuRow>& rows, const MenuMeasures& measures);

    [[nodiscard]] int height() const { return height_; }
    [[nodiscard]] int top(std::size_t row) const { return tops_[row]; }
    [[nodiscard]] int rowHeight(std::size_t row) const;

    /// The row at that height, separators included; none in the margins.
    [[nodiscard]] std::optional<std::size_t> rowAt(int y) const;

  private:
    std::vector<int> tops_;  ///< one more than there are rows
    int height_;
};

/// The next row that can be chosen, downwards or upwards, past the end to the other end. From no row: the first or the
/// last of them. None when no row can be chosen.
std::optional<std::size_t> nextChoice(const std::vector<MenuRow>& rows, std::optional<std::size_t> from,
                                      bool isDownwards);

/// Where a menu of that size stands so that it is wholly on the monitor, if it can: its top-left corner at the point,
/// else turned to the other side of it.
Rect menuBounds(Point point, int width, int height, const Rect& monitor);

}  // namespace vantrel::overlay
