#pragma once

#include <span>

#include "Vantrel/Backends/Wayland/Outputs.hpp"
#include "Vantrel/Backends/Wayland/Seat.hpp"

namespace vantrel::wayland {

/// Moves the pointer by pointer devices of our own that belong to the output they move it to: so none is pulled away by
/// what a person maps devices to.
class VirtualPointers {
  public:
    /// The manager and the seat outlive this object. Without a manager, where the compositor has a door of its own for
    /// this, nothing is moved.
    VirtualPointers(zwlr_virtual_pointer_manager_v1* manager, const Seat& seat) : manager_(manager), seat_(seat) {}

    /// Sends the pointer to the point of the layout, or to the nearest on an output. There is one output at least.
    void warp(std::span<const Output> outputs, LayoutPoint point);

    /// Gives a seat that has no pointer one.
    void provideDevice();

    /// Moves by nothing, upon which the compositor looks what lies under the pointer.
    void stir();

  private:
    zwlr_virtual_pointer_manager_v1* manager_;
    const Seat& seat_;
    WaylandPointer<zwlr_virtual_pointer_v1> latest_;   ///< made the last warp
    WaylandPointer<zwlr_virtual_pointer_v1> unbound_;  ///< belongs to no output
};

}  // namespace vantrel::wayland
