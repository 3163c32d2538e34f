#pragma once

#include <optional>

#include "Vantrel/Backends/Common/MonitorLayout.hpp"
#include "Vantrel/Backends/X11/OutputNames.hpp"
#include "Vantrel/Backends/X11/X11Connection.hpp"
#include "VantrelCore/PlatformGeometry.hpp"

namespace vantrel::x11 {

/// The layout and the pointer as the server has them. The layout is a copy that the server's events keep fresh: events
/// come in order, so a change that precedes a key press is known before the press is. A key press tells where the
/// pointer was, so that a jump by a hot key asks nothing; otherwise the pointer is asked for once in a turn of the
/// loop. Both together cost one blocking round trip at most, whether or not the layout changed, unless it changes at
/// that very moment.
class ScreenState final : public X11EventListener {
  public:
    explicit ScreenState(X11Connection& connection);

    /// Makes layout and pointer current, if they are not yet in this turn of the loop.
    void synchronize();

    [[nodiscard]] const backend::DisplayLayout& layout() const { return layout_; }

    /// The pointer in the global display space; none when it is on another screen or the server is gone.
    [[nodiscard]] std::optional<CGPoint> pointer() const;

    /// Moves the pointer to a point of the global display space. A fraction is rounded down.
    void warpPointer(CGPoint position);

    /// Takes the pointer from a key press, for what the press sets off before the loop looks for new events. Does
    /// nothing when the press happened before this client's last warp took effect.
    void notePress(const xcb_key_press_event_t& press);

    /// The loop looks for new events, and may sleep until they come: what is known of the pointer no longer counts.
    void beginTurn() { pointerIsFresh_ = false; }

    /// Whether the layout changed since it was last read.
    [[nodiscard]] bool layoutIsStale() const { return layoutIsStale_; }

    /// Whether the outputs are windows of a Wayland compositor: such a server accepts warps and moves nothing.
    [[nodiscard]] bool isInsideWayland() const { return isInsideWayland_; }

    void eventArrived(const xcb_generic_event_t& event) override;
    void handleEvent(const xcb_generic_event_t& /*event*/) override {}

  private:
    struct RootPosition {
        std::int32_t x;
        std::int32_t y;
    };

    void readOnce();
    void takeMonitors(xcb_randr_get_monitors_cookie_t cookie);

    X11Connection& connection_;
    OutputNames names_;
    backend::DisplayLayout layout_;
    bool layoutIsStale_ = true;
    bool isInsideWayland_ = false;
    bool pointerIsFresh_ = false;
    std::optional<RootPosition> pointer_;
    std::uint32_t lastWarp_ = 0;  ///< the sequence number of the request
};

}  // namespace vantrel::x11
