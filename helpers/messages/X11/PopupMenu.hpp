#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "helpers/messages/MenuView.hpp"
#include "helpers/messages/X11/InputGrab.hpp"
#include "helpers/messages/X11/PopupWindow.hpp"
#include "helpers/messages/X11/Screen.hpp"

namespace vantrel::overlay {

/// A menu that is open at the pointer, until a row is chosen or the menu is left by a click elsewhere or Escape. It
/// shows itself once it has the keyboard and the pointer, so that no key of a person who sees it is lost.
class PopupMenu {
  public:
    using Clock = std::chrono::steady_clock;

    /// `ended` gets the row, or none when the menu was left without a choice. It is called once, from an event; the
    /// menu may end in it.
    PopupMenu(const Screen& screen, const Typesetter& typesetter, std::vector<MenuRow> rows,
              std::function<void(std::optional<std::size_t>)> ended);

    /// Shows other rows in the same place.
    void setRows(std::vector<MenuRow> rows);

    /// What the server reports for the menu.
    void handleEvent(const xcb_generic_event_t& event);

    /// When to try again to take the input; none when it is taken.
    [[nodiscard]] std::optional<Clock::time_point> nextAttempt() const { return nextAttempt_; }
    void attempt();

  private:
    void place();
    void draw();
    void pressKey(std::uint8_t keycode, std::uint16_t modifiers);

    const Screen& screen_;
    MenuView view_;
    Point origin_;
    PopupWindow window_;
    InputGrab grab_;
    Clock::time_point lastAttempt_;
    std::optional<Clock::time_point> nextAttempt_;
};

}  // namespace vantrel::overlay
