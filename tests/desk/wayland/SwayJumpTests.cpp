// The jumps from key press to pointer in a sway session.
#include <gtest/gtest.h>

#include "tests/desk/wayland/support/SwayDesk.hpp"

namespace vantrel::desk {
namespace {

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

TEST(SwaySession, displayPluggedInAndMoved_theNextJumpKnows) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.control().run("output HEADLESS-2 position 640 0");
    EXPECT_TRUE(desk.jump(hyper(keys::d), {.x = 840, .y = 150}));
    ASSERT_TRUE(desk.jump(hyper(keys::d), onMain));
    desk.control().run("output HEADLESS-3 mode 320x240 position -320 0");
    desk.control().run("create_output");
    ASSERT_TRUE(waitUntil([&] { return desk.person().displayCount() == 3; }));
    // A busy agent may hear of its place a while later than the person; each press goes on by a display.
    EXPECT_TRUE(waitUntil([&] { return desk.jump(controlOptionCommand(keys::leftArrow), {.x = -160, .y = 120}); }));
}

TEST(SwaySession, secondSeat_theFirstOnesPointerJumps) {
    SwayDesk desk;
    desk.control().run("seat seat0 fallback true");
    desk.control().run("seat seat1 attach 0:0:nothing");
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    EXPECT_TRUE(desk.jump(hyper(keys::d), onMain));
    EXPECT_EQ(agent->standardError(), "");
}

/// What hides the pointer, as a touch of the screen does, too: then no window is told where it is.
class SwayHiddenPointer : public testing::TestWithParam<const char*> {};

TEST_P(SwayHiddenPointer, hotKeys_jump) {
    SwayDesk desk(SwayDesk::twoDisplays(std::string("seat * hide_cursor ") + GetParam() + "\n"));
    const auto agent = desk.startAgent();
    // Again where sway shows it once more, as when it has looked under the pointer after the jump.
    const auto isHidden = [&] {
        desk.person().type({keys::space});
        return waitUntil([&] { return !desk.person().pointer(); }, std::chrono::seconds(1));
    };
    for (int round = 0; round < 3; ++round) {
        desk.person().moveTo(onMain);
        ASSERT_TRUE(waitUntil(isHidden));
        desk.person().type(hyper(keys::d));
        ASSERT_TRUE(waitUntil([&] { return desk.person().pointer() == centreOfSecond; }));
        ASSERT_TRUE(waitUntil(isHidden));
        desk.person().type(hyper(keys::d));
        ASSERT_TRUE(waitUntil([&] { return desk.person().pointer() == onMain; }));
    }
}

INSTANTIATE_TEST_SUITE_P(By, SwayHiddenPointer, testing::Values("100", "when-typing enable"),
                         [](const auto& hiding) { return hiding.index == 0 ? "time" : "typing"; });

TEST(SwaySession, buttonHeld_pointSavedRightAfterAJump_isNotWhereItWas) {
    SwayDesk desk;
    // With pictures that come slowly.
    desk.control().run("output HEADLESS-1 mode --custom 640x480@20Hz");
    desk.control().run("output HEADLESS-2 mode --custom 400x300@20Hz");
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().pressButton();
    ASSERT_TRUE(desk.person().staysAt(onMain));
    ASSERT_TRUE(desk.open("vantrel://next"));
    ASSERT_TRUE(desk.open("vantrel://save-point"));
    waitUntil([] { return false; }, quietTime);
    EXPECT_EQ(desk.defaults().read("savedPoints").value_or("").find(R"("x":300)"), std::string::npos);
    desk.person().releaseButton();
    EXPECT_TRUE(desk.savePoint());
}

}  // namespace
}  // namespace vantrel::desk
