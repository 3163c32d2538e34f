#include "Vantrel/Desktop/Loop/KernelTimer.hpp"

#include <glib-unix.h>
#include <sys/timerfd.h>

#include <algorithm>
#include <cmath>
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

/// GLib allocates a source itself and asks only that it begin with a GSource.
struct KernelTimer::Source {
    GSource base;
    KernelTimer* timer;
};

KernelTimer::KernelTimer(bool repeats, std::function<void(Timer&)> action)
    : repeats_(repeats), action_(std::move(action)) {}

KernelTimer::~KernelTimer() = default;

void KernelTimer::start(GMainContext* context, Seconds interval) {
    static GSourceFuncs functions{nullptr, nullptr, &dispatch, nullptr, nullptr, nullptr};
    source_.reset(g_source_new(&functions, sizeof(Source)));
    reinterpret_cast<Source*>(source_.get())->timer = this;
    g_source_set_static_name(source_.get(), "timer");
    g_source_set_priority(source_.get(), timerPriority);
    // Otherwise GLib takes the descriptor out of its poll set around each firing, and each time wakes itself to look at
    // the set again: half of a tick's system calls.
    g_source_set_can_recurse(source_.get(), TRUE);
    const std::chrono::nanoseconds usable = usableInterval(interval);
    if (!startKernelTimer(usable)) {
        startCoarseTimer(usable);
    }
    g_source_attach(source_.get(), context);
}

bool KernelTimer::startKernelTimer(std::chrono::nanoseconds interval) {
    descriptor_ = FileDescriptor(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC));
    if (!descriptor_.isOpen()) {
        return false;
    }
    const itimerspec schedule{timespecFrom(interval), timespecFrom(interval)};
    timerfd_settime(descriptor_.get(), 0, &schedule, nullptr);
    g_source_add_unix_fd(source_.get(), descriptor_.get(), G_IO_IN);
    return true;
}

// No descriptor is left: better a tick rounded to the millisecond than a pointer that never arrives.
void KernelTimer::startCoarseTimer(std::chrono::nanoseconds interval) {
    coarseInterval_ = std::chrono::duration_cast<std::chrono::microseconds>(interval).count();
    coarseDue_ = g_get_monotonic_time() + coarseInterval_;
    g_source_set_ready_time(source_.get(), coarseDue_);
}

void KernelTimer::invalidate() {
    source_.reset();
    descriptor_.reset();
}

gboolean KernelTimer::dispatch(GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) {
    KernelTimer* const timer = reinterpret_cast<Source*>(source)->timer;
    if (timer->takeFiring()) {
        timer->fire();
    }
    // Not the timer's word: it may be gone by now.
    return g_source_is_destroyed(source) != FALSE ? G_SOURCE_REMOVE : G_SOURCE_CONTINUE;
}

/// Takes the firings that are due as one; false when there are none.
bool KernelTimer::takeFiring() {
    if (descriptor_.isOpen()) {
        std::uint64_t firings = 0;
        return read(descriptor_.get(), &firings, sizeof firings) == static_cast<ssize_t>(sizeof firings);
    }
    const gint64 late = g_get_monotonic_time() - coarseDue_;
    coarseDue_ += (late / coarseInterval_ + 1) * coarseInterval_;
    g_source_set_ready_time(source_.get(), coarseDue_);
    return true;
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
