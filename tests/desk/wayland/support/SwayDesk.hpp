#pragma once

#include <string>

#include "tests/desk/wayland/support/SwayControl.hpp"
#include "tests/desk/wayland/support/SwayProcess.hpp"
#include "tests/desk/wayland/support/WaylandDesk.hpp"

namespace vantrel::desk {

/// A private session of sway.
class SwayDesk final : public WaylandDesk {
  public:
    static SwayOptions twoDisplays(const std::string& configuration = {});

    explicit SwayDesk(const SwayOptions& options = twoDisplays(), const std::string& keyboardLayouts = "us",
                      const std::string& keyboardOptions = {});

    SwayProcess& sway() { return static_cast<SwayProcess&>(compositor()); }
    SwayControl& control() { return control_; }

  private:
    SwayControl control_;
};

}  // namespace vantrel::desk
