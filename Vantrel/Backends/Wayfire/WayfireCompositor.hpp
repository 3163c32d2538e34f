#pragma once

#include <filesystem>
#include <memory>
#include <optional>

#include "Vantrel/Backends/Wayfire/WayfireHotKeyBinder.hpp"
#include "Vantrel/Backends/Wayfire/WayfireSocket.hpp"
#include "Vantrel/Backends/Wayland/Compositor.hpp"

namespace vantrel::wayfire {

/// Wayfire, over the socket of its plugins, where the person has them: `ipc`, with `ipc-rules` for the pointer's
/// position, also while a button is held, and with `command` for hot keys. It is moved by a virtual pointer.
class WayfireCompositor final : public wayland::Compositor {
  public:
    /// Finds the socket of the process at the other end of the Wayland connection: that which WAYFIRE_SOCKET names if
    /// it is that process's, else any other's of this runtime directory. Null when the compositor is no wayfire, or has
    /// no such plugin.
    static std::unique_ptr<wayland::Compositor> find(const wayland::CompositorAddress& address);

    backend::HotKeyBinder* hotKeys() override;
    std::optional<wayland::LayoutPoint> readPointer(Clock::time_point deadline) override;

  private:
    WayfireCompositor(std::unique_ptr<WayfireSocket> socket, const wayland::CompositorAddress& address);

    std::unique_ptr<WayfireSocket> socket_;
    wayland::CompositorAddress address_;
    std::optional<WayfireHotKeyBinder> hotKeys_;
};

}  // namespace vantrel::wayfire
