#pragma once

#include "Vantrel/Backends/X11/ScreenState.hpp"
#include "Vantrel/Platform/DisplayServices.hpp"

namespace vantrel::x11 {

/// The monitors of an X screen (RandR 1.5).
class X11Displays final : public DisplayServices {
  public:
    explicit X11Displays(ScreenState& screen) : screen_(screen) {}

    CGError CGGetActiveDisplayList(std::span<CGDirectDisplayID> activeDisplays, std::uint32_t& displayCount) override;
    CGRect CGDisplayBounds(CGDirectDisplayID display) override;

  private:
    ScreenState& screen_;
};

}  // namespace vantrel::x11
