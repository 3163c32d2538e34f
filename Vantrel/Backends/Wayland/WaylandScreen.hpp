#pragma once

#include <optional>

#include "Vantrel/Backends/Common/MonitorLayout.hpp"
#include "Vantrel/Backends/Wayland/Compositor.hpp"
#include "Vantrel/Backends/Wayland/CursorSessions.hpp"
#include "Vantrel/Backends/Wayland/OverlayReader.hpp"

namespace vantrel::wayland {

/// The layout and the pointer as the compositor has them, in the global display space: the one place that knows both
/// that and the compositor's own coordinates. The layout is a copy that the compositor's events keep fresh; the pointer
/// is read once in a turn of the loop.
class WaylandScreen {
  public:
    /// All of them outlive this object; there may be no `compositor`.
    WaylandScreen(WaylandConnection& connection, const Outputs& outputs, OverlayReader& reader,
                  CursorSessions& sessions, VirtualPointers& pointers, Compositor* compositor);
    WaylandScreen(const WaylandScreen&) = delete;
    WaylandScreen& operator=(const WaylandScreen&) = delete;

    /// Takes the changes that the compositor has told up to now.
    void refreshLayout();

    /// Whether the compositor told of changes that the layout does not have yet.
    [[nodiscard]] bool isLayoutStale() const { return generation_ != tracked_.generation(); }

    [[nodiscard]] const backend::DisplayLayout& layout() const { return layout_; }

    /// Where the pointer is; none when it cannot be read within 25 ms.
    std::optional<CGPoint> pointer();

    /// Sends the pointer to a point of the global display space; outside of all displays, to the nearest on one.
    void warpPointer(CGPoint position);

    /// The loop may sleep from now on: what is known of the pointer no longer counts.
    void beginTurn() { freshPointer_.reset(); }

  private:
    WaylandConnection& connection_;
    const Outputs& tracked_;
    OverlayReader& reader_;
    CursorSessions& sessions_;
    VirtualPointers& pointers_;
    Compositor* compositor_;
    std::optional<unsigned> generation_;  ///< of the outputs that the layout is made of
    std::vector<Output> outputs_;
    LayoutPoint corner_;  ///< of the rectangle around all outputs
    backend::DisplayLayout layout_;
    std::optional<CGPoint> freshPointer_;
    bool isWarpUnderway_ = false;  ///< by a virtual pointer, since the last read
    Clock::time_point warpTime_;   ///< of the last one
};

}  // namespace vantrel::wayland
