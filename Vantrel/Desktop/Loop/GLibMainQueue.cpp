#include "Vantrel/Desktop/Loop/GLibMainQueue.hpp"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include "Vantrel/Desktop/Loop/LoopPriorities.hpp"

namespace vantrel::desktop {

namespace {

constexpr double longestDelay = 1e9;  // seconds, some thirty years: the sum with the present time stays in range

std::chrono::microseconds usableDelay(Seconds delay) {
    const Seconds inRange(std::isnan(delay.count()) ? 0 : std::clamp(delay.count(), 0.0, longestDelay));
    return std::chrono::ceil<std::chrono::microseconds>(inRange);
}

}  // namespace

GLibMainQueue::GLibMainQueue(GMainContext* context)
    : context_(context),
      mainThread_(std::this_thread::get_id()),
      tasksSource_(LoopSource::whenever([this] { return !tasks_.empty(); }, [this] { runTasks(); },
                                        {.priority = mainQueuePriority, .context = context_})) {}

void GLibMainQueue::async(std::function<void()> task) {
    tasks_.push_back(std::move(task));
}

void GLibMainQueue::asyncAfter(Seconds delay, std::shared_ptr<DispatchWorkItem> item) {
    if (item->isCancelled()) {
        return;
    }
    std::erase_if(delayed_, [](const auto& source) { return !source->isSet(); });
    delayed_.push_back(std::make_shared<LoopSource>(
        LoopSource::after(usableDelay(delay), [item] { item->perform(); }, {.context = context_})));
    item->setCancellationHandler([waiting = std::weak_ptr(delayed_.back())] {
        if (const auto source = waiting.lock()) {
            source->reset();
        }
    });
}

bool GLibMainQueue::isMainThread() const {
    return std::this_thread::get_id() == mainThread_;
}

void GLibMainQueue::dropTasks() {
    tasks_.clear();
}

void GLibMainQueue::runTasks() {
    for (std::size_t left = tasks_.size(); left > 0 && !tasks_.empty(); --left) {
        const std::function<void()> task = std::move(tasks_.front());
        tasks_.pop_front();
        task();
    }
}

}  // namespace vantrel::desktop
