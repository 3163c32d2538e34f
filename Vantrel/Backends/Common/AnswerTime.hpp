#pragma once

#include <algorithm>
#include <chrono>

namespace vantrel::backend {

/// How long the registration of a hot key waits for the desktop's answer: 30 ms, because a person waits, too; but two
/// seconds in all at the start of the program, which is often the start of a session, when every desktop is busy.
class AnswerTime {
  public:
    using Clock = std::chrono::steady_clock;

    /// For a registration that begins now.
    [[nodiscard]] Clock::time_point deadline() const { return std::max(Clock::now() + usual, start_ + atTheStart); }

  private:
    static constexpr std::chrono::milliseconds usual{30};
    static constexpr std::chrono::seconds atTheStart{2};

    Clock::time_point start_ = Clock::now();
};

}  // namespace vantrel::backend
