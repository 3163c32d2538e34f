#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/soak/ProcessWeight.hpp"
#include "tests/soak/Random.hpp"
#include "tests/soak/wayland/Jumper.hpp"

namespace vantrel::soak {

/// Jumps in a Wayland session, each judged, while everything around the agent changes at random. Throws at the first
/// thing that is not as it must be.
class JumpRun {
  public:
    JumpRun(const std::string& session, std::uint64_t seed, int jumps);

    /// Runs to the end and prints what was seen.
    void run();

  private:
    struct Disturbance;

    void round(int number);
    void jumpOnce();
    desk::LayoutPoint bringToNewPlace(Side side);
    Request randomRequest();
    /// Throws when the agent should have heard of the jump and has not.
    void count(Outcome outcome);

    // Each is one thing that may happen to an agent.
    void disturb();
    void changeDisplays();
    void plug();
    void reconfigure();
    void chooseKeyboardLayout();
    void toggleLocks();
    void openWrongURLs();
    void jumpWithMenuOpen();
    void jumpWithButtonHeld();

    /// Memory is weighed in long runs only, and what grows at the beginning alone is not what is looked for.
    [[nodiscard]] bool isWeighed() const;
    void warmUp();
    void weigh();
    void print() const;

    std::string name_;
    std::uint64_t seed_;
    int jumps_;
    Random random_;
    std::unique_ptr<Session> session_;
    Jumper jumper_;
    std::chrono::steady_clock::time_point reconfigured_;
    bool isPointerLost_ = false;
    std::map<Outcome, int> outcomes_;
    std::map<std::string, int> disturbances_;
    Weighings weighings_;
};

}  // namespace vantrel::soak
