#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/soak/Foresight.hpp"
#include "tests/soak/ProcessWeight.hpp"
#include "tests/soak/Random.hpp"
#include "tests/soak/SoakDesk.hpp"

namespace vantrel::soak {

struct JumpSoakOptions {
    std::uint64_t seed = 1;
    int jumps = 0;
    std::vector<std::string> agentWrapper;  ///< what the agent runs under, e.g. valgrind
    bool isMemoryWeighed = true;  ///< whether the agent's memory means anything, which it does not in a wrapper
};

/// Jumps, each checked, while everything around the agent changes at random. Throws at the first thing that is not as
/// it must be.
class JumpSoak {
  public:
    explicit JumpSoak(const JumpSoakOptions& options);

    /// Runs to the end and prints what was seen.
    void run();

  private:
    using Clock = std::chrono::steady_clock;
    struct Disturbance;

    void jumpOnce();
    desk::MainPoint placeToLeave(Side side);
    desk::MainPoint randomPlace();
    void request(Side side);
    void awaitPointerAt(desk::MainPoint point);
    void checkStoreHolds(desk::MainPoint departure);

    // Each is one thing that may happen to an agent.
    void disturb();
    void disturbInEveryWay();
    void changeDisplays();
    void changeKeymap();
    void restartPanel();
    void toggleLocks();
    void savePoint();
    void clearPoints();
    void jumpToPoint();
    void openURLs();
    void openOrCloseSettings();

    void awaitPoints(const char* after);
    [[nodiscard]] bool isWeighed() const;
    void weigh();
    [[nodiscard]] bool isShown(desk::MainPoint point) const;
    void printSummary() const;

    JumpSoakOptions options_;
    Random random_;
    SoakDesk desk_;
    Foresight foresight_;
    std::vector<desk::PlacedDisplay> shownDisplays_;
    std::vector<desk::MainPoint> points_;
    std::size_t nextPoint_ = 0;
    std::vector<double> times_;  ///< of each jump by a key, from the press to the pointer seen at its target, in ms
    Weighings weighings_;
    int disturbances_ = 0;
    int urls_ = 0;
};

}  // namespace vantrel::soak
