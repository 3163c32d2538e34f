#include "Vantrel/Desktop/Loop/GLibMainQueue.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Vantrel/Desktop/Loop/LoopPriorities.hpp"

namespace vantrel::desktop {

namespace {

constexpr double longestDelay = 1e9;  // seconds, some thirty years: the sum with the present time stays in range

gint64 readyTimeAfter(Seconds delay) {
    const double seconds = std::isnan(delay.count()) ? 0 : std::clamp(delay.count(), 0.0, longestDelay);
    return g_get_monotonic_time() + static_cast<gint64>(std::ceil(seconds * G_USEC_PER_SEC));
}

using WorkItem = std::shared_ptr<DispatchWorkItem>;

gboolean performItem(gpointer data) {
    const WorkItem item = *static_cast<WorkItem*>(data);
    item->perform();
    return G_SOURCE_REMOVE;
}

void releaseItem(gpointer data) {
    const std::unique_ptr<WorkItem> item(static_cast<WorkItem*>(data));
}

gboolean runCallback(GSource* /*source*/, GSourceFunc callback, gpointer data) {
    return callback(data);
}

/// A source without conditions: GLib wakes for its ready time alone.
GSource* makeDelaySource() {
    static GSourceFuncs functions{nullptr, nullptr, &runCallback, nullptr, nullptr, nullptr};
    return g_source_new(&functions, sizeof(GSource));
}

}  // namespace

/// GLib allocates a source itself and asks only that it begin with a GSource.
struct GLibMainQueue::Source {
    GSource base;
    GLibMainQueue* queue;
};

GLibMainQueue::GLibMainQueue(GMainContext* context)
    : context_(g_main_context_ref(context != nullptr ? context : g_main_context_default())),
      mainThread_(std::this_thread::get_id()) {
    static GSourceFuncs functions{&prepare, &check, &dispatch, nullptr, nullptr, nullptr};
    source_.reset(g_source_new(&functions, sizeof(Source)));
    reinterpret_cast<Source*>(source_.get())->queue = this;
    g_source_set_static_name(source_.get(), "main queue");
    g_source_set_priority(source_.get(), mainQueuePriority);
    // A task may run a loop of its own (a modal dialogue), in which hot keys work on.
    g_source_set_can_recurse(source_.get(), TRUE);
    g_source_attach(source_.get(), context_.get());
}

GLibMainQueue::~GLibMainQueue() = default;

void GLibMainQueue::async(std::function<void()> task) {
    tasks_.push_back(std::move(task));
}

void GLibMainQueue::asyncAfter(Seconds delay, std::shared_ptr<DispatchWorkItem> item) {
    if (item->isCancelled()) {
        return;
    }
    GSource* const source = makeDelaySource();
    g_source_set_static_name(source, "delayed work");
    g_source_set_ready_time(source, readyTimeAfter(delay));
    item->setCancellationHandler(
        [handle = std::shared_ptr<GSource>(source, &g_source_unref)] { g_source_destroy(handle.get()); });
    g_source_set_callback(source, &performItem, std::make_unique<WorkItem>(std::move(item)).release(), &releaseItem);
    g_source_attach(source, context_.get());
}

bool GLibMainQueue::isMainThread() const {
    return std::this_thread::get_id() == mainThread_;
}

void GLibMainQueue::dropTasks() {
    tasks_.clear();
}

gboolean GLibMainQueue::prepare(GSource* source, gint* timeout) {
    *timeout = -1;
    return check(source);
}

gboolean GLibMainQueue::check(GSource* source) {
    return reinterpret_cast<Source*>(source)->queue->tasks_.empty() ? FALSE : TRUE;
}

gboolean GLibMainQueue::dispatch(GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) {
    reinterpret_cast<Source*>(source)->queue->runTasks();
    return G_SOURCE_CONTINUE;
}

void GLibMainQueue::runTasks() {
    for (std::size_t left = tasks_.size(); left > 0 && !tasks_.empty(); --left) {
        const std::function<void()> task = std::move(tasks_.front());
        tasks_.pop_front();
        task();
    }
}

}  // namespace vantrel::desktop
