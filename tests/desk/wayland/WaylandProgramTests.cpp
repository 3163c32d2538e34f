// The program in a Wayland session of any kind: one agent each, what other starts hand over, the end of the compositor.
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>
#include <tuple>

#include "Vantrel/Handles/FileContents.hpp"
#include "tests/desk/support/ProcessActivity.hpp"
#include "tests/desk/wayland/support/InstalledCompositors.hpp"
#include "tests/desk/wayland/support/WaylandDesk.hpp"

namespace vantrel::desk {
namespace {

constexpr ExitStatus success{.code = 0, .signal = std::nullopt};
constexpr ExitStatus failure{.code = 1, .signal = std::nullopt};

constexpr LayoutPoint saved{.x = -100, .y = 300};
/// Goes to a saved point, for which the pointer need not be read: a busy compositor may have no time for that.
constexpr auto toSavedPoint = "vantrel:manual";

void storeSavedPoint(const WaylandDesk& desk) {
    desk.defaults().writeData(
        "savedPoints", R"([{"id":"00000000-0000-4000-8000-000000000001","name":"One","point":{"x":-100,"y":300}}])");
}

bool isOneLine(const std::string& text) {
    return text.ends_with('\n') && std::count(text.begin(), text.end(), '\n') == 1;
}

class WaylandProgram : public testing::TestWithParam<CompositorKind> {
  protected:
    WaylandDesk desk{GetParam().start(WaylandDesk::twoOutputs())};
};

INSTANTIATE_TEST_SUITE_P(Compositors, WaylandProgram, testing::ValuesIn(installedCompositors()),
                         [](const auto& test) { return test.param.name; });

/// What libwayland's log says was taken of the compositor's globals.
std::set<std::string> globalsTakenIn(const std::string& log) {
    std::set<std::string> taken;
    const std::regex request(R"re(bind\(\d+, "(\w+)")re");
    for (std::sregex_iterator found(log.begin(), log.end(), request), end; found != end; ++found) {
        taken.insert((*found)[1]);
    }
    return taken;
}

/// docs/security.md tells people what is asked of their desktop.
TEST_P(WaylandProgram, globals_areThoseThatArePublished) {
    desk.environment().set("WAYLAND_DEBUG", "client");
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump("vantrel://next", centreOfSecond));
    const auto page = contentsOf(VANTREL_SECURITY_PAGE);
    ASSERT_TRUE(page);
    const auto taken = globalsTakenIn(agent->standardError());
    EXPECT_TRUE(taken.contains("zwlr_layer_shell_v1"));
    for (const std::string& global : taken) {
        EXPECT_NE(page->find('`' + global + '`'), std::string::npos) << global;
    }
}

TEST_P(WaylandProgram, secondStart_saysSoAndEnds) {
    const auto agent = desk.startAgent();
    const auto second = desk.startProgram();
    EXPECT_EQ(second->waitForExit(), success);
    EXPECT_NE(second->standardError().find("already running"), std::string::npos) << second->standardError();
    EXPECT_TRUE(isOneLine(second->standardError()));
    EXPECT_TRUE(agent->isRunning());
}

TEST_P(WaylandProgram, secondStartWithURL_hasTheAgentObeyIt) {
    storeSavedPoint(desk);
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    const auto second = desk.startProgram({toSavedPoint});
    EXPECT_EQ(second->waitForExit(), success);
    EXPECT_EQ(second->standardError(), "");
    EXPECT_TRUE(desk.person().waitFor(saved));
}

TEST_P(WaylandProgram, firstStartWithURL_becomesTheAgentAndObeys) {
    storeSavedPoint(desk);
    desk.person().moveTo(onMain);
    const auto agent = desk.startProgram({toSavedPoint});
    EXPECT_TRUE(desk.person().waitFor(saved));
    EXPECT_TRUE(agent->isRunning());
}

TEST_P(WaylandProgram, twoSessionsOneRuntimeDirectory_eachHasItsAgent) {
    WaylandDesk other(GetParam().start(WaylandDesk::twoOutputs()));
    // A display of another directory is named by its path.
    other.environment().set("XDG_RUNTIME_DIR", desk.compositor().runtimeDirectory().native());
    other.environment().set("WAYLAND_DISPLAY", other.compositor().socket().native());
    const auto agent = desk.startAgent();
    storeSavedPoint(other);
    other.person().moveTo(onMain);
    const auto otherAgent = other.startProgram({toSavedPoint});
    EXPECT_TRUE(other.person().waitFor(saved));
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump("vantrel://next", centreOfSecond));
    EXPECT_TRUE(other.jump("vantrel://next", {.x = 320, .y = 240}));
    EXPECT_TRUE(desk.person().staysAt(centreOfSecond));
    EXPECT_TRUE(agent->isRunning());
    EXPECT_TRUE(otherAgent->isRunning());
}

TEST_P(WaylandProgram, killed_theNextStartIsTheAgent) {
    for (int round = 0; round < 3; ++round) {
        const auto agent = desk.startAgent();
        desk.person().moveTo(onMain);
        EXPECT_TRUE(desk.jump("vantrel://next", centreOfSecond));
        agent->kill();
    }
}

TEST_P(WaylandProgram, compositorEnds_oneLineAndOne) {
    const auto agent = desk.startAgent();
    desk.compositor().stop();
    EXPECT_EQ(agent->waitForExit(), failure);
    EXPECT_EQ(agent->standardError(), GetParam().isAwaitedWhenGone ? "vantrel: cannot connect to the Wayland display " +
                                                                         desk.compositor().displayName() + "\n"
                                                                   : "vantrel: the Wayland compositor went away\n");
}

class WaylandProgramEnd : public testing::TestWithParam<std::tuple<CompositorKind, int>> {
  protected:
    WaylandDesk desk{std::get<0>(GetParam()).start(WaylandDesk::twoOutputs())};
};

TEST_P(WaylandProgramEnd, signal_endsInTheOrdinaryWay) {
    const auto agent = desk.startAgent();
    agent->sendSignal(std::get<1>(GetParam()));
    EXPECT_EQ(agent->waitForExit(), success);
    EXPECT_EQ(agent->standardError(), "");
    EXPECT_FALSE(std::filesystem::exists(desk.agentSocket()));
}

INSTANTIATE_TEST_SUITE_P(Signals, WaylandProgramEnd,
                         testing::Combine(testing::ValuesIn(installedCompositors()),
                                          testing::Values(SIGTERM, SIGINT, SIGHUP)),
                         [](const auto& test) {
                             return std::get<0>(test.param).name + "_" + std::to_string(std::get<1>(test.param));
                         });

TEST_P(WaylandProgram, frozenCompositor_jumpIsNoneAndTheNextWorks) {
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.compositor().freeze();
    EXPECT_TRUE(desk.open("vantrel://next"));
    EXPECT_TRUE(waitUntilAtRest(agent->processId()));
    desk.compositor().thaw();
    EXPECT_TRUE(desk.person().staysAt(onMain));
    EXPECT_TRUE(desk.jump("vantrel://next", centreOfSecond));
    EXPECT_EQ(agent->standardError(), "");
}

TEST_P(WaylandProgram, frozenCompositor_endsAllTheSame) {
    const auto agent = desk.startAgent();
    desk.compositor().freeze();
    agent->sendSignal(SIGTERM);
    EXPECT_EQ(agent->waitForExit(), success);
    desk.compositor().thaw();
}

}  // namespace
}  // namespace vantrel::desk
