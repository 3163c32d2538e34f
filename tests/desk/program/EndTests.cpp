// How the agent ends, and what does not end it.
#include <gtest/gtest.h>

#include <csignal>
#include <optional>
#include <string>

#include "tests/desk/program/ApplicationOnBus.hpp"
#include "tests/desk/program/ProgramRun.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/KeyGrab.hpp"
#include "tests/desk/support/ProcessActivity.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

TEST(End, signal_isTheOrdinaryEnd) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        Desk desk;
        const auto agent = desk.startAgent();
        agent->sendSignal(signal);
        EXPECT_EQ(agent->waitForExit(), ordinaryEnd) << signal;
        EXPECT_EQ(agent->standardError(), "") << signal;
        EXPECT_FALSE(isHeldByAnotherProgram(desk.connection(), hyper(keys::d))) << signal;
    }
}

TEST(End, signalWhileGliding_endsAtOnce) {
    Desk desk;
    desk.defaults().writeText("animation", "glide");
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().catchDeparture(onMain));
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
}

TEST(End, otherSignals_doNotEndIt) {
    Desk desk;
    const auto agent = desk.startAgent();
    agent->sendSignal(SIGPIPE);
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond));
    EXPECT_TRUE(agent->isRunning());
}

TEST(End, afterTheEnd_anotherStartBecomesTheAgent) {
    Desk desk;
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(desk.startAgent()->terminate(), ordinaryEnd);
    }
    EXPECT_EQ(desk.startAgent()->kill(), (ExitStatus{.code = std::nullopt, .signal = SIGKILL}));
    EXPECT_EQ(desk.startAgent()->terminate(), ordinaryEnd);
}

TEST(End, xServerGoesAway_oneLineAndOne) {
    for (const bool hasSessionBus : {true, false}) {
        Desk desk({.hasSessionBus = hasSessionBus});
        const auto agent = desk.startAgent();
        desk.pointer().moveTo({100, 200});
        desk.keyboard().type(hyper(keys::s));
        ASSERT_TRUE(waitUntil([&] { return desk.defaults().read("savedPoints").has_value(); }));
        desk.server().stop();
        EXPECT_EQ(agent->waitForExit(), (ExitStatus{.code = 1, .signal = std::nullopt}));
        EXPECT_EQ(agent->standardError(), "vantrel: the X server went away\n");
        EXPECT_NE(desk.defaults().read("savedPoints").value_or("").find("100"), std::string::npos);
    }
}

TEST(End, xServerGoesAwayWhileGliding_oneLineAndOne) {
    Desk desk;
    desk.defaults().writeText("animation", "glide");
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    ASSERT_TRUE(desk.pointer().catchDeparture(onMain));
    desk.server().stop();
    EXPECT_EQ(agent->waitForExit(), (ExitStatus{.code = 1, .signal = std::nullopt}));
    EXPECT_EQ(agent->standardError(), "vantrel: the X server went away\n");
}

TEST(End, xServerGoesAwayRightAfterAPress_oneLineAndOne) {
    Desk desk;
    const auto agent = desk.startAgent();
    // The agent finds the press and the end of the server in one look.
    agent->sendSignal(SIGSTOP);
    desk.keyboard().type(hyper(keys::d));
    desk.connection().synchronise();
    desk.server().stop();
    agent->sendSignal(SIGCONT);
    EXPECT_EQ(agent->waitForExit(), (ExitStatus{.code = 1, .signal = std::nullopt}));
    EXPECT_EQ(agent->standardError(), "vantrel: the X server went away\n");
}

TEST(End, busGoesAway_theAgentStays) {
    Desk desk;
    const auto agent = desk.startAgent();
    {
        ApplicationOnBus application(desk.bus().address());
        ASSERT_TRUE(waitUntil([&] { return !application.owner().empty(); }));
    }
    // GLib itself complains of each call that is on its way when the bus goes.
    ASSERT_TRUE(waitUntilAtRest(agent->processId()));
    desk.pointer().moveTo(onMain);
    desk.bus().stop();
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond));
    EXPECT_EQ(runVantrel(desk.environment(), {"vantrel://previous"}).exitCode, 0);
    EXPECT_TRUE(desk.pointer().waitFor(onMain));
    EXPECT_EQ(agent->standardError(), "");
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
}

}  // namespace
}  // namespace vantrel::desk
