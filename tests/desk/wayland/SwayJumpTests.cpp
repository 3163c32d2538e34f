// The jumps from key press to pointer in a sway session.
#include <gtest/gtest.h>

#include "tests/desk/wayland/support/SwayDesk.hpp"

namespace vantrel::desk {
namespace {

constexpr LayoutPoint onMain = SwayDesk::onMain;
constexpr LayoutPoint centreOfSecond = SwayDesk::centreOfSecond;

TEST(SwaySession, savedPoint_comesBackThere) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo({.x = 300.5, .y = 200.25});
    desk.person().type(hyper(keys::s));
    ASSERT_TRUE(
        waitUntil([&] { return desk.defaults().read("savedPoints").value_or("").find("300.5") != std::string::npos; }));
    desk.person().moveTo({.x = -100, .y = 300});
    EXPECT_TRUE(desk.jump(controlOptionCommand(keys::m), {.x = 300.5, .y = 200.25}));
}

TEST(SwaySession, wrongChords_doNothing) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().type(controlOptionCommand(keys::d));
    desk.person().type({keys::d});
    desk.person().type({keys::control, keys::option, keys::shift, keys::command, keys::rightArrow});
    EXPECT_TRUE(desk.person().staysAt(onMain));
}

TEST(SwaySession, heldKey_actsOnce) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().hold(hyper(keys::d));
    ASSERT_TRUE(desk.person().waitFor(centreOfSecond));
    EXPECT_TRUE(desk.person().staysAt(centreOfSecond, std::chrono::milliseconds(1500)));
    desk.person().letGo();
    EXPECT_TRUE(desk.jump(hyper(keys::d), onMain)) << "the next press acts again";
}

class SwayLock : public testing::TestWithParam<std::string_view> {};

TEST_P(SwayLock, lockOn_jumps) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().type({GetParam()});
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    EXPECT_TRUE(desk.jump(controlOptionCommand(keys::rightArrow), onMain));
}

INSTANTIATE_TEST_SUITE_P(Locks, SwayLock, testing::Values(keys::capsLock, keys::numLock));

TEST(SwaySession, capsLockAsHyper_jumps) {
    SwayDesk desk(SwayDesk::twoDisplays(), "us", "vantrel:hyper");
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump({keys::capsLock, keys::d}, centreOfSecond));
    EXPECT_TRUE(desk.jump(hyper(keys::d), onMain)) << "the four keys themselves go on working";
}

TEST(SwaySession, capsLockWithoutTheOption_doesNothing) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().type({keys::capsLock, keys::d});
    EXPECT_TRUE(desk.person().staysAt(onMain));
}

TEST(SwaySession, russianAlone_jumpsAndTheSmallerChordDoesNot) {
    SwayDesk desk(SwayDesk::twoDisplays("input * xkb_layout ru\n"), "ru");
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().type(controlOptionCommand(keys::d));
    EXPECT_TRUE(desk.person().staysAt(onMain));
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

TEST(SwaySession, russianAsTheActiveLayout_jumps) {
    SwayDesk desk(SwayDesk::twoDisplays(), "us,ru");
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().chooseLayout(1);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    desk.person().chooseLayout(0);
    EXPECT_TRUE(desk.jump(hyper(keys::d), onMain));
}

TEST(SwaySession, displayPluggedInAndMoved_theNextJumpKnows) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.control().run("output HEADLESS-2 position 640 0");
    EXPECT_TRUE(desk.jump(hyper(keys::d), {.x = 840, .y = 150}));
    ASSERT_TRUE(desk.jump(hyper(keys::d), onMain));
    desk.control().run("output HEADLESS-3 mode 320x240 position -320 0");
    desk.control().run("create_output");
    // It comes to all programs at once.
    ASSERT_TRUE(waitUntil([&] { return desk.person().displayCount() == 3; }));
    EXPECT_TRUE(desk.jump(controlOptionCommand(keys::leftArrow), {.x = -160, .y = 120}));
}

}  // namespace
}  // namespace vantrel::desk
