#pragma once

#include "Vantrel/Backends/X11/ScreenState.hpp"
#include "Vantrel/Platform/PointerServices.hpp"

namespace vantrel::x11 {

/// The core pointer of an X screen.
class X11Pointer final : public PointerReader, public PointerWarper {
  public:
    explicit X11Pointer(ScreenState& screen) : screen_(screen) {}

    std::optional<CGEvent> CGEventCreate() override;
    CGPoint CGEventGetLocation(const CGEvent& event) override { return event.location; }
    void CGWarpMouseCursorPosition(CGPoint position) override { screen_.warpPointer(position); }

    /// X never parts the mouse from the pointer.
    void CGAssociateMouseAndMouseCursorPosition(bool /*connected*/) override {}

  private:
    ScreenState& screen_;
};

}  // namespace vantrel::x11
