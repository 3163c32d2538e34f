#pragma once

#include <optional>

#include "Vantrel/Backends/Wayland/Compositor.hpp"

namespace vantrel::plasma {

/// KWin's protocol for programs that move the pointer, fake_input. It is offered to programs whose desktop file has it
/// in X-KDE-Wayland-Interfaces.
class FakeInput {
  public:
    /// Null where it is not offered.
    static std::unique_ptr<FakeInput> bind(const wayland::Registry& registry);

    /// Sends the pointer there in one go, by way of what gets it past the edges between displays.
    void warp(const wayland::Warp& warp);

    /// Moves by nothing, upon which KWin looks what lies under the pointer.
    void stir();

  private:
    explicit FakeInput(wayland::WaylandPointer<org_kde_kwin_fake_input> device);
    void moveTo(wayland::LayoutPoint place);

    wayland::WaylandPointer<org_kde_kwin_fake_input> device_;
    std::optional<wayland::LayoutPoint> last_;  ///< where the last warp led
};

}  // namespace vantrel::plasma
