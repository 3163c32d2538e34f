#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

#include <array>
#include <cerrno>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "Vantrel/Desktop/Loop/GLibRunLoop.hpp"
#include "tests/unit/loop/AllocationCount.hpp"
#include "tests/unit/loop/TestLoop.hpp"

namespace vantrel::desktop {
namespace {

constexpr Seconds glideInterval{0.16 / 18};

/// What the kernel says of each timer descriptor of this process after the label.
std::vector<std::string> kernelTimerFields(const std::string& label) {
    std::vector<std::string> fields;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fdinfo")) {
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            if (line.rfind(label, 0) == 0) {
                fields.push_back(line.substr(label.size()));
            }
        }
    }
    return fields;
}

/// The interval of each, "(seconds, nanoseconds)".
std::vector<std::string> kernelTimerIntervals() {
    return kernelTimerFields("it_interval: ");
}

std::int64_t microseconds(Seconds duration) {
    return std::llround(duration.count() * 1e6);
}

/// Makes the kernel refuse this thread every timer descriptor from now on, as when none is left. A lower limit on all
/// descriptors would also take away the pipe with which the undefined-behaviour sanitizer probes memory.
void refuseKernelTimers() {
    std::array<sock_filter, 4> program{{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_timerfd_create, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EMFILE),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
    ASSERT_EQ(prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0);
    ASSERT_EQ(prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter), 0);
}

/// Lets the loop be late by some intervals on purpose, and checks that they were not made up for. `first` is the moment
/// at which the timer was made.
void expectOneFiringForALateTurn(TestLoop& loop, const int& firings, gint64 first, Seconds interval) {
    constexpr int missed = 5;
    loop.turnUntil([&firings] { return firings == 1; });
    const gint64 lateFrom = g_get_monotonic_time();
    g_usleep(static_cast<gulong>(microseconds(interval) * (missed + 1)));
    while (loop.turn()) {
    }
    // Of the intervals that passed before the turn, at most one was fired for; more may have passed during the turns.
    EXPECT_GE(firings, 2);
    const gint64 onTime = g_get_monotonic_time() - lateFrom - microseconds(interval) * missed;
    EXPECT_LE(firings, 1 + onTime / microseconds(interval) + 1);
    loop.turnUntil([&firings] { return firings >= 10; });
    // Ten firings and those missed cannot be over before as many intervals are, counted from the start.
    EXPECT_GE(g_get_monotonic_time() - first, microseconds(interval) * (10 + missed - 1));
}

TEST(RunLoopTimer, scheduledTimer_glideInterval_isKeptToTheNanosecond) {
    TestLoop loop;
    GLibRunLoop runLoop(loop.context());
    const auto timer = runLoop.scheduledTimer(glideInterval, true, [](Timer&) {});
    EXPECT_EQ(kernelTimerIntervals(), std::vector<std::string>{"(0, 8888889)"});
}

TEST(RunLoopTimer, scheduledTimer_anyInterval_isOnTheClockThatNobodySets) {
    TestLoop loop;
    GLibRunLoop runLoop(loop.context());
    const auto timer = runLoop.scheduledTimer(glideInterval, true, [](Timer&) {});
    EXPECT_EQ(kernelTimerFields("clockid: "), std::vector<std::string>{std::to_string(CLOCK_MONOTONIC)});
}

TEST(RunLoopTimer, scheduledTimer_repeating_firesAfterEachInterval) {
    TestLoop loop;
    GLibRunLoop runLoop(loop.context());
    int firings = 0;
    const gint64 begin = g_get_monotonic_time();
    const auto timer = runLoop.scheduledTimer(glideInterval, true, [&firings](Timer&) { ++firings; });
    const bool hasFired = loop.turn();
    EXPECT_TRUE(!hasFired || g_get_monotonic_time() - begin >= microseconds(glideInterval)) << "before its time";
    loop.turnUntil([&firings] { return firings == 18; });
    EXPECT_GE(g_get_monotonic_time() - begin, 160000);
    EXPECT_TRUE(timer->isValid());
}

TEST(RunLoopTimer, scheduledTimer_lateLoop_firesOnceAndKeepsTheSchedule) {
    TestLoop loop;
    GLibRunLoop runLoop(loop.context());
    int firings = 0;
    const gint64 begin = g_get_monotonic_time();
    const auto timer = runLoop.scheduledTimer(glideInterval, true, [&firings](Timer&) { ++firings; });
    expectOneFiringForALateTurn(loop, firings, begin, glideInterval);
}

TEST(RunLoopTimer, scheduledTimer_noDescriptorLeft_keepsTheScheduleToTheMillisecond) {
    TestLoop loop;
    GLibRunLoop runLoop(loop.context());
    int firings = 0;
    const gint64 begin = g_get_monotonic_time();
    std::shared_ptr<Timer> timer;
    std::thread([&] {
        refuseKernelTimers();
        timer = runLoop.scheduledTimer(glideInterval, true, [&firings](Timer&) { ++firings; });
    }).join();
    EXPECT_TRUE(kernelTimerIntervals().empty());
    expectOneFiringForALateTurn(loop, firings, begin, glideInterval);
    timer->invalidate();
    EXPECT_EQ(loop.sleepTime(), -1);
}

