#pragma once

#include <memory>
#include <optional>

#include "Vantrel/Backends/Plasma/FakeInput.hpp"
#include "Vantrel/Backends/Plasma/PlasmaHotKeyBinder.hpp"
#include "Vantrel/Backends/Plasma/PointerScript.hpp"
#include "Vantrel/Backends/Wayland/Compositor.hpp"

namespace vantrel::plasma {

/// KWin, Plasma's compositor.
class PlasmaCompositor final : public wayland::Compositor {
  public:
    /// A wayland::CompositorFinder.
    static std::unique_ptr<wayland::Compositor> find(const wayland::CompositorAddress& address);

    backend::HotKeyBinder* hotKeys() override;
    std::optional<wayland::LayoutPoint> readHeldPointer(wayland::Clock::time_point deadline) override;
    bool warpPointer(const wayland::Warp& warp) override;
    bool lookUnderPointer() override;
    [[nodiscard]] bool comesBack() const override { return true; }

  private:
    PlasmaCompositor(std::unique_ptr<FakeInput> input, const wayland::CompositorAddress& address);

    std::unique_ptr<FakeInput> input_;
    wayland::CompositorAddress address_;
    GObjectPointer<GDBusConnection> bus_;  ///< null without one
    std::optional<PlasmaHotKeyBinder> hotKeys_;
    std::optional<PointerScript> script_;
};

}  // namespace vantrel::plasma
