#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "helpers/messages/MenuView.hpp"
#include "helpers/messages/Wayland/ArrowCursor.hpp"
#include "helpers/messages/Wayland/LayerSurface.hpp"
#include "helpers/messages/Wayland/Seat.hpp"

namespace vantrel::overlay {

/// A menu that is open at the pointer, until a row is chosen or the menu is left by a click elsewhere or Escape.
///
/// A transparent surface lies over each display and has keyboard and pointer to itself. The one that the pointer comes
/// to tells where it is, and there the menu is shown. Where it comes to none (a button is held, the seat has no
/// pointer) the menu is shown in the middle of the first display after a moment, so that it can always be reached.
class LayerMenu {
  public:
    using Clock = std::chrono::steady_clock;

    /// `ended` gets the row, or none when the menu was left without a choice. It is called once, from an event or from
    /// doDueWork(); the menu may end in it. Compositor and typesetter outlive this object.
    LayerMenu(const Compositor& compositor, const Typesetter& typesetter, std::vector<MenuRow> rows,
              std::function<void(std::optional<std::size_t>)> ended);
    ~LayerMenu();
    LayerMenu(const LayerMenu&) = delete;
    LayerMenu& operator=(const LayerMenu&) = delete;

    /// Shows other rows in the same place.
    void setRows(std::vector<MenuRow> rows);

    /// Lets go of displays that have gone; the menu goes with its own.
    void followOutputs();

    /// When there is something to do without an event; none while there is not.
    [[nodiscard]] std::optional<Clock::time_point> nextWork() const;
    void doDueWork();

  private:
    struct Cover;
    struct Popup;

    void covered(const Cover& latest);
    void look(std::uint32_t latest);
    void openOn(Cover& cover, std::optional<Point> point);
    void place();
    void draw();
    void pointed(wl_surface* surface, Point onSurface);
    [[nodiscard]] Cover* coverOf(wl_surface* surface) const;
    [[nodiscard]] double scaleOf(const Cover& cover) const;

    const Compositor& compositor_;
    MenuView view_;
    ArrowCursor cursor_;
    Seat seat_;
    std::vector<std::unique_ptr<Cover>> covers_;
    std::unique_ptr<Popup> popup_;  ///< null until it is known where the menu is shown
    std::optional<Point> pointer_;  ///< where the menu was placed; none when it is somewhere else
    std::optional<Clock::time_point> lastLook_;
    std::unique_ptr<Milestone> milestone_;
    std::unique_ptr<LayerSurface> last_;
};

}  // namespace vantrel::overlay
