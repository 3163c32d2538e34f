#pragma once

#include <algorithm>
#include <chrono>

namespace vantrel::backend {

/// How long the loop waits for a desktop's answer about a hot key: a person waits, too.
inline constexpr std::chrono::milliseconds answerTime{30};

/// The same, in all, at the start of the program: nobody waits yet, and that is often the start of a session, when
/// every desktop is busy.
inline constexpr std::chrono::seconds answerTimeAtStart{2};

/// When the registration of a hot key gives up waiting for the desktop's answer.
class AnswerTime {
  public:
    using Clock = std::chrono::steady_clock;

    /// For a registration that begins now.
    [[nodiscard]] Clock::time_point deadline() const {
        return std::max(Clock::now() + answerTime, start_ + answerTimeAtStart);
    }

  private:
    Clock::time_point start_ = Clock::now();
};

}  // namespace vantrel::backend
