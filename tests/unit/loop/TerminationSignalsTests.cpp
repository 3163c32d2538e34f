#include "Vantrel/Desktop/Application/TerminationSignals.hpp"

#include "tests/unit/loop/TestLoop.hpp"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

namespace vantrel::desktop {
namespace {

/// Has another process send the signal to this one, and waits until it has.
void sendFromAnotherProcess(int signal) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(kill(getppid(), signal) == 0 ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
}

class TerminationSignalsOf : public testing::TestWithParam<int> {};

TEST_P(TerminationSignalsOf, received_fromAnotherProcess_isTold) {
    TestLoop loop;
    int received = 0;
    const TerminationSignals signals([&] { ++received; }, loop.context());
    sendFromAnotherProcess(GetParam());
    loop.turnUntil([&] { return received > 0; });
    EXPECT_EQ(received, 1);
}

// What GLib does when the session bus goes away while the connection to it is being made.
TEST_P(TerminationSignalsOf, received_fromThisProcess_isNotTold) {
    TestLoop loop;
    int received = 0;
    const TerminationSignals signals([&] { ++received; }, loop.context());
    raise(GetParam());
    kill(getpid(), GetParam());
    while (loop.turn()) {
    }
    EXPECT_EQ(received, 0);
}

INSTANTIATE_TEST_SUITE_P(Signals, TerminationSignalsOf, testing::Values(SIGTERM, SIGINT, SIGHUP),
                         [](const auto& parameter) { return "signal" + std::to_string(parameter.param); });

TEST(TerminationSignals, destroyed_signalsHaveTheirFormerEffect) {
    {
        TestLoop loop;
        const TerminationSignals signals([] {}, loop.context());
    }
    EXPECT_EXIT(raise(SIGTERM), testing::KilledBySignal(SIGTERM), "");
}

}  // namespace
}  // namespace vantrel::desktop
