#pragma once

#include "Vantrel/Backends/Wayland/WaylandScreen.hpp"
#include "Vantrel/Platform/PointerServices.hpp"

namespace vantrel::wayland {

/// The pointer of a compositor's seat.
class WaylandCursor final : public PointerReader, public PointerWarper {
  public:
    explicit WaylandCursor(WaylandScreen& screen) : screen_(screen) {}

    std::optional<CGEvent> CGEventCreate() override {
        const auto location = screen_.pointer();
        return location ? std::optional(CGEvent{*location}) : std::nullopt;
    }
    CGPoint CGEventGetLocation(const CGEvent& event) override { return event.location; }
    void CGWarpMouseCursorPosition(CGPoint position) override { screen_.warpPointer(position); }

    /// Wayland never parts the mouse from the pointer.
    void CGAssociateMouseAndMouseCursorPosition(bool /*connected*/) override {}

  private:
    WaylandScreen& screen_;
};

}  // namespace vantrel::wayland
