// One agent a display: what a further start of the program does.
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/desk/program/ProgramRun.hpp"
#include "tests/desk/status/ScreenWindows.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

class SecondStart : public testing::TestWithParam<bool> {
  protected:
    Desk desk_{{.hasSessionBus = GetParam()}};
};

INSTANTIATE_TEST_SUITE_P(OnADesk, SecondStart, testing::Values(true, false),
                         [](const auto& parameter) { return parameter.param ? "withABus" : "withoutABus"; });

TEST_P(SecondStart, noURLs_saysSoAndOpensTheMenu) {
    const auto agent = desk_.startAgent();
    const ProgramOutcome second = runVantrel(desk_.environment());
    EXPECT_EQ(second.exitCode, 0);
    EXPECT_EQ(second.standardError, "vantrel: Vantrel is already running\n");
    EXPECT_EQ(second.standardOutput, "");
    EXPECT_TRUE(waitUntil([&] { return isKeyboardGrabbed(desk_.connection()); }));
    EXPECT_TRUE(agent->isRunning());
    EXPECT_EQ(agent->standardError(), "");
}

TEST_P(SecondStart, url_isHandedOverInSilence) {
    const auto agent = desk_.startAgent();
    desk_.pointer().moveTo(onMain);
    const ProgramOutcome second = runVantrel(desk_.environment(), {"vantrel://next"});
    EXPECT_EQ(second.exitCode, 0);
    EXPECT_EQ(second.standardError, "");
    EXPECT_EQ(second.standardOutput, "");
    EXPECT_TRUE(desk_.pointer().waitFor(centreOfSecond));
    EXPECT_FALSE(isKeyboardGrabbed(desk_.connection()));
}

TEST_P(SecondStart, severalURLs_areObeyedInOrder) {
    const auto agent = desk_.startAgent();
    desk_.pointer().moveTo(onMain);
    // To the second display, saved there, back to where the pointer was, saved there; the stranger is skipped.
    const ProgramOutcome second =
        runVantrel(desk_.environment(), {"vantrel:next", "VANTREL://Save-Point", "https://example.org/",
                                         "vantrel:///previous", "--", "vantrel://save-point?mode=manual"});
    EXPECT_EQ(second.exitCode, 0);
    EXPECT_TRUE(waitUntil([&] {
        const std::string points = desk_.defaults().read("savedPoints").value_or("");
        const auto first = points.find("-512");
        return first != std::string::npos && points.find("700", first) != std::string::npos;
    })) << desk_.defaults().read("savedPoints").value_or("");
    EXPECT_TRUE(desk_.pointer().waitFor(onMain));
}

TEST_P(SecondStart, wrongArgument_neverReachesTheAgent) {
    const auto agent = desk_.startAgent();
    desk_.pointer().moveTo(onMain);
    EXPECT_EQ(runVantrel(desk_.environment(), {"vantrel://next", "next"}).exitCode, 2);
    EXPECT_TRUE(desk_.pointer().staysAt(onMain));
    EXPECT_FALSE(isKeyboardGrabbed(desk_.connection()));
}

TEST_P(SecondStart, manyAtOnce_oneAgentComesOfThem) {
    std::vector<std::unique_ptr<AgentProcess>> starts;
    for (int count = 0; count < 8; ++count) {
        starts.push_back(desk_.startProgram({"vantrel://bogus"}));
    }
    const auto running = [&starts] {
        return std::count_if(starts.begin(), starts.end(), [](const auto& start) { return start->isRunning(); });
    };
    EXPECT_TRUE(waitUntil([&running] { return running() == 1; }));
    for (const auto& start : starts) {
        if (!start->isRunning()) {
            EXPECT_EQ(start->waitForExit(), ordinaryEnd);
        }
    }
    EXPECT_TRUE(desk_.waitForHotKey(hyper(keys::d)));
    EXPECT_EQ(running(), 1);
}

TEST_P(SecondStart, agentIsFrozen_saysThatItDoesNotAnswer) {
    const auto agent = desk_.startAgent();
    agent->sendSignal(SIGSTOP);
    const ProgramOutcome second = runVantrel(desk_.environment(), {"vantrel://next"});
    agent->sendSignal(SIGCONT);
    EXPECT_EQ(second.exitCode, 1);
    EXPECT_EQ(second.standardError, "vantrel: Vantrel is already running, but does not answer\n");
}

TEST(TwoDisplays, onOneBus_eachHasItsAgent) {
    Desk first;
    Desk second({.hasSessionBus = false});
    second.environment().set("DBUS_SESSION_BUS_ADDRESS", first.bus().address());
    const auto firstAgent = first.startAgent();
    const auto secondAgent = second.startAgent();
    first.pointer().moveTo(onMain);
    second.pointer().moveTo(onMain);

    second.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(second.pointer().waitFor(centreOfSecond));
    EXPECT_TRUE(first.pointer().staysAt(onMain));

    first.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(first.pointer().waitFor(centreOfSecond));

    // URLs go to the agent of the display that they were given on, not to the one that has the bus name.
    EXPECT_EQ(runVantrel(second.environment(), {"vantrel://previous"}).exitCode, 0);
    EXPECT_TRUE(second.pointer().waitFor(onMain));
    EXPECT_TRUE(first.pointer().staysAt(centreOfSecond));
}

}  // namespace
}  // namespace vantrel::desk
