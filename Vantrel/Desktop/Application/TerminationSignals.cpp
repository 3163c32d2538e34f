#include "Vantrel/Desktop/Application/TerminationSignals.hpp"

#include "Vantrel/Desktop/Loop/LoopPriorities.hpp"

#include <sys/eventfd.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace vantrel::desktop {

namespace {

// A signal handler is given nothing of its own.
std::atomic<int> eventDescriptor{-1};
static_assert(std::atomic<int>::is_always_lock_free);

void handleSignal(int /*signal*/, siginfo_t* information, void* /*context*/) {
    const int savedError = errno;
    const bool isFromOthers = information->si_code > 0 || information->si_pid != getpid();
    const int descriptor = eventDescriptor;
    if (isFromOthers && descriptor >= 0) {
        const std::uint64_t once = 1;
        // Full only after more signals than were ever sent; then it is readable anyway.
        [[maybe_unused]] const ssize_t written = write(descriptor, &once, sizeof once);
    }
    errno = savedError;
}

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> received, GMainContext* context)
    : received_(std::move(received)), event_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    source_ = LoopSource::whenReadable(event_.get(), [this] { takeSignals(); },
                                       {.priority = terminationPriority, .context = context});
    eventDescriptor = event_.get();
    struct sigaction action {};
    action.sa_sigaction = &handleSignal;
    action.sa_flags = SA_SIGINFO | SA_RESTART;
    for (std::size_t index = 0; index < signals.size(); ++index) {
        sigaction(signals[index], &action, &previous_[index]);
    }
}

TerminationSignals::~TerminationSignals() {
    for (std::size_t index = 0; index < signals.size(); ++index) {
        sigaction(signals[index], &previous_[index], nullptr);
    }
    eventDescriptor = -1;
}

void TerminationSignals::takeSignals() {
    std::uint64_t count = 0;
    if (read(event_.get(), &count, sizeof count) == sizeof count) {
        received_();
    }
}

}  // namespace vantrel::desktop
