#pragma once

#include "benchmarks/wayland/SeatJumpDesk.hpp"
#include "tests/desk/wayland/support/PersonsProgram.hpp"

namespace vantrel::bench {

/// Labwc, where the chord starts a program that tells the carrier.
class LabwcJumpDesk final : public JumpDesk {
  public:
    explicit LabwcJumpDesk(Carrier carrier);

    void moveTo(desk::LayoutPoint place) override { desk_->moveTo(place); }
    std::optional<double> press(desk::LayoutPoint target) override { return desk_->press(target); }
    [[nodiscard]] pid_t carrier() const override { return desk_->carrier(); }

  private:
    desk::PersonsProgram agent_;
    desk::PersonsProgram knock_;
    std::unique_ptr<SeatJumpDesk> desk_;
};

}  // namespace vantrel::bench
