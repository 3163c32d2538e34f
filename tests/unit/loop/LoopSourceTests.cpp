#include "Vantrel/Handles/LoopSource.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "Vantrel/Handles/FileDescriptor.hpp"
#include "tests/unit/loop/TestLoop.hpp"

namespace vantrel {
namespace {

using desktop::TestLoop;
using Log = std::vector<std::string>;
using std::chrono::milliseconds;

struct LoopSourceFixture {
    TestLoop loop;
    Log log;

    LoopSource::Work note(const std::string& text) {
        return [this, text] { log.push_back(text); };
    }
    [[nodiscard]] LoopPlace place(int priority = G_PRIORITY_DEFAULT) const { return {priority, loop.context()}; }
    void turnAll() {
        while (loop.turn()) {
        }
    }
};

struct Pipe {
    Pipe() {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe(ends.data()), 0);
        reading = FileDescriptor(ends[0]);
        writing = FileDescriptor(ends[1]);
    }
    FileDescriptor reading;
    FileDescriptor writing;
};

TEST(LoopSource, made_withoutWork_isNotSet) {
    LoopSource source;
    EXPECT_FALSE(source.isSet());
    source.reset();
}

TEST(LoopSource, after_noDelay_runsOnceOnACominTurnInTheOrderOfMaking) {
    LoopSourceFixture fixture;
    const auto first = LoopSource::after({}, fixture.note("first"), fixture.place());
    const auto second = LoopSource::after({}, fixture.note("second"), fixture.place());
    EXPECT_TRUE(fixture.log.empty());
    EXPECT_TRUE(first.isSet());
    fixture.turnAll();
    EXPECT_EQ(fixture.log, (Log{"first", "second"}));
    EXPECT_FALSE(first.isSet());
    EXPECT_EQ(fixture.loop.sleepTime(), -1);
}

TEST(LoopSource, after_delay_isNeverShortened) {
    LoopSourceFixture fixture;
    const gint64 begin = g_get_monotonic_time();
    const auto source = LoopSource::after(milliseconds(5), fixture.note("late"), fixture.place());
    fixture.loop.turnUntil([&] { return !fixture.log.empty(); });
    EXPECT_GE(g_get_monotonic_time() - begin, 5000);
}

TEST(LoopSource, after_higherPriorityMadeLater_runsFirst) {
    LoopSourceFixture fixture;
    const auto later = LoopSource::after({}, fixture.note("idle"), fixture.place(G_PRIORITY_DEFAULT_IDLE));
    const auto first = LoopSource::after({}, fixture.note("urgent"), fixture.place(G_PRIORITY_HIGH));
    fixture.turnAll();
    EXPECT_EQ(fixture.log, (Log{"urgent", "idle"}));
}

TEST(LoopSource, reset_beforeItsTime_neverRunsAndWakesNobody) {
    LoopSourceFixture fixture;
    auto source = LoopSource::after(milliseconds(1), fixture.note("never"), fixture.place());
    source.reset();
    EXPECT_FALSE(source.isSet());
    EXPECT_EQ(fixture.loop.sleepTime(), -1);
    g_usleep(2000);
    EXPECT_FALSE(fixture.loop.turn());
}

TEST(LoopSource, destroyed_beforeItsTime_neverRunsAndLetsItsWorkGo) {
    LoopSourceFixture fixture;
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> observer = held;
    {
        const auto source = LoopSource::after(
            {}, [held = std::move(held), &fixture] { fixture.log.emplace_back("never"); }, fixture.place());
    }
    EXPECT_TRUE(observer.expired());
    EXPECT_FALSE(fixture.loop.turn());
}

TEST(LoopSource, after_workThatPutsAnotherInItsPlace_bothRun) {
    LoopSourceFixture fixture;
    LoopSource source;
    // The text is longer than what the work could hold without memory of its own, which would be gone too early.
    const std::string text(200, 'x');
    source = LoopSource::after(
        {},
        [&, text] {
            EXPECT_FALSE(source.isSet());
            source = LoopSource::after({}, fixture.note("second"), fixture.place());
            fixture.log.push_back(text);
        },
        fixture.place());
    fixture.turnAll();
    EXPECT_EQ(fixture.log, (Log{text, "second"}));
}

TEST(LoopSource, after_done_letsItsWorkGo) {
    LoopSourceFixture fixture;
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> observer = held;
    const auto source = LoopSource::after(
        {}, [held = std::move(held)] {}, fixture.place());
    fixture.turnAll();
    EXPECT_TRUE(observer.expired());
}

TEST(LoopSource, whenReadable_untilItIsRead_runsEachTurn) {
    LoopSourceFixture fixture;
    const Pipe pipe;
    const auto source = LoopSource::whenReadable(pipe.reading.get(), fixture.note("readable"), fixture.place());
    EXPECT_FALSE(fixture.loop.turn());
    ASSERT_EQ(write(pipe.writing.get(), "x", 1), 1);
    fixture.loop.turn();
    fixture.loop.turn();
    EXPECT_EQ(fixture.log, (Log{"readable", "readable"}));
    char byte = 0;
    ASSERT_EQ(read(pipe.reading.get(), &byte, 1), 1);
    EXPECT_FALSE(fixture.loop.turn());
    EXPECT_TRUE(source.isSet());
}

TEST(LoopSource, whenReadable_otherEndCloses_runs) {
    LoopSourceFixture fixture;
    Pipe pipe;
    const auto source = LoopSource::whenReadable(pipe.reading.get(), fixture.note("closed"), fixture.place());
    pipe.writing.reset();
    EXPECT_TRUE(fixture.loop.turn());
    EXPECT_EQ(fixture.log, Log{"closed"});
}

TEST(LoopSource, whenReadable_workThatReleasesItsSource_runsOnce) {
    LoopSourceFixture fixture;
    Pipe pipe;
    LoopSource source;
    source = LoopSource::whenReadable(
        pipe.reading.get(),
        [&] {
            source.reset();
            fixture.log.emplace_back("once");
        },
        fixture.place());
    pipe.writing.reset();
    fixture.turnAll();
    EXPECT_EQ(fixture.log, Log{"once"});
}

TEST(LoopSource, whenReadable_workThatRunsALoopOfItsOwn_isServedThereToo) {
    LoopSourceFixture fixture;
    Pipe pipe;
    const auto source = LoopSource::whenReadable(
        pipe.reading.get(),
        [&] {
            fixture.log.emplace_back("in");
            if (fixture.log.size() == 1) {
                fixture.loop.turn();
                fixture.log.emplace_back("out");
            }
        },
        fixture.place());
    pipe.writing.reset();
    fixture.loop.turn();
    EXPECT_EQ(fixture.log, (Log{"in", "in", "out"}));
}

TEST(LoopSource, whenever_conditionComesAndGoes_runsWhileItHolds) {
    LoopSourceFixture fixture;
    bool isReady = false;
    const auto source = LoopSource::whenever([&] { return isReady; }, fixture.note("ready"), fixture.place());
    EXPECT_FALSE(fixture.loop.turn());
    EXPECT_EQ(fixture.loop.sleepTime(), -1);
    isReady = true;
    EXPECT_TRUE(fixture.loop.turn());
    EXPECT_TRUE(fixture.loop.turn());
    isReady = false;
    EXPECT_FALSE(fixture.loop.turn());
    EXPECT_EQ(fixture.log, (Log{"ready", "ready"}));
}

TEST(LoopSource, whenever_withADescriptor_runsForEither) {
    LoopSourceFixture fixture;
    Pipe pipe;
    bool isReady = false;
    const auto source =
        LoopSource::whenever([&] { return isReady; }, fixture.note("ready"), fixture.place(), pipe.reading.get());
    EXPECT_FALSE(fixture.loop.turn());
    isReady = true;
    EXPECT_TRUE(fixture.loop.turn());
    isReady = false;
    EXPECT_FALSE(fixture.loop.turn());
    pipe.writing.reset();
    EXPECT_TRUE(fixture.loop.turn());
}

}  // namespace
}  // namespace vantrel
