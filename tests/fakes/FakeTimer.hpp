#pragma once

#include <chrono>
#include <functional>
#include <utility>

#include "Vantrel/Platform/RunLoop.hpp"
#include "tests/fakes/Journal.hpp"

namespace vantrel::fake {

/// A timer of FakeMainQueue.
class FakeTimer final : public Timer {
  public:
    using Time = std::chrono::nanoseconds;

    FakeTimer(Journal& journal, Time start, Seconds interval, bool repeats, std::function<void(Timer&)> action)
        : journal_(journal), start_(start), interval_(interval), repeats_(repeats), action_(std::move(action)) {}

    void invalidate() override {
        journal_.emplace_back("invalidate");
        isValid_ = false;
    }
    [[nodiscard]] bool isValid() const override { return isValid_; }

    /// When it fires next.
    [[nodiscard]] Time due() const { return start_ + std::chrono::round<Time>(interval_ * firings_); }

    /// Fires once, however many times were missed, and keeps to the schedule that began with the timer.
    void fire(Time now) {
        while (due() <= now) {
            firings_ += 1;
        }
        if (!repeats_) {
            isValid_ = false;
        }
        action_(*this);
    }

  private:
    Journal& journal_;
    Time start_;
    Seconds interval_;
    bool repeats_;
    std::function<void(Timer&)> action_;
    double firings_ = 1;  ///< the number of the next firing on the schedule
    bool isValid_ = true;
};

}  // namespace vantrel::fake
