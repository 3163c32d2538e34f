#pragma once

#include <filesystem>
#include <memory>
#include <optional>

#include "Vantrel/Backends/Hyprland/HyprlandHotKeyBinder.hpp"
#include "Vantrel/Backends/Hyprland/HyprlandSocket.hpp"
#include "Vantrel/Backends/Wayland/Compositor.hpp"

namespace vantrel::hyprland {

/// Hyprland, over its sockets. They tell the pointer's position at any time, also while a button is held, in whole
/// points.
class HyprlandCompositor final : public wayland::Compositor {
  public:
    /// Finds the sockets of the process at the other end of the Wayland connection: those of the instance that
    /// HYPRLAND_INSTANCE_SIGNATURE names if it is that process's, else any other's of this runtime directory. The
    /// variable may be missing (started by the bus), of a session that has ended, or of the one that this one runs in.
    /// Null when the compositor is no Hyprland.
    static std::unique_ptr<wayland::Compositor> find(const wayland::CompositorAddress& address);

    backend::HotKeyBinder* hotKeys() override;
    std::optional<wayland::LayoutPoint> readPointer(Clock::time_point deadline) override;
    bool warpPointer(const wayland::Warp& warp) override;

  private:
    HyprlandCompositor(const std::filesystem::path& instance, const wayland::CompositorAddress& address);

    std::filesystem::path instance_;  ///< the directory with its sockets
    wayland::CompositorAddress address_;
    HyprlandSocket commands_;
    Language language_;
    std::optional<HyprlandHotKeyBinder> hotKeys_;
};

}  // namespace vantrel::hyprland
