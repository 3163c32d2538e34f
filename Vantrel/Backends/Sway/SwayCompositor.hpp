#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "Vantrel/Backends/Sway/SwayHotKeyBinder.hpp"
#include "Vantrel/Backends/Sway/SwayIpc.hpp"
#include "Vantrel/Backends/Wayland/Compositor.hpp"

namespace vantrel::sway {

/// Sway, over its socket.
class SwayCompositor final : public wayland::Compositor {
  public:
    /// Finds the socket of the process at the other end of the Wayland connection: that which SWAYSOCK names if it is
    /// that process's, else where sway puts it. SWAYSOCK may be missing (started by the bus), of a session that has
    /// ended, or of the one that this one runs in. Null when the compositor is no sway.
    static std::unique_ptr<wayland::Compositor> find(const wayland::CompositorAddress& address);

    backend::HotKeyBinder* hotKeys() override { return &hotKeys_; }
    bool warpPointer(const wayland::Warp& warp) override;
    void settleWarps(Clock::time_point deadline) override { commands_.settle(deadline); }
    bool lookUnderPointer() override;

  private:
    SwayCompositor(SwayIpc commands, const std::filesystem::path& socketFile,
                   const wayland::CompositorAddress& address);

    SwayIpc commands_;
    std::string seat_;
    SwayHotKeyBinder hotKeys_;
};

}  // namespace vantrel::sway
