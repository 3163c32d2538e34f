#pragma once

#include <optional>
#include <span>

#include "Vantrel/Backends/Wayland/Outputs.hpp"
#include "Vantrel/Backends/Wayland/Seat.hpp"
#include "Vantrel/Backends/Wayland/VirtualPointers.hpp"

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

    /// All of them outlive this object.
    OverlayReader(WaylandConnection& connection, const Tools& tools, Seat& seat, VirtualPointers& pointers);
    OverlayReader(const OverlayReader&) = delete;
    OverlayReader& operator=(const OverlayReader&) = delete;

    /// Where the pointer is; none when nothing says so until the deadline, as while a button is held or a menu is open.
    std::optional<LayoutPoint> read(std::span<const Output> outputs, Clock::time_point deadline);

    /// Some compositors do not look again where the pointer is after the last surface has come: then another one is
    /// announced, which never comes.
    void setAnnouncesAnother(bool announces) { announcesAnother_ = announces; }

  private:
    class Surface;

    bool ensurePointer(Clock::time_point deadline);

    WaylandConnection& connection_;
    Tools tools_;
    Seat& seat_;
    VirtualPointers& pointers_;
    WaylandPointer<wl_buffer> transparent_;
    bool announcesAnother_ = false;
};

}  // namespace vantrel::wayland
