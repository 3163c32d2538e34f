#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "helpers/messages/MenuLayout.hpp"
#include "helpers/messages/Typesetter.hpp"

namespace vantrel::overlay {

/// An open menu: how it looks, which row is pointed at, and what keys and clicks do. Who shows it says where it stands
/// and tells of the person's input.
class MenuView {
  public:
    struct Events {
        /// Another row is pointed at, so the menu looks different.
        std::function<void()> changed;
        /// Gets the row, or none when the menu was left without a choice. Called once; the menu may end in it.
        std::function<void(std::optional<std::size_t> row)> ended;
    };

    /// The typesetter outlives this object.
    MenuView(const Typesetter& typesetter, std::vector<MenuRow> rows, Events events);

    /// Shows other rows; the menu is to be placed anew.
    void setRows(std::vector<MenuRow> rows);

    /// Gives the menu its place: at the point if there is room on the display, and wholly on it if it can be.
    void placeAt(Point point, const Rect& display);
    /// Gives the menu its place in the middle of the display.
    void placeInTheMiddleOf(const Rect& display);
    [[nodiscard]] const Rect& bounds() const { return bounds_; }
    [[nodiscard]] int cornerRadius() const;

    /// Draws the menu with its top-left corner at the context's origin.
    void draw(cairo_t* context, bool isTranslucent) const;

    // What the person does. Places are in the coordinates in which the menu was placed; none is somewhere else.
    void pointerMoved(std::optional<Point> place);
    void buttonPressed(std::optional<Point> place);
    void buttonReleased(std::optional<Point> place);
    /// `keysyms` are what the key gives without modifiers, in each layout: where the first has no Latin letters,
    /// another may have them.
    void keyPressed(std::span<const std::uint32_t> keysyms, bool isControlHeld);
    /// Ends without a choice.
    void leave() { end(std::nullopt); }

  private:
    [[nodiscard]] Size size() const;
    void drawRow(cairo_t* context, std::size_t row) const;
    void pointAt(std::optional<std::size_t> row);
    void chooseByKeyEquivalent(std::span<const std::uint32_t> keysyms);
    void end(std::optional<std::size_t> row);
    [[nodiscard]] bool isInside(std::optional<Point> place) const;
    [[nodiscard]] std::optional<std::size_t> choiceAt(std::optional<Point> place) const;

    const Typesetter& typesetter_;
    std::vector<MenuRow> rows_;
    Events events_;
    MenuMeasures measures_;
    MenuLayout layout_;
    Rect bounds_;
    std::optional<std::size_t> pointedRow_;
    bool isArmed_ = false;  ///< a release counts: not the one of the click that opened the menu
};

}  // namespace vantrel::overlay
