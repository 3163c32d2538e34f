#pragma once

#include "Vantrel/Backends/Wayland/WaylandScreen.hpp"
#include "Vantrel/Platform/DisplayServices.hpp"

namespace vantrel::wayland {

/// The outputs of a compositor.
class WaylandDisplays final : public DisplayServices {
  public:
    explicit WaylandDisplays(WaylandScreen& screen) : screen_(screen) {}

    CGError CGGetActiveDisplayList(std::span<CGDirectDisplayID> activeDisplays, std::uint32_t& displayCount) override;
    CGRect CGDisplayBounds(CGDirectDisplayID display) override;

  private:
    WaylandScreen& screen_;
};

}  // namespace vantrel::wayland
