// libxcb sends with writev() and waits for replies with poll() for input alone, without a time limit. The two functions
// defined here stand before the C library's, in this program only, and count the waits that follow on something sent:
// replies that come in several pieces are one round trip. The C library's headers are left out on purpose: they declare
// poll()'s array as only written to, and what is asked for could not be read.
#include "tests/desk/screen/RoundTripCounter.hpp"

#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <ctime>
#include <functional>
#include <utility>

struct iovec;

namespace {

struct PollDescriptor {
    int fd;
    short events;
    short revents;
};

constexpr short pollInput = 1;  // POLLIN

// The C library's functions have no other place for these.
std::atomic<bool> hasSent{false};
std::atomic<int> roundTrips{0};

std::function<void()>& nextSendAction() {
    static std::function<void()> action;
    return action;
}

}  // namespace

extern "C" ssize_t writev(int descriptor, const iovec* pieces, int count) {
    // Taken out first: the action sends as well.
    if (const auto action = std::exchange(nextSendAction(), nullptr)) {
        action();
    }
    hasSent = true;
    return syscall(SYS_writev, descriptor, pieces, count);
}

extern "C" int poll(PollDescriptor* descriptors, unsigned long count, int timeout) {
    if (timeout < 0 && count == 1 && descriptors->events == pollInput && hasSent.exchange(false)) {
        ++roundTrips;
    }
    const timespec limit{timeout / 1000, (timeout % 1000) * 1000000L};
    return static_cast<int>(syscall(SYS_ppoll, descriptors, count, timeout < 0 ? nullptr : &limit, nullptr, 0));
}

namespace vantrel::desk {

int takeRoundTrips() {
    return roundTrips.exchange(0);
}

void beforeNextSend(std::function<void()> action) {
    nextSendAction() = std::move(action);
}

}  // namespace vantrel::desk
