// The jumps from key press to pointer in a sway session.
#include <gtest/gtest.h>

#include "tests/desk/wayland/support/SwayDesk.hpp"

namespace vantrel::desk {
namespace {

TEST(SwaySession, capsLockWithoutTheOption_doesNothing) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().type({keys::capsLock, keys::d});
    EXPECT_TRUE(desk.person().staysAt(onMain));
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond)) << "while it locks";
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
    // A busy agent may hear of a display's place a while later than the person.
    EXPECT_TRUE(waitUntil([&] {
        desk.person().moveTo(onMain);
        return desk.jump(hyper(keys::d), {.x = 840, .y = 150});
    }));
    ASSERT_TRUE(desk.jump(hyper(keys::d), onMain));
    desk.control().run("output HEADLESS-3 mode 320x240 position -320 0");
    desk.control().run("create_output");
    ASSERT_TRUE(waitUntil([&] { return desk.person().displayCount() == 3; }));
    // Each press goes on by a display.
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
    // Again where sway has no time to tell where the pointer is. At the target it may soon be hidden once more.
    const auto jumpHidden = [&](LayoutPoint from, LayoutPoint to) {
        return waitUntil([&] {
                   EXPECT_TRUE(waitUntil(isHidden));
                   desk.person().type(hyper(keys::d));
                   return waitUntil([&] { return desk.person().lastSeen() != from; }, std::chrono::seconds(5));
               }) &&
               waitUntil([&] { return desk.person().lastSeen() == to; });
    };
    desk.person().moveTo(onMain);
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(jumpHidden(onMain, centreOfSecond));
        ASSERT_TRUE(jumpHidden(centreOfSecond, onMain));
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
    ASSERT_TRUE(desk.openAndWait("vantrel://save-point"));
    // A sway that has no time to tell where the pointer is makes the jump none.
    const bool hasJumped = desk.defaults().read("rememberedPositions").has_value();
    const std::string saved = desk.defaults().read("savedPoints").value_or("");
    EXPECT_TRUE(!hasJumped || saved.find(R"("x":300)") == std::string::npos) << saved;
    desk.person().releaseButton();
    EXPECT_TRUE(desk.savePoint());
}

}  // namespace
}  // namespace vantrel::desk
