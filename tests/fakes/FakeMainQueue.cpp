#include "tests/fakes/FakeMainQueue.hpp"

#include <algorithm>
#include <utility>

#include "tests/fakes/FakeTimer.hpp"

namespace vantrel::fake {

FakeMainQueue::FakeMainQueue(Journal& journal) : journal_(journal) {}

FakeMainQueue::~FakeMainQueue() {
    // The items may outlive the queue and be cancelled then.
    for (const DelayedItem& delayed : items_) {
        delayed.item->setCancellationHandler(nullptr);
    }
}

void FakeMainQueue::async(std::function<void()> task) {
    journal_.emplace_back("async");
    tasks_.push_back(std::move(task));
}

void FakeMainQueue::asyncAfter(Seconds delay, std::shared_ptr<DispatchWorkItem> item) {
    journal_.push_back("asyncAfter(" + journalText(delay.count()) + ")");
    const std::uint64_t number = ++calls_;
    item->setCancellationHandler([this, number] {
        std::erase_if(items_, [number](const DelayedItem& delayed) { return delayed.number == number; });
    });
    items_.push_back(DelayedItem{now_ + std::chrono::round<Time>(delay), number, std::move(item)});
}

std::shared_ptr<Timer> FakeMainQueue::scheduledTimer(Seconds interval, bool repeats,
                                                     std::function<void(Timer&)> action) {
    journal_.push_back("scheduledTimer(" + journalText(interval.count()) + (repeats ? ", repeating)" : ")"));
    auto timer = std::make_shared<FakeTimer>(journal_, now_, interval, repeats, std::move(action));
    timers_.push_back(timer);
    return timer;
}

std::size_t FakeMainQueue::turn() {
    const auto due = std::exchange(tasks_, {});
    for (const auto& task : due) {
        task();
    }
    return due.size();
}

void FakeMainQueue::advance(Seconds duration) {
    const Time end = now_ + std::chrono::round<Time>(duration);
    do {
        while (turn() > 0) {
        }
    } while (runNextDue(end));
    now_ = end;
}

void FakeMainQueue::stall(Seconds duration) {
    now_ += std::chrono::round<Time>(duration);
}

bool FakeMainQueue::runNextDue(Time limit) {
    std::shared_ptr<FakeTimer> nextTimer;
    for (const auto& weakTimer : timers_) {
        const auto timer = weakTimer.lock();
        if (timer && timer->isValid() && timer->due() <= limit && (!nextTimer || timer->due() < nextTimer->due())) {
            nextTimer = timer;
        }
    }
    const auto nextItem =
        std::min_element(items_.begin(), items_.end(), [](const DelayedItem& first, const DelayedItem& second) {
            return std::pair(first.due, first.number) < std::pair(second.due, second.number);
        });
    if (nextItem != items_.end() && nextItem->due <= limit && (!nextTimer || nextItem->due <= nextTimer->due())) {
        now_ = std::max(now_, nextItem->due);
        const std::shared_ptr<DispatchWorkItem> item = nextItem->item;
        items_.erase(nextItem);
        item->perform();
        return true;
    }
    if (nextTimer) {
        now_ = std::max(now_, nextTimer->due());
        nextTimer->fire(now_);
    }
    return nextTimer != nullptr;
}

std::size_t FakeMainQueue::runningTimers() const {
    return static_cast<std::size_t>(std::count_if(timers_.begin(), timers_.end(), [](const auto& weakTimer) {
        const auto timer = weakTimer.lock();
        return timer && timer->isValid();
    }));
}

}  // namespace vantrel::fake
