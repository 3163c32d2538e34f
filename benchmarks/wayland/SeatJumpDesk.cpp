#include "benchmarks/wayland/SeatJumpDesk.hpp"

#include <chrono>
#include <stdexcept>

namespace vantrel::bench {

using namespace desk;
using Clock = std::chrono::steady_clock;

void SeatJumpDesk::startAgent() {
    agent_ = session_->startAgent();
}

void SeatJumpDesk::startCarrier(const ChildProcessOptions& options, const std::function<bool()>& serves) {
    process_ = std::make_unique<ChildProcess>(options);
    const bool isReady = waitUntil([&] {
        // A compositor may learn a while later that it may do more than most.
        if (!process_->isRunning()) {
            process_ = std::make_unique<ChildProcess>(options);
        }
        if (!serves()) {
            return false;
        }
        session_->person().moveTo(onMain);
        session_->person().type(hyper(keys::d));
        return session_->person().waitFor(centreOfSecond, std::chrono::milliseconds(200));
    });
    if (!isReady) {
        throw std::runtime_error(options.arguments.front() + " does not carry the pointer");
    }
}

std::optional<double> SeatJumpDesk::press(LayoutPoint target) {
    SeatClient& person = session_->person();
    Chord modifiers = hyper(keys::d);
    modifiers.pop_back();
    person.hold(modifiers);
    if (act_ == Act::onRelease) {
        person.hold({keys::d});
    }
    person.synchronise();
    // The last jump is over for the compositor as well.
    person.look(std::chrono::milliseconds(3));
    person.synchronise();
    const Clock::time_point begin = Clock::now();
    const Clock::time_point end = begin + std::chrono::seconds(1);
    if (act_ == Act::onRelease) {
        person.letGo();
    } else {
        person.hold({keys::d});
    }
    // Eyes that kept asking would hold a processor that the compositor or the carrier may be waiting for.
    while (person.pointer() != target && Clock::now() < end) {
        person.look(std::chrono::milliseconds(100));
    }
    const std::chrono::duration<double, std::micro> time = Clock::now() - begin;
    person.letGo();
    person.synchronise();
    return person.pointer() == target ? std::optional(time.count()) : std::nullopt;
}

}  // namespace vantrel::bench
