// The program in a Wayland session: one agent each, what other starts hand over, the end of the compositor, the choice
// of the session.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "tests/desk/wayland/support/SwayDesk.hpp"

namespace vantrel::desk {
namespace {

constexpr LayoutPoint onMain = SwayDesk::onMain;
constexpr LayoutPoint centreOfSecond = SwayDesk::centreOfSecond;
constexpr ExitStatus success{.code = 0, .signal = std::nullopt};
constexpr ExitStatus failure{.code = 1, .signal = std::nullopt};

bool isOneLine(const std::string& text) {
    return text.ends_with('\n') && std::count(text.begin(), text.end(), '\n') == 1;
}

TEST(SwayProgram, secondStart_saysSoAndEnds) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    const auto second = desk.startProgram();
    EXPECT_EQ(second->waitForExit(), success);
    EXPECT_NE(second->standardError().find("already running"), std::string::npos) << second->standardError();
    EXPECT_TRUE(isOneLine(second->standardError()));
    EXPECT_TRUE(agent->isRunning());
}

TEST(SwayProgram, secondStartWithURL_hasTheAgentObeyIt) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    for (const LayoutPoint target : {centreOfSecond, onMain}) {
        const auto second = desk.startProgram({"vantrel://teleport"});
        EXPECT_EQ(second->waitForExit(), success);
        EXPECT_EQ(second->standardError(), "");
        EXPECT_TRUE(desk.person().waitFor(target));
    }
}

TEST(SwayProgram, firstStartWithURL_becomesTheAgentAndObeys) {
    SwayDesk desk;
    desk.person().moveTo(onMain);
    const auto agent = desk.startProgram({"vantrel:next"});
    EXPECT_TRUE(desk.person().waitFor(centreOfSecond));
    EXPECT_TRUE(agent->isRunning());
}

TEST(SwayProgram, twoSessionsOneRuntimeDirectory_eachHasItsAgent) {
    SwayDesk desk;
    SwayDesk other;
    // A display of another directory is named by its path.
    other.environment().set("XDG_RUNTIME_DIR", desk.sway().runtimeDirectory().native());
    other.environment().set("WAYLAND_DISPLAY", (other.sway().runtimeDirectory() / other.sway().displayName()).native());
    const auto agent = desk.startAgent();
    const auto otherAgent = other.startProgram();
    EXPECT_TRUE(waitUntil([&] {
        other.person().moveTo(onMain);
        other.person().type(hyper(keys::d));
        return other.person().waitFor(centreOfSecond, std::chrono::milliseconds(200));
    }));
    EXPECT_TRUE(agent->isRunning());
    EXPECT_TRUE(otherAgent->isRunning());
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

TEST(SwayProgram, killed_theNextStartIsTheAgent) {
    SwayDesk desk;
    for (int round = 0; round < 3; ++round) {
        const auto agent = desk.startAgent();
        desk.person().moveTo(onMain);
        EXPECT_TRUE(desk.jump(controlOptionCommand(keys::rightArrow), centreOfSecond));
        agent->kill();
    }
}

TEST(SwayProgram, compositorEnds_oneLineAndOne) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.sway().stop();
    EXPECT_EQ(agent->waitForExit(), failure);
    EXPECT_EQ(agent->standardError(), "vantrel: the Wayland compositor went away\n");
}

class SwayProgramEnd : public testing::TestWithParam<int> {};

TEST_P(SwayProgramEnd, signal_endsInTheOrdinaryWay) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    agent->sendSignal(GetParam());
    EXPECT_EQ(agent->waitForExit(), success);
    EXPECT_EQ(agent->standardError(), "");
    EXPECT_FALSE(
        std::filesystem::exists(desk.sway().runtimeDirectory() / ("vantrel-" + desk.sway().displayName() + ".sock")));
}

INSTANTIATE_TEST_SUITE_P(Signals, SwayProgramEnd, testing::Values(SIGTERM, SIGINT, SIGHUP));

TEST(SwayProgram, frozenCompositor_endsAllTheSame) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.sway().freeze();
    agent->sendSignal(SIGTERM);
    EXPECT_EQ(agent->waitForExit(), success);
    desk.sway().thaw();
}

}  // namespace
}  // namespace vantrel::desk
