// The program as a shell and a session see it: arguments, exit codes, signals, one agent a display.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/KeyGrab.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

bool isOneLine(const std::string& text) {
    return text.ends_with('\n') && std::count(text.begin(), text.end(), '\n') == 1;
}

class ProgramEnd : public testing::TestWithParam<int> {};

TEST_P(ProgramEnd, signal_endsInTheOrdinaryWay) {
    Desk desk;
    const auto agent = desk.startAgent();
    agent->sendSignal(GetParam());
    EXPECT_EQ(agent->waitForExit(), ordinaryEnd);
    EXPECT_EQ(agent->standardError(), "");
}

INSTANTIATE_TEST_SUITE_P(Signals, ProgramEnd, testing::Values(SIGTERM, SIGINT, SIGHUP));

TEST(Program, serverGoesAway_endsWithOneLine) {
    Desk desk;
    const auto agent = desk.startAgent();
    desk.server().stop();
    EXPECT_EQ(agent->waitForExit(), (ExitStatus{.code = 1, .signal = std::nullopt}));
    EXPECT_TRUE(isOneLine(agent->standardError())) << agent->standardError();
}

TEST(Program, busGoesAway_hotKeysStillWork) {
    Desk desk;
    const auto agent = desk.startAgent();
    desk.bus().stop();
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond)) << desk.pointer().position();
    EXPECT_TRUE(agent->isRunning());
}

class ProgramSecondStart : public testing::TestWithParam<bool> {};

TEST_P(ProgramSecondStart, whileTheAgentRuns_saysSoAndEnds) {
    Desk desk({.hasSessionBus = GetParam()});
    const auto agent = desk.startAgent();
    const auto secondStart = desk.startProgram();
    EXPECT_EQ(secondStart->waitForExit(), ordinaryEnd);
    EXPECT_TRUE(isOneLine(secondStart->standardError())) << secondStart->standardError();
    EXPECT_NE(secondStart->standardError().find("already running"), std::string::npos) << secondStart->standardError();
    EXPECT_TRUE(agent->isRunning());
    EXPECT_TRUE(isHeldByAnotherProgram(desk.connection(), hyper(keys::d)));
}

TEST_P(ProgramSecondStart, withAURL_hasTheAgentObeyIt) {
    Desk desk({.hasSessionBus = GetParam()});
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(onMain);
    const auto secondStart = desk.startProgram({"vantrel:next"});
    EXPECT_EQ(secondStart->waitForExit(), ordinaryEnd);
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond)) << desk.pointer().position();
}

INSTANTIATE_TEST_SUITE_P(Bus, ProgramSecondStart, testing::Bool(),
                         [](const auto& test) { return test.param ? "withBus" : "withoutBus"; });

TEST(Program, startWithAURL_noAgentYet_becomesTheAgentAndObeys) {
    Desk desk;
    desk.pointer().moveTo(onMain);
    const auto agent = desk.startProgram({"vantrel:next"});
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond)) << desk.pointer().position();
    EXPECT_TRUE(desk.waitForHotKey(hyper(keys::s)));
    EXPECT_TRUE(agent->isRunning());
}

TEST(Program, twoServersOneBus_eachDisplayHasItsAgent) {
    Desk desk;
    Desk other;
    other.environment().set("DBUS_SESSION_BUS_ADDRESS", desk.bus().address());
    const auto agent = desk.startAgent();
    const auto otherAgent = other.startAgent();
    for (Desk* each : {&desk, &other}) {
        each->pointer().moveTo(onMain);
        each->keyboard().type(hyper(keys::d));
        EXPECT_TRUE(each->pointer().waitFor(centreOfSecond)) << each->pointer().position();
    }
}

struct CommandLine {
    const char* name;
    std::vector<std::string> arguments;
    int code;
    bool complains;
};

class ProgramCommandLine : public testing::TestWithParam<CommandLine> {};

TEST_P(ProgramCommandLine, start_endsAtOnceWithItsCode) {
    Desk desk({.hasSessionBus = false});
    const auto program = desk.startProgram(GetParam().arguments);
    EXPECT_EQ(program->waitForExit(), (ExitStatus{.code = GetParam().code, .signal = std::nullopt}));
    if (GetParam().complains) {
        EXPECT_TRUE(isOneLine(program->standardError())) << program->standardError();
    } else {
        EXPECT_EQ(program->standardError(), "");
    }
}

INSTANTIATE_TEST_SUITE_P(CommandLines, ProgramCommandLine,
                         testing::Values(CommandLine{"help", {"--help"}, 0, false},
                                         CommandLine{"version", {"--version"}, 0, false},
                                         CommandLine{"unknownOption", {"--bogus"}, 2, true},
                                         CommandLine{"noScheme", {"next"}, 2, true},
                                         CommandLine{"goodAndBad", {"vantrel:next", "next"}, 2, true}),
                         [](const auto& test) { return test.param.name; });

TEST(Program, noDisplay_saysSoInOneLine) {
    Desk desk({.hasSessionBus = false});
    desk.environment().unset("DISPLAY");
    const auto program = desk.startProgram();
    EXPECT_EQ(program->waitForExit(), (ExitStatus{.code = 1, .signal = std::nullopt}));
    EXPECT_TRUE(isOneLine(program->standardError())) << program->standardError();
}

TEST(Program, displayThatIsNotThere_saysSoInOneLine) {
    Desk desk({.hasSessionBus = false});
    desk.environment().set("DISPLAY", ":65000");
    const auto program = desk.startProgram();
    EXPECT_EQ(program->waitForExit(), (ExitStatus{.code = 1, .signal = std::nullopt}));
    EXPECT_TRUE(isOneLine(program->standardError())) << program->standardError();
}

}  // namespace
}  // namespace vantrel::desk
