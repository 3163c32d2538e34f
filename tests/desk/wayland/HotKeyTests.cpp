// Hot keys in sessions of all compositors in which programs can bind keys.
#include <gtest/gtest.h>

#include <tuple>

#include "tests/desk/wayland/support/InstalledCompositors.hpp"
#include "tests/desk/wayland/support/WaylandDesk.hpp"

namespace vantrel::desk {
namespace {

class WaylandHotKeys : public testing::TestWithParam<CompositorKind> {
  protected:
    void start(const std::string& layouts = "us", const std::string& options = {}) {
        desk = std::make_unique<WaylandDesk>(GetParam().start(WaylandDesk::twoOutputs()), layouts, options);
        agent = desk->startAgent();
        desk->person().moveTo(onMain);
    }

    /// Presses until that gets the pointer there: the compositor, or the agent, may be about to change something.
    bool comesToJump() {
        return waitUntil([&] {
            desk->person().moveTo(onMain);
            desk->person().type(hyper(keys::d));
            return desk->person().waitFor(centreOfSecond, std::chrono::seconds(1));
        });
    }

    std::unique_ptr<WaylandDesk> desk;
    std::unique_ptr<AgentProcess> agent;
};

INSTANTIATE_TEST_SUITE_P(Compositors, WaylandHotKeys, testing::ValuesIn(compositorsWithHotKeys()),
                         [](const auto& test) { return test.param.name; });

class WaylandBindings : public WaylandHotKeys {};

INSTANTIATE_TEST_SUITE_P(Compositors, WaylandBindings, testing::ValuesIn(compositorsWithBindings()),
                         [](const auto& test) { return test.param.name; });

TEST_P(WaylandHotKeys, pressed_jump) {
    start();
    EXPECT_TRUE(desk->jump(hyper(keys::d), centreOfSecond));
    EXPECT_TRUE(desk->jump(controlOptionCommand(keys::rightArrow), onMain));
    EXPECT_TRUE(desk->jump(controlOptionCommand(keys::leftArrow), centreOfSecond));
    EXPECT_EQ(agent->standardError(), "");
}

TEST_P(WaylandHotKeys, pointSaved_comesBackThere) {
    constexpr LayoutPoint saved{.x = 310, .y = 205};
    start();
    desk->person().moveTo(saved);
    ASSERT_TRUE(waitUntil([&] {
        desk->person().type(hyper(keys::s));
        return waitUntil([&] { return desk->defaults().read("savedPoints").has_value(); }, std::chrono::seconds(5));
    }));
    desk->person().moveTo({.x = -100, .y = 300});
    EXPECT_TRUE(desk->jump(controlOptionCommand(keys::m), saved));
}

TEST_P(WaylandHotKeys, wrongChords_doNothing) {
    start();
    desk->person().type(controlOptionCommand(keys::d));
    desk->person().type({keys::d});
    desk->person().type({keys::control, keys::option, keys::shift, keys::command, keys::rightArrow});
    EXPECT_TRUE(desk->person().staysAt(onMain));
    EXPECT_TRUE(desk->jump(hyper(keys::d), centreOfSecond)) << "the right one does";
}

TEST_P(WaylandHotKeys, heldKey_actsOnce) {
    start();
    const auto holdAnew = [&] {
        desk->person().letGo();
        desk->person().hold(hyper(keys::d));
    };
    ASSERT_TRUE(desk->jump(holdAnew, centreOfSecond));
    EXPECT_TRUE(desk->person().staysAt(centreOfSecond, std::chrono::milliseconds(1500)));
    desk->person().letGo();
    EXPECT_TRUE(desk->jump(hyper(keys::d), onMain)) << "the next press acts again";
}

TEST_P(WaylandHotKeys, capsLockOn_jump) {
    start();
    desk->person().type({keys::capsLock});
    EXPECT_TRUE(desk->jump(hyper(keys::d), centreOfSecond));
    EXPECT_TRUE(desk->jump(controlOptionCommand(keys::rightArrow), onMain));
}

TEST_P(WaylandHotKeys, numLockOn_jump) {
    start();
    desk->person().type({keys::numLock});
    EXPECT_TRUE(desk->jump(hyper(keys::d), centreOfSecond));
    EXPECT_TRUE(desk->jump(controlOptionCommand(keys::rightArrow), onMain));
}

TEST_P(WaylandBindings, capsLockAsHyper_jump) {
    start("us", "vantrel:hyper");
    EXPECT_TRUE(desk->jump({keys::capsLock, keys::d}, centreOfSecond));
    EXPECT_TRUE(desk->jump(hyper(keys::d), onMain)) << "the four keys themselves go on working";
}

TEST_P(WaylandBindings, russianAlone_jumpAndTheSmallerChordDoesNot) {
    start("ru");
    desk->person().type(controlOptionCommand(keys::d));
    EXPECT_TRUE(desk->person().staysAt(onMain));
    EXPECT_TRUE(desk->jump(hyper(keys::d), centreOfSecond));
}

TEST_P(WaylandBindings, russianAsTheActiveLayout_jump) {
    start("us,ru");
    desk->person().chooseLayout(1);
    EXPECT_TRUE(desk->jump(hyper(keys::d), centreOfSecond));
    desk->person().chooseLayout(0);
    EXPECT_TRUE(desk->jump(hyper(keys::d), onMain));
}

TEST_P(WaylandBindings, chordOfThePersons_staysTheirs) {
    desk = std::make_unique<WaylandDesk>(GetParam().startWithHyperDTaken(WaylandDesk::twoOutputs()));
    agent = desk->startAgent();
    desk->person().moveTo(onMain);
    desk->person().type(hyper(keys::d));
    EXPECT_TRUE(waitUntil([&] { return std::filesystem::exists(personsTrace(desk->compositor())); }));
    EXPECT_TRUE(desk->person().staysAt(onMain)) << "and nothing else comes of it";
    EXPECT_TRUE(desk->jump(controlOptionCommand(keys::rightArrow), centreOfSecond)) << "the others are ours";
}

TEST_P(WaylandBindings, configurationReadAgain_jump) {
    start();
    for (int round = 0; round < 3; ++round) {
        GetParam().reload(desk->compositor());
        EXPECT_TRUE(comesToJump());
    }
    EXPECT_EQ(agent->standardError(), "");
}

TEST_P(WaylandHotKeys, agentEndedOrKilled_chordIsFreeAndTheNextHasItOnce) {
    start();
    for (const bool isKilled : {false, true}) {
        ASSERT_TRUE(desk->jump(hyper(keys::d), centreOfSecond)) << "once";
        ASSERT_TRUE(desk->jump(hyper(keys::d), onMain));
        if (isKilled) {
            agent->kill();
        } else {
            agent->terminate();
        }
        desk->person().type(hyper(keys::d));
        EXPECT_TRUE(desk->person().staysAt(onMain));
        agent = desk->startAgent();
    }
    EXPECT_TRUE(desk->jump(hyper(keys::d), centreOfSecond));
}

}  // namespace
}  // namespace vantrel::desk
