#include "tests/fakes/FakeMainQueue.hpp"

#include <gtest/gtest.h>

namespace vantrel::fake {
namespace {

class FakeMainQueueTest : public testing::Test {
  protected:
    [[nodiscard]] std::shared_ptr<DispatchWorkItem> note(const std::string& text) {
        return std::make_shared<DispatchWorkItem>([this, text] { notes.push_back(text); });
    }

    Journal journal;
    FakeMainQueue queue{journal};
    std::vector<std::string> notes;
};

TEST_F(FakeMainQueueTest, turn_taskThatAddsATask_leavesThatToTheNextTurn) {
    queue.async([this] {
        notes.emplace_back("first");
        queue.async([this] { notes.emplace_back("second"); });
    });
    EXPECT_EQ(queue.turn(), 1U);
    EXPECT_EQ(notes, std::vector<std::string>{"first"});
    EXPECT_EQ(queue.pendingTasks(), 1U);
    EXPECT_EQ(queue.turn(), 1U);
    EXPECT_EQ(queue.turn(), 0U);
}

TEST_F(FakeMainQueueTest, advance_severalItems_runsThoseThatAreDueByTime) {
    queue.asyncAfter(Seconds(3), note("three"));
    queue.asyncAfter(Seconds(1), note("one"));
    queue.asyncAfter(Seconds(1), note("one again"));
    queue.asyncAfter(Seconds(2), note("two"));
    queue.advance(Seconds(2));
    EXPECT_EQ(notes, (std::vector<std::string>{"one", "one again", "two"}));
    EXPECT_EQ(queue.pendingItems(), 1U);
}

TEST_F(FakeMainQueueTest, cancel_waitingItem_isForgotten) {
    const auto item = note("never");
    queue.asyncAfter(Seconds(1), item);
    item->cancel();
    EXPECT_EQ(queue.pendingItems(), 0U);
    queue.advance(Seconds(2));
    EXPECT_TRUE(notes.empty());
}

TEST_F(FakeMainQueueTest, scheduledTimer_repeating_keepsToItsSchedule) {
    std::vector<double> times;
    const auto timer =
        queue.scheduledTimer(Seconds(0.5), true, [&](Timer& /*timer*/) { times.push_back(queue.now().count()); });
    queue.advance(Seconds(1.2));
    EXPECT_EQ(times, (std::vector<double>{0.5, 1.0}));
    queue.stall(Seconds(1));
    queue.advance(Seconds(0.5));
    // The two that were missed became one, late; the next ones are on time.
    EXPECT_EQ(times, (std::vector<double>{0.5, 1.0, 2.2, 2.5}));
}

TEST_F(FakeMainQueueTest, scheduledTimer_notRepeating_firesOnce) {
    int firings = 0;
    const auto timer = queue.scheduledTimer(Seconds(1), false, [&firings](Timer& /*timer*/) { ++firings; });
    EXPECT_EQ(queue.runningTimers(), 1U);
    queue.advance(Seconds(5));
    EXPECT_EQ(firings, 1);
    EXPECT_EQ(queue.runningTimers(), 0U);
}

TEST_F(FakeMainQueueTest, scheduledTimer_invalidatedOrReleased_stops) {
    int firings = 0;
    auto released = queue.scheduledTimer(Seconds(1), true, [&firings](Timer& /*timer*/) { ++firings; });
    const auto invalidated = queue.scheduledTimer(Seconds(1), true, [&firings](Timer& timer) {
        ++firings;
        timer.invalidate();
    });
    released = nullptr;
    queue.advance(Seconds(5));
    EXPECT_EQ(firings, 1);
    EXPECT_FALSE(invalidated->isValid());
    EXPECT_EQ(queue.runningTimers(), 0U);
}

}  // namespace
}  // namespace vantrel::fake
