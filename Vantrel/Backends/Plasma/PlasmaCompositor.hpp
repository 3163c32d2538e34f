#pragma once

#include <memory>
#include <optional>

#include "Vantrel/Backends/Plasma/FakeInput.hpp"
#include "Vantrel/Backends/Plasma/PlasmaHotKeyBinder.hpp"
#include "Vantrel/Backends/Wayland/Compositor.hpp"

namespace vantrel::plasma {

/// KWin, Plasma's compositor.
class PlasmaCompositor final : public wayland::Compositor {
  public:
    /// A wayland::CompositorFinder.
    static std::unique_ptr<wayland::Compositor> find(const wayland::CompositorAddress& address);

    backend::HotKeyBinder* hotKeys() override;
    bool warpPointer(const wayland::Warp& warp) override;
    bool lookUnderPointer() override;

  private:
    PlasmaCompositor(std::unique_ptr<FakeInput> input, const wayland::CompositorAddress& address);

    std::unique_ptr<FakeInput> input_;
    wayland::CompositorAddress address_;
    std::optional<PlasmaHotKeyBinder> hotKeys_;
};

}  // namespace vantrel::plasma
