#pragma once

#include <functional>
#include <optional>
#include <span>

#include "Vantrel/Backends/Wayland/Outputs.hpp"
#include "Vantrel/Backends/Wayland/Seat.hpp"
#include "Vantrel/Backends/Wayland/VirtualPointers.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::wayland {

/// Reads the pointer, which Wayland tells only to who owns the surface beneath it: by surfaces of our own that lie over
/// all outputs, transparent, for a fraction of a millisecond. The program beneath sees the pointer leave and enter.
class OverlayReader {
  public:
    struct Tools {
        wl_compositor& compositor;
        wl_shm& shm;
        wp_viewporter& viewporter;
        zwlr_layer_shell_v1& layerShell;
    };

    /// Has the compositor look anew what lies under the pointer. Not all do by themselves when the last of several
    /// surfaces comes, or goes.
    using LookAgain = std::function<void()>;

    /// All of them outlive this object.
    OverlayReader(WaylandConnection& connection, const Tools& tools, Seat& seat, VirtualPointers& pointers,
                  LookAgain lookAgain);
    OverlayReader(const OverlayReader&) = delete;
    OverlayReader& operator=(const OverlayReader&) = delete;

    /// Where the pointer is; none when nothing says so until the deadline, as while a button is held or a menu is open.
    std::optional<LayoutPoint> read(std::span<const Output> outputs, Clock::time_point deadline);

  private:
    class Surface;

    bool ensurePointer(Clock::time_point deadline);
    /// Has the compositor look under the pointer once the surfaces have gone; again after the pause, and ever longer
    /// ones, while it does not answer.
    void lookAfterwards(std::chrono::milliseconds patience);

    WaylandConnection& connection_;
    Tools tools_;
    Seat& seat_;
    VirtualPointers& pointers_;
    LookAgain lookAgain_;
    WaylandPointer<wl_buffer> transparent_;
    LoopSource afterwards_;
};

}  // namespace vantrel::wayland
