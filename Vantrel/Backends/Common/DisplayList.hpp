#pragma once

#include <functional>
#include <utility>

#include "Vantrel/Backends/Common/MonitorLayout.hpp"
#include "Vantrel/Platform/DisplayServices.hpp"

namespace vantrel::backend {

/// The displays of a windowing system's layout.
class DisplayList final : public DisplayServices {
  public:
    /// `refresh` makes the layout current, which outlives this object.
    DisplayList(const DisplayLayout& layout, std::function<void()> refresh)
        : layout_(layout), refresh_(std::move(refresh)) {}

    CGError CGGetActiveDisplayList(std::span<CGDirectDisplayID> activeDisplays, std::uint32_t& displayCount) override;
    CGRect CGDisplayBounds(CGDirectDisplayID display) override;

  private:
    const DisplayLayout& layout_;
    std::function<void()> refresh_;
};

}  // namespace vantrel::backend
