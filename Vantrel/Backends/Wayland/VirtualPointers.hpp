#pragma once

#include <map>
#include <span>

#include "Vantrel/Backends/Wayland/Outputs.hpp"
#include "Vantrel/Backends/Wayland/Seat.hpp"

namespace vantrel::wayland {

/// Moves the pointer by pointer devices of our own, each of which belongs to an output: so none is pulled away by what
/// a person maps devices to.
class VirtualPointers {
  public:
    /// The manager and the seat outlive this object.
    VirtualPointers(zwlr_virtual_pointer_manager_v1& manager, const Seat& seat) : manager_(manager), seat_(seat) {}

    /// Sends the pointer to the point of the layout, or to the nearest on an output. There is one output at least.
    void warp(std::span<const Output> outputs, LayoutPoint point);

    /// Gives a seat that has no pointer one.
    void provideDevice();

    /// Moves by nothing, upon which the compositor looks what lies under the pointer.
    void stir();

    /// Makes the devices anew when they are next needed, because the compositor has forgotten their outputs.
    void renew() { ofOutputs_.clear(); }

  private:
    zwlr_virtual_pointer_manager_v1& manager_;
    const Seat& seat_;
    std::map<std::uint32_t, WaylandPointer<zwlr_virtual_pointer_v1>> ofOutputs_;  ///< by the output's global
    WaylandPointer<zwlr_virtual_pointer_v1> unbound_;                             ///< belongs to no output
};

}  // namespace vantrel::wayland
