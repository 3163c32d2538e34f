#include "Vantrel/Desktop/Loop/URLQueue.hpp"

#include <malloc.h>

#include "Vantrel/Desktop/Loop/LoopPriorities.hpp"

namespace vantrel::desktop {

namespace {

// A burst of this many leaves megabytes of freed messages behind, which the C library would keep.
constexpr std::size_t burstWorthTrimming = 1000;

}  // namespace

URLQueue::URLQueue(Sink sink, GMainContext* context)
    : sink_(std::move(sink)),
      source_(LoopSource::whenever([this] { return !isSuspended_ && !readers_.empty(); }, [this] { serveNext(); },
                                   {.priority = urlPriority, .context = context})) {}

void URLQueue::append(std::vector<std::string> urls) {
    append([urls = std::move(urls), next = std::size_t{0}](std::string& url) mutable {
        if (next == urls.size()) {
            return false;
        }
        url = std::move(urls[next++]);
        return true;
    });
}

void URLQueue::serveNext() {
    std::string url;
    if (readers_.front()(url)) {
        ++servedInBurst_;
        sink_(std::move(url));
        return;
    }
    readers_.pop_front();
    if (readers_.empty() && std::exchange(servedInBurst_, 0) >= burstWorthTrimming) {
        malloc_trim(0);
    }
}

}  // namespace vantrel::desktop
