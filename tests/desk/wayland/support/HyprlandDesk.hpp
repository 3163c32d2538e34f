#pragma once

#include <memory>
#include <string>

#include "tests/desk/wayland/support/HyprlandProcess.hpp"
#include "tests/desk/wayland/support/WaylandDesk.hpp"

namespace vantrel::desk {

/// A private session of Hyprland.
class HyprlandDesk final : public WaylandDesk {
  public:
    static HyprlandOptions twoDisplays(const std::string& configuration = {}) {
        return {.outputs = twoOutputs(), .configuration = configuration};
    }

    explicit HyprlandDesk(const HyprlandOptions& options = twoDisplays(), const std::string& keyboardLayouts = "us",
                          const std::string& keyboardOptions = {})
        : WaylandDesk(std::make_unique<HyprlandProcess>(options), keyboardLayouts, keyboardOptions) {
        environment().set("HYPRLAND_INSTANCE_SIGNATURE", hyprland().signature());
    }

    HyprlandProcess& hyprland() { return static_cast<HyprlandProcess&>(compositor()); }
};

}  // namespace vantrel::desk
