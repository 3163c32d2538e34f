#include "Vantrel/Platform/Desktop/URLQueue.hpp"

#include <malloc.h>

#include <memory>
#include <utility>

#include "Vantrel/Platform/Desktop/LoopPriorities.hpp"

namespace vantrel::desktop {

namespace {

// A burst of this many leaves megabytes of freed messages behind, which the C library would keep.
constexpr std::size_t burstWorthTrimming = 1000;

}  // namespace

/// GLib allocates a source itself and asks only that it begin with a GSource.
struct URLQueue::Source {
    GSource base;
    URLQueue* queue;
};

URLQueue::URLQueue(Sink sink, GMainContext* context) : sink_(std::move(sink)) {
    static GSourceFuncs functions{&prepare, &check, &dispatch, nullptr, nullptr, nullptr};
    source_.reset(g_source_new(&functions, sizeof(Source)));
    reinterpret_cast<Source*>(source_.get())->queue = this;
    g_source_set_static_name(source_.get(), "opened URLs");
    g_source_set_priority(source_.get(), urlPriority);
    g_source_attach(source_.get(), context);
}

URLQueue::~URLQueue() = default;

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

gboolean URLQueue::prepare(GSource* source, gint* timeout) {
    *timeout = -1;
    return check(source);
}

gboolean URLQueue::check(GSource* source) {
    const URLQueue& queue = *reinterpret_cast<Source*>(source)->queue;
    return queue.isSuspended_ || queue.readers_.empty() ? FALSE : TRUE;
}

gboolean URLQueue::dispatch(GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) {
    reinterpret_cast<Source*>(source)->queue->serveSlice();
    return G_SOURCE_CONTINUE;
}

void URLQueue::serveSlice() {
    const std::vector<std::string> slice = takeSlice();
    if (!slice.empty()) {
        servedInBurst_ += slice.size();
        sink_(slice);
    }
    if (readers_.empty() && std::exchange(servedInBurst_, 0) >= burstWorthTrimming) {
        malloc_trim(0);
    }
}

std::vector<std::string> URLQueue::takeSlice() {
    std::vector<std::string> slice;
    std::string url;
    while (slice.size() < sliceLength && !readers_.empty()) {
        if (readers_.front()(url)) {
            slice.push_back(std::move(url));
        } else {
            readers_.pop_front();
        }
    }
    return slice;
}

}  // namespace vantrel::desktop
