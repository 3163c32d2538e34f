#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "benchmarks/wayland/JumpDesk.hpp"
#include "tests/desk/wayland/support/WaylandDesk.hpp"

namespace vantrel::bench {

/// A session of a compositor that lets a client press keys and see the pointer.
class SeatJumpDesk : public JumpDesk {
  public:
    /// Which way of the chord's last key the carrier hears.
    enum class Act { onPress, onRelease };

    explicit SeatJumpDesk(std::unique_ptr<desk::WaylandDesk> session, Act act = Act::onPress)
        : session_(std::move(session)), act_(act) {}

    void startAgent();
    /// Starts another carrier and waits until it serves, if that can be seen, and jumps.
    void startCarrier(
        const desk::ChildProcessOptions& options, const std::function<bool()>& serves = [] { return true; });

    void moveTo(desk::LayoutPoint place) override { session_->person().moveTo(place); }
    std::optional<double> press(desk::LayoutPoint target) override;
    [[nodiscard]] pid_t carrier() const override { return agent_ ? agent_->processId() : process_->processId(); }

    desk::WaylandDesk& session() { return *session_; }

  private:
    std::unique_ptr<desk::WaylandDesk> session_;
    Act act_;
    std::unique_ptr<desk::AgentProcess> agent_;
    std::unique_ptr<desk::ChildProcess> process_;
};

}  // namespace vantrel::bench
