#include "Vantrel/Desktop/Loop/KernelTimer.hpp"

#include <sys/timerfd.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

#include "Vantrel/Desktop/Loop/LoopPriorities.hpp"

namespace vantrel::desktop {

namespace {

constexpr Seconds shortestInterval{0.0001};
constexpr Seconds longestInterval{1e9};  // some thirty years: nanoseconds stay in range

std::chrono::nanoseconds usableInterval(Seconds interval) {
    const Seconds inRange =
        std::isnan(interval.count()) ? shortestInterval : std::clamp(interval, shortestInterval, longestInterval);
    return std::chrono::nanoseconds(std::llround(inRange.count() * 1e9));
}

timespec timespecFrom(std::chrono::nanoseconds duration) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(duration);
    return {seconds.count(), (duration - seconds).count()};
}

}  // namespace

KernelTimer::KernelTimer(bool repeats, std::function<void(Timer&)> action)
    : repeats_(repeats), action_(std::move(action)) {}

void KernelTimer::start(GMainContext* context, Seconds interval) {
    place_ = {.priority = timerPriority, .context = context};
    const std::chrono::nanoseconds usable = usableInterval(interval);
    if (startKernelTimer(usable)) {
        source_ = LoopSource::whenReadable(
            descriptor_.get(), [this] { takeFiring(); }, place_);
        return;
    }
    // No descriptor is left: better a tick rounded to the millisecond than a pointer that never arrives.
    coarseInterval_ = std::chrono::duration_cast<std::chrono::microseconds>(usable);
    coarseDue_ = std::chrono::steady_clock::now() + coarseInterval_;
    waitCoarsely();
}

bool KernelTimer::startKernelTimer(std::chrono::nanoseconds interval) {
    descriptor_ = FileDescriptor(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC));
    if (!descriptor_.isOpen()) {
        return false;
    }
    const itimerspec schedule{timespecFrom(interval), timespecFrom(interval)};
    return timerfd_settime(descriptor_.get(), 0, &schedule, nullptr) == 0;
}

void KernelTimer::invalidate() {
    source_.reset();
    descriptor_.reset();
}

/// Takes the firings that are due as one.
void KernelTimer::takeFiring() {
    std::uint64_t firings = 0;
    if (read(descriptor_.get(), &firings, sizeof firings) == static_cast<ssize_t>(sizeof firings)) {
        fire();
    }
}

void KernelTimer::waitCoarsely() {
    const auto left = std::chrono::ceil<std::chrono::microseconds>(coarseDue_ - std::chrono::steady_clock::now());
    source_ = LoopSource::after(
        left, [this] { takeCoarseFiring(); }, place_);
}

void KernelTimer::takeCoarseFiring() {
    const auto late = std::chrono::steady_clock::now() - coarseDue_;
    coarseDue_ += (late / coarseInterval_ + 1) * coarseInterval_;
    waitCoarsely();
    fire();
}

void KernelTimer::fire() {
    // The action may release the last reference to its timer.
    const std::shared_ptr<KernelTimer> alive = shared_from_this();
    action_(*this);
    if (!repeats_) {
        invalidate();
    }
}

}  // namespace vantrel::desktop
