// The hot keys in a Hyprland session, and whose keys are whose.
#include <gtest/gtest.h>

#include "tests/desk/wayland/support/HyprlandDesk.hpp"

namespace vantrel::desk {
namespace {

constexpr LayoutPoint onMain = HyprlandDesk::onMain;
constexpr LayoutPoint centreOfSecond = HyprlandDesk::centreOfSecond;
/// Where the person's own binding sends the pointer.
constexpr LayoutPoint persons{.x = 100, .y = 150};
const std::string personsBinding =
    "hl.bind(\"CTRL + ALT + SHIFT + SUPER + D\", hl.dsp.cursor.move({ x = 100, y = 150 }))\n";

TEST(HyprlandSession, hotKeys_jump) {
    HyprlandDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    EXPECT_TRUE(desk.jump(controlOptionCommand(keys::rightArrow), onMain));
    EXPECT_TRUE(desk.jump(controlOptionCommand(keys::leftArrow), centreOfSecond));
    EXPECT_EQ(agent->standardError(), "");
}

TEST(HyprlandSession, savedPoint_comesBackThere) {
    HyprlandDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo({.x = 310, .y = 205});
    desk.person().type(hyper(keys::s));
    ASSERT_TRUE(
        waitUntil([&] { return desk.defaults().read("savedPoints").value_or("").find("310") != std::string::npos; }));
    desk.person().moveTo({.x = -100, .y = 300});
    EXPECT_TRUE(desk.jump(controlOptionCommand(keys::m), {.x = 310, .y = 205}));
}

TEST(HyprlandSession, wrongChords_doNothing) {
    HyprlandDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().type(controlOptionCommand(keys::d));
    desk.person().type({keys::d});
    desk.person().type({keys::control, keys::option, keys::shift, keys::command, keys::rightArrow});
    EXPECT_TRUE(desk.person().staysAt(onMain));
}

TEST(HyprlandSession, heldKey_actsOnce) {
    HyprlandDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().hold(hyper(keys::d));
    ASSERT_TRUE(desk.person().waitFor(centreOfSecond));
    EXPECT_TRUE(desk.person().staysAt(centreOfSecond, std::chrono::milliseconds(1500)));
    desk.person().letGo();
    EXPECT_TRUE(desk.jump(hyper(keys::d), onMain)) << "the next press acts again";
}

class HyprlandLock : public testing::TestWithParam<std::string_view> {};

TEST_P(HyprlandLock, lockOn_jumps) {
    HyprlandDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().type({GetParam()});
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    EXPECT_TRUE(desk.jump(controlOptionCommand(keys::rightArrow), onMain));
}

INSTANTIATE_TEST_SUITE_P(Locks, HyprlandLock, testing::Values(keys::capsLock, keys::numLock));

TEST(HyprlandSession, capsLockAsHyper_jumps) {
    HyprlandDesk desk(HyprlandDesk::twoDisplays(), "us", "vantrel:hyper");
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump({keys::capsLock, keys::d}, centreOfSecond));
}

TEST(HyprlandSession, russianAlone_jumpsAndTheSmallerChordDoesNot) {
    HyprlandDesk desk(HyprlandDesk::twoDisplays(), "ru");
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().type(controlOptionCommand(keys::d));
    EXPECT_TRUE(desk.person().staysAt(onMain));
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

TEST(HyprlandSession, russianAsTheActiveLayout_jumps) {
    HyprlandDesk desk(HyprlandDesk::twoDisplays(), "us,ru");
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().chooseLayout(1);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    desk.person().chooseLayout(0);
    EXPECT_TRUE(desk.jump(hyper(keys::d), onMain));
}

TEST(HyprlandSession, anotherKeyboardsLayout_jumps) {
    HyprlandDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    ASSERT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    SeatClient another(desk.compositor().socket(), "ru");
    // The agent learns of that keyboard when it is typed on.
    EXPECT_TRUE(waitUntil([&] {
        another.moveTo(onMain);
        another.type(hyper(keys::d));
        return another.waitFor(centreOfSecond, std::chrono::milliseconds(200));
    }));
}

TEST(HyprlandKeys, chordOfThePersons_staysTheirs) {
    HyprlandDesk desk(HyprlandDesk::twoDisplays(personsBinding));
    auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), persons));
    EXPECT_TRUE(desk.person().staysAt(persons)) << "and nothing else comes of it";
    EXPECT_TRUE(desk.jump(controlOptionCommand(keys::rightArrow), centreOfSecond)) << "the others are ours";
    agent->terminate();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), persons)) << "and theirs it stays";
}

TEST(HyprlandKeys, reload_hotKeysWork) {
    HyprlandDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    for (int round = 0; round < 3; ++round) {
        desk.hyprland().reload();
        EXPECT_TRUE(waitUntil([&] {
            desk.person().moveTo(onMain);
            desk.person().type(hyper(keys::d));
            return desk.person().waitFor(centreOfSecond, std::chrono::milliseconds(200));
        }));
    }
    EXPECT_EQ(agent->standardError(), "");
}

TEST(HyprlandKeys, reloadWithTheChordGivenAway_isThePersonsUntilTheyTakeItOut) {
    HyprlandDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    ASSERT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    desk.hyprland().configure(personsBinding);
    EXPECT_TRUE(waitUntil([&] {
        desk.person().moveTo(onMain);
        return desk.jump(hyper(keys::d), persons);
    }));
    EXPECT_TRUE(desk.person().staysAt(persons)) << "and nothing else comes of it";
    desk.hyprland().configure("");
    EXPECT_TRUE(waitUntil([&] {
        desk.person().moveTo(onMain);
        desk.person().type(hyper(keys::d));
        return desk.person().waitFor(centreOfSecond, std::chrono::milliseconds(200));
    }));
}

TEST(HyprlandKeys, ended_chordsAreFree) {
    HyprlandDesk desk;
    for (const bool isKilled : {false, true}) {
        auto agent = desk.startAgent();
        desk.person().moveTo(onMain);
        ASSERT_TRUE(desk.jump(hyper(keys::d), centreOfSecond)) << "once";
        ASSERT_TRUE(desk.jump(hyper(keys::d), onMain));
        if (isKilled) {
            agent->kill();
        } else {
            agent->terminate();
        }
        desk.person().type(hyper(keys::d));
        EXPECT_TRUE(desk.person().staysAt(onMain));
    }
}

class HyprlandSignature : public testing::TestWithParam<const char*> {};

TEST_P(HyprlandSignature, isNotThisSessions_hotKeysWork) {
    HyprlandDesk desk;
    HyprlandDesk outer;
    if (GetParam() == std::string("missing")) {
        desk.environment().unset("HYPRLAND_INSTANCE_SIGNATURE");
    } else if (GetParam() == std::string("dead")) {
        desk.environment().set("HYPRLAND_INSTANCE_SIGNATURE", "nobody_1_2");
    } else {
        desk.environment().set("HYPRLAND_INSTANCE_SIGNATURE", outer.hyprland().signature());
    }
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

INSTANTIATE_TEST_SUITE_P(Values, HyprlandSignature, testing::Values("missing", "dead", "ofAnotherSession"),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace vantrel::desk
