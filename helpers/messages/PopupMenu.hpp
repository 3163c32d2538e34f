#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "helpers/messages/InputGrab.hpp"
#include "helpers/messages/MenuLayout.hpp"
#include "helpers/messages/PopupWindow.hpp"
#include "helpers/messages/Screen.hpp"
#include "helpers/messages/Typesetter.hpp"

namespace vantrel::overlay {

/// A menu that is open at the pointer, until a row is chosen or the menu is left by a click elsewhere or Escape. It
/// shows itself once it has the keyboard and the pointer, so that no key of a person who sees it is lost.
class PopupMenu {
  public:
    using Clock = std::chrono::steady_clock;

    /// `chosen` gets the row, or none when the menu was left without a choice. It is called once, from an event; the
    /// menu may end in it.
    PopupMenu(const Screen& screen, const Typesetter& typesetter, std::vector<MenuRow> rows,
              std::function<void(std::optional<std::size_t>)> chosen);

    /// Shows other rows in the same place.
    void setRows(std::vector<MenuRow> rows);

    /// What the server reports for the menu.
    void handleEvent(const xcb_generic_event_t& event);

    /// When to try again to take the input; none when it is taken.
    [[nodiscard]] std::optional<Clock::time_point> nextAttempt() const { return nextAttempt_; }
    void attempt();

  private:
    /// What a key gives by itself in the first two layouts: where the first has no Latin letters, the second has them.
    using KeysymsOfLayouts = std::array<std::uint32_t, 2>;

    void place();
    void draw(cairo_t* context) const;
    void drawRow(cairo_t* context, std::size_t row) const;
    void pointAt(std::optional<std::size_t> row);
    void pressKey(std::uint8_t keycode, std::uint16_t modifiers);
    void chooseByKeyEquivalent(const KeysymsOfLayouts& ofKey);
    void choose(std::optional<std::size_t> row);
    [[nodiscard]] bool isInside(int x, int y) const;
    [[nodiscard]] std::optional<std::size_t> choiceAt(int x, int y) const;
    [[nodiscard]] KeysymsOfLayouts keysyms(std::uint8_t keycode) const;

    const Screen& screen_;
    const Typesetter& typesetter_;
    std::vector<MenuRow> rows_;
    std::function<void(std::optional<std::size_t>)> chosen_;
    RootPoint origin_;
    MenuMeasures measures_;
    MenuLayout layout_;
    PopupWindow window_;
    InputGrab grab_;
    RootRect bounds_;
    std::optional<std::size_t> pointedRow_;
    bool isArmed_ = false;  ///< a release counts: not the one of the click that opened the menu
    Clock::time_point lastAttempt_;
    std::optional<Clock::time_point> nextAttempt_;
};

}  // namespace vantrel::overlay
