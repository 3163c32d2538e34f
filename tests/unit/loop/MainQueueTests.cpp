#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "Vantrel/Desktop/Loop/GLibMainQueue.hpp"
#include "Vantrel/Desktop/Loop/LoopPriorities.hpp"
#include "tests/unit/loop/TestLoop.hpp"

namespace vantrel::desktop {
namespace {

struct QueueFixture {
    TestLoop loop;
    GLibMainQueue queue{loop.context()};
    std::vector<std::string> log;

    std::function<void()> note(const std::string& text) {
        return [this, text] { log.push_back(text); };
    }
    std::shared_ptr<DispatchWorkItem> item(const std::string& text) {
        return std::make_shared<DispatchWorkItem>(note(text));
    }
};

using Log = std::vector<std::string>;

TEST(MainQueue, async_severalTasks_runOnTheNextTurnInOrder) {
    QueueFixture fixture;
    for (const char* text : {"one", "two", "three"}) {
        fixture.queue.async(fixture.note(text));
    }
    EXPECT_TRUE(fixture.log.empty());
    EXPECT_TRUE(fixture.loop.turn());
    EXPECT_EQ(fixture.log, (Log{"one", "two", "three"}));
    EXPECT_FALSE(fixture.loop.turn());
}

TEST(MainQueue, async_fromARunningTask_waitsForTheTurnAfter) {
    QueueFixture fixture;
    fixture.queue.async([&fixture] {
        fixture.log.emplace_back("outer");
        fixture.queue.async(fixture.note("inner"));
    });
    fixture.queue.async(fixture.note("second"));
    fixture.loop.turn();
    EXPECT_EQ(fixture.log, (Log{"outer", "second"}));
    fixture.loop.turn();
    EXPECT_EQ(fixture.log, (Log{"outer", "second", "inner"}));
}

TEST(MainQueue, dropTasks_someWait_letsGoOfWhatTheyHoldAndRunsNone) {
    QueueFixture fixture;
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> observer = held;
    fixture.queue.async([held = std::move(held), &fixture] { fixture.log.emplace_back("ran"); });
    fixture.queue.dropTasks();
    EXPECT_TRUE(observer.expired());
    EXPECT_FALSE(fixture.loop.turn());
    EXPECT_TRUE(fixture.log.empty());
    fixture.queue.async(fixture.note("later"));
    fixture.loop.turn();
    EXPECT_EQ(fixture.log, (Log{"later"}));
}

TEST(MainQueue, async_taskThatRunsALoopOfItsOwn_laterTasksAreServedThere) {
    QueueFixture fixture;
    fixture.queue.async([&fixture] {
        fixture.log.emplace_back("dialogue opens");
        fixture.loop.turn();
        fixture.log.emplace_back("dialogue closes");
    });
    fixture.queue.async(fixture.note("hot key"));
    fixture.loop.turn();
    EXPECT_EQ(fixture.log, (Log{"dialogue opens", "hot key", "dialogue closes"}));
}

TEST(MainQueue, async_whileEverythingElseIsReady_runsFirstOfAll) {
    for (const int priority : {G_PRIORITY_HIGH, timerPriority, G_PRIORITY_DEFAULT, urlPriority, G_PRIORITY_LOW}) {
        QueueFixture fixture;
        const auto other =
            LoopSource::whenever([] { return true; }, fixture.note("other"), {priority, fixture.loop.context()});
        fixture.loop.turn();
        EXPECT_EQ(fixture.log, Log{"other"});
        fixture.queue.async(fixture.note("task"));
        fixture.loop.turn();
        EXPECT_EQ(fixture.log, (Log{"other", "task"})) << priority;
    }
}

TEST(MainQueue, asyncAfter_delayOver_runsTheItemOnce) {
    QueueFixture fixture;
    const gint64 begin = g_get_monotonic_time();
    fixture.queue.asyncAfter(Seconds(0.02), fixture.item("late"));
    EXPECT_GT(fixture.loop.sleepTime(), 0);
    fixture.loop.turnUntil([&fixture] { return !fixture.log.empty(); });
    EXPECT_GE(g_get_monotonic_time() - begin, 20000);
    EXPECT_EQ(fixture.loop.sleepTime(), -1);
    EXPECT_EQ(fixture.log, Log{"late"});
}

TEST(MainQueue, asyncAfter_laterCallWithTheShorterDelay_runsFirst) {
    QueueFixture fixture;
    fixture.queue.asyncAfter(Seconds(3600), fixture.item("last"));
    fixture.queue.asyncAfter(Seconds(0.01), fixture.item("first"));
    fixture.loop.turnUntil([&fixture] { return !fixture.log.empty(); });
    EXPECT_EQ(fixture.log, (Log{"first"}));
    EXPECT_GT(fixture.loop.sleepTime(), 1000) << "the other still waits";
}

TEST(MainQueue, asyncAfter_cancelled_neverRunsAndWakesNobody) {
    QueueFixture fixture;
    const auto item = fixture.item("cancelled");
    fixture.queue.asyncAfter(Seconds(1.2), item);
    EXPECT_GT(fixture.loop.sleepTime(), 1000);
    item->cancel();
    EXPECT_EQ(fixture.loop.sleepTime(), -1);
    EXPECT_FALSE(fixture.loop.turn());
    EXPECT_TRUE(fixture.log.empty());
}

TEST(MainQueue, asyncAfter_cancelled_releasesTheItem) {
    QueueFixture fixture;
    auto item = fixture.item("cancelled");
    const std::weak_ptr<DispatchWorkItem> watch = item;
    fixture.queue.asyncAfter(Seconds(1.2), item);
    item->cancel();
    item.reset();
    EXPECT_TRUE(watch.expired());
}

TEST(MainQueue, asyncAfter_itemCancelledBefore_isNotScheduled) {
    QueueFixture fixture;
    const auto item = fixture.item("cancelled");
    item->cancel();
    fixture.queue.asyncAfter(Seconds(0), item);
    EXPECT_EQ(fixture.loop.sleepTime(), -1);
    EXPECT_FALSE(fixture.loop.turn());
}

TEST(MainQueue, asyncAfter_cancelledByAnotherItemThatIsDueToo_neverRuns) {
    QueueFixture fixture;
    const auto victim = fixture.item("victim");
    fixture.queue.asyncAfter(Seconds(0), std::make_shared<DispatchWorkItem>([victim] { victim->cancel(); }));
    fixture.queue.asyncAfter(Seconds(0), victim);
    while (fixture.loop.turn()) {
    }
    EXPECT_TRUE(fixture.log.empty());
    EXPECT_EQ(fixture.loop.sleepTime(), -1);
}

TEST(MainQueue, asyncAfter_cancelledWhenDone_doesNothing) {
    QueueFixture fixture;
    const auto item = fixture.item("done");
    fixture.queue.asyncAfter(Seconds(0), item);
    fixture.loop.turnUntil([&fixture] { return !fixture.log.empty(); });
    item->cancel();
    EXPECT_FALSE(fixture.loop.turn());
    EXPECT_EQ(fixture.log, Log{"done"});
}

TEST(MainQueue, asyncAfter_cancelledFromItsOwnWork_doesNothing) {
    QueueFixture fixture;
    std::shared_ptr<DispatchWorkItem> item;
    item = std::make_shared<DispatchWorkItem>([&fixture, &item] {
        item->cancel();
        fixture.log.emplace_back("done");
    });
    fixture.queue.asyncAfter(Seconds(0), item);
    fixture.loop.turnUntil([&fixture] { return !fixture.log.empty(); });
    EXPECT_EQ(fixture.loop.sleepTime(), -1);
}

TEST(MainQueue, asyncAfter_delayOutOfRange_isAtOnceOrAsGoodAsNever) {
    for (const double delay : {-1.0, -std::numeric_limits<double>::infinity(), std::nan("")}) {
        QueueFixture fixture;
        fixture.queue.asyncAfter(Seconds(delay), fixture.item("now"));
        EXPECT_TRUE(fixture.loop.turn());
        EXPECT_EQ(fixture.log, Log{"now"});
    }
    for (const double delay : {1e300, std::numeric_limits<double>::infinity()}) {
        QueueFixture fixture;
        fixture.queue.asyncAfter(Seconds(delay), fixture.item("never"));
        EXPECT_FALSE(fixture.loop.turn());
    }
}

TEST(MainQueue, atRest_nothingQueued_sleepsForEver) {
    QueueFixture fixture;
    EXPECT_EQ(fixture.loop.sleepTime(), -1);
}

TEST(MainQueue, isMainThread_onThisThreadAndOnAnother_tellsThemApart) {
    QueueFixture fixture;
    bool elsewhere = true;
    std::thread([&] { elsewhere = fixture.queue.isMainThread(); }).join();
    EXPECT_TRUE(fixture.queue.isMainThread());
    EXPECT_FALSE(elsewhere);
}

}  // namespace
}  // namespace vantrel::desktop
