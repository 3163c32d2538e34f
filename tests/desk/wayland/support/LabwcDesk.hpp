#pragma once

#include <string>

#include "tests/desk/wayland/support/LabwcProcess.hpp"
#include "tests/desk/wayland/support/WaylandDesk.hpp"

namespace vantrel::desk {

/// A private session of labwc.
class LabwcDesk final : public WaylandDesk {
  public:
    explicit LabwcDesk(const LabwcOptions& options) : WaylandDesk(std::make_unique<LabwcProcess>(options)) {}

    LabwcProcess& labwc() { return static_cast<LabwcProcess&>(compositor()); }
};

}  // namespace vantrel::desk
