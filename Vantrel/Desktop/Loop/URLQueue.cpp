#include "Vantrel/Desktop/Loop/URLQueue.hpp"

#include <malloc.h>

#include <ctime>
#include <memory>
#include <utility>

#include "Vantrel/Desktop/Loop/LoopPriorities.hpp"

namespace vantrel::desktop {

namespace {

// A burst of this many leaves megabytes of freed messages behind, which the C library would keep.
constexpr std::size_t burstWorthTrimming = 1000;

/// What this thread has used: a busy machine must not make slices short, for then URLs would wait even longer.
std::chrono::nanoseconds processorTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

}  // namespace

URLQueue::URLQueue(Sink sink, GMainContext* context)
    : sink_(std::move(sink)),
      source_(LoopSource::whenever([this] { return !isSuspended_ && !readers_.empty(); }, [this] { serveSlice(); },
                                   {.priority = urlPriority, .context = context})) {}

void URLQueue::append(std::vector<std::string> urls) {
    auto list = std::make_shared<std::vector<std::string>>(std::move(urls));
    append([list = std::move(list), next = std::size_t{0}](std::string& url) mutable {
        if (next == list->size()) {
            return false;
        }
        url = std::move((*list)[next++]);
        return true;
    });
}

void URLQueue::append(Reader reader) {
    readers_.push_back(std::move(reader));
}

void URLQueue::resume() {
    isSuspended_ = false;
}

void URLQueue::serveSlice() {
    const std::chrono::nanoseconds end = processorTime() + sliceTime;
    std::string url;
    for (std::size_t served = 0; served < sliceLength && takeNext(url); ++served) {
        ++servedInBurst_;
        sink_(std::move(url));
        if (processorTime() >= end) {
            break;
        }
    }
    if (readers_.empty() && std::exchange(servedInBurst_, 0) >= burstWorthTrimming) {
        malloc_trim(0);
    }
}

bool URLQueue::takeNext(std::string& url) {
    while (!readers_.empty()) {
        if (readers_.front()(url)) {
            return true;
        }
        readers_.pop_front();
    }
    return false;
}

}  // namespace vantrel::desktop