TEST(RunLoopTimer, scheduledTimer_ticks_allocateNothing) {
    TestLoop loop;
    GLibRunLoop runLoop(loop.context());
    int firings = 0;
    std::size_t afterFirst = 0;
    std::size_t afterLast = 0;
    const auto timer = runLoop.scheduledTimer(Seconds(0.001), true, [&](Timer&) {
        ++firings;
        (firings == 1 ? afterFirst : afterLast) = allocationCount();
    });
    loop.turnUntil([&firings] { return firings >= 10; });
    EXPECT_EQ(afterLast, afterFirst);
}

TEST(RunLoopTimer, scheduledTimer_notRepeating_firesOnceAndIsInvalid) {
    TestLoop loop;
    GLibRunLoop runLoop(loop.context());
    int firings = 0;
    const auto timer = runLoop.scheduledTimer(Seconds(0.001), false, [&firings](Timer&) { ++firings; });
    loop.turnUntil([&firings] { return firings > 0; });
    EXPECT_FALSE(timer->isValid());
    EXPECT_EQ(loop.sleepTime(), -1);
    EXPECT_TRUE(kernelTimerIntervals().empty());
}

TEST(RunLoopTimer, invalidate_fromItsOwnAction_stopsAndClosesTheDescriptor) {
    TestLoop loop;
    GLibRunLoop runLoop(loop.context());
    int firings = 0;
    const auto timer = runLoop.scheduledTimer(Seconds(0.001), true, [&firings](Timer& firing) {
        ++firings;
        firing.invalidate();
    });
    loop.turnUntil([&firings] { return firings > 0; });
    EXPECT_FALSE(timer->isValid());
    EXPECT_TRUE(kernelTimerIntervals().empty());
    g_usleep(3000);
    EXPECT_FALSE(loop.turn());
    EXPECT_EQ(firings, 1);
}

TEST(RunLoopTimer, invalidate_whenAFiringIsDue_keepsItFromRunning) {
    TestLoop loop;
    GLibRunLoop runLoop(loop.context());
    int firings = 0;
    const auto timer = runLoop.scheduledTimer(Seconds(0.001), true, [&firings](Timer&) { ++firings; });
    g_usleep(3000);
    timer->invalidate();
    timer->invalidate();
    EXPECT_FALSE(loop.turn());
    EXPECT_EQ(firings, 0);
}

TEST(RunLoopTimer, release_lastReference_stopsAndClosesTheDescriptor) {
    TestLoop loop;
    GLibRunLoop runLoop(loop.context());
    auto timer = runLoop.scheduledTimer(Seconds(0.001), true, [](Timer&) { FAIL(); });
    timer.reset();
    EXPECT_TRUE(kernelTimerIntervals().empty());
    g_usleep(3000);
    EXPECT_FALSE(loop.turn());
}

TEST(RunLoopTimer, release_fromItsOwnAction_isSafe) {
    TestLoop loop;
    GLibRunLoop runLoop(loop.context());
    std::shared_ptr<Timer> timer;
    std::string kept;
    // The text is longer than what the action could hold without memory of its own, which would be gone too early.
    const std::string text(200, 'x');
    timer = runLoop.scheduledTimer(Seconds(0.001), true, [&timer, &kept, text](Timer&) {
        timer.reset();
        kept = text;
    });
    loop.turnUntil([&kept] { return !kept.empty(); });
    EXPECT_EQ(kept, text);
    EXPECT_TRUE(kernelTimerIntervals().empty());
}

TEST(RunLoopTimer, scheduledTimer_replacedFromItsOwnAction_theNewOneRuns) {
    TestLoop loop;
    GLibRunLoop runLoop(loop.context());
    std::shared_ptr<Timer> timer;
    int firings = 0;
    timer = runLoop.scheduledTimer(Seconds(0.001), true, [&](Timer& firing) {
        firing.invalidate();
        timer = runLoop.scheduledTimer(Seconds(0.001), true, [&firings](Timer&) { ++firings; });
    });
    loop.turnUntil([&firings] { return firings == 3; });
    EXPECT_EQ(kernelTimerIntervals().size(), 1U);
}

TEST(RunLoopTimer, scheduledTimer_intervalOutOfRange_isBroughtIntoRange) {
    struct Case {
        double interval;
        const char* kept;
    };
    for (const auto& [interval, kept] : {Case{0, "(0, 100000)"}, Case{-1, "(0, 100000)"},
                                         Case{std::nan(""), "(0, 100000)"}, Case{1e300, "(1000000000, 0)"}}) {
        TestLoop loop;
        GLibRunLoop runLoop(loop.context());
        const auto timer = runLoop.scheduledTimer(Seconds(interval), true, [](Timer&) {});
        EXPECT_EQ(kernelTimerIntervals(), std::vector<std::string>{kept});
    }
}

}  // namespace
}  // namespace vantrel::desktop
