#include "Vantrel/Desktop/Helpers/Helper.hpp"

#include <utility>

namespace vantrel::desktop {

namespace {

/// A program that talks without end must not keep the rest of the loop waiting.
constexpr int mostMessagesInATurn = 16;

}  // namespace

Helper::Helper(Start start, Events events) : start_(std::move(start)), events_(std::move(events)) {}

Helper::~Helper() {
    end();
}

bool Helper::start() {
    keep();
    if (isRunning()) {
        return true;
    }
    end();
    channel_ = start_();
    if (isRunning()) {
        listening_ = LoopSource::whenReadable(channel_.descriptor(), [this] { receive(); });
    }
    return isRunning();
}

void Helper::send(const Message& message) {
    if (isRunning() && !channel_.send(message)) {
        noteEnd();
    }
}

void Helper::endAfter(std::chrono::seconds time) {
    if (isRunning()) {
        linger_ = LoopSource::after(time, [this] { end(); });
    }
}

void Helper::end() {
    linger_.reset();
    listening_.reset();
    channel_ = Channel();
}

void Helper::receive() {
    for (int count = 0; count < mostMessagesInATurn; ++count) {
        const auto message = channel_.receive();
        if (!message) {
            break;
        }
        events_.received(*message);
    }
    if (listening_.isSet() && !isRunning()) {
        noteEnd();
    }
}

void Helper::noteEnd() {
    const std::string otherVersion = channel_.otherVersion();
    end();
    events_.ended(otherVersion);
}

}  // namespace vantrel::desktop
