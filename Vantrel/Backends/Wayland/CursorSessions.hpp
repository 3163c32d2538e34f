#pragma once

#include <optional>
#include <span>

#include "Vantrel/Backends/Wayland/Outputs.hpp"
#include "Vantrel/Backends/Wayland/Seat.hpp"

namespace vantrel::wayland {

/// Reads the pointer as a program that records the screen does (ext-image-copy-capture-v1). That is told also while a
/// button is held or a menu is open, but in whole pixels and of the last picture only: a warp shows some time later.
class CursorSessions {
  public:
    /// Both outlive this object.
    CursorSessions(WaylandConnection& connection, const Registry& registry, const Seat& seat);

    /// Where the pointer is shown; none when nothing says so until the deadline, as while it is hidden.
    std::optional<LayoutPoint> read(std::span<const Output> outputs, Clock::time_point deadline);

  private:
    WaylandConnection& connection_;
    const Seat& seat_;
    WaylandPointer<ext_output_image_capture_source_manager_v1> sources_;  ///< null where it is not offered
    WaylandPointer<ext_image_copy_capture_manager_v1> sessions_;          ///< the same
};

}  // namespace vantrel::wayland
