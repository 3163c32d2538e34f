// One action a press, however long the key is held and whoever gets its release.
#include <gtest/gtest.h>

#include "tests/desk/keys/HotKeyProbe.hpp"
#include "tests/desk/support/ChildProcess.hpp"
#include "tests/desk/support/Desk.hpp"

namespace vantrel::desk {
namespace {

class HeldKeys : public testing::Test {
  protected:
    Desk desk{{.hasSessionBus = false, .hasWindowManager = false}};
    HotKeyProbe probe{desk.server().displayName()};
};

/// Another client that sees the presses of a key on the root window, repeats included.
int pressesSeen(XConnection& connection, xcb_keycode_t keycode) {
    int count = 0;
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection.get())}) {
        const auto* press = reinterpret_cast<const xcb_key_press_event_t*>(event.get());
        count += (event->response_type & 0x7F) == XCB_KEY_PRESS && press->detail == keycode ? 1 : 0;
    }
    return count;
}

TEST_F(HeldKeys, hold_chordForTwoSeconds_isReportedOnce) {
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    desk.keyboard().hold(hyper(keys::d));
    ASSERT_TRUE(probe.waitForPresses(1, 1));
    EXPECT_TRUE(probe.staysQuiet(std::chrono::seconds(2)));
    desk.keyboard().letGo();
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 2));
}

TEST_F(HeldKeys, press_secondHotKeyWhileTheFirstIsHeld_bothAct) {
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    ASSERT_EQ(probe.add(2, keyS, hyperMask), 0);
    desk.keyboard().hold(hyper(keys::d));
    ASSERT_TRUE(probe.waitForPresses(1, 1));
    desk.keyboard().press(keys::s);
    EXPECT_TRUE(probe.waitForPresses(2, 1));
    EXPECT_TRUE(probe.staysQuiet());
}

/// Without repeats, which would bring a lost release back by grabbing the key anew.
void switchAutoRepeatOff(const std::string& displayName) {
    Environment environment = Environment::minimal();
    environment.set("DISPLAY", displayName);
    runProgram({"xset", "r", "off"}, environment);
}

// The first key's release ends its grab, so the second key's release goes to whoever has the focus.
TEST_F(HeldKeys, press_keyWhoseReleaseWentToTheFocus_actsAgain) {
    switchAutoRepeatOff(desk.server().displayName());
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    ASSERT_EQ(probe.add(2, keyS, hyperMask), 0);
    desk.keyboard().hold(hyper(keys::d));
    ASSERT_TRUE(probe.waitForPresses(1, 1));
    desk.keyboard().press(keys::s);
    ASSERT_TRUE(probe.waitForPresses(2, 1));
    ASSERT_TRUE(probe.staysQuiet());
    desk.keyboard().release(keys::d);
    desk.keyboard().release(keys::s);
    desk.keyboard().press(keys::s);
    EXPECT_TRUE(probe.waitForPresses(2, 2));
}

TEST_F(HeldKeys, press_keyWhoseReleaseWentToAnotherGrab_actsAgain) {
    switchAutoRepeatOff(desk.server().displayName());
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    ASSERT_EQ(probe.add(2, keyS, hyperMask), 0);
    desk.keyboard().hold(hyper(keys::d));
    ASSERT_TRUE(probe.waitForPresses(1, 1));
    desk.keyboard().press(keys::s);
    ASSERT_TRUE(probe.waitForPresses(2, 1));
    ASSERT_TRUE(probe.staysQuiet());
    desk.keyboard().release(keys::d);
    desk.connection().synchronise();

    XConnection other(desk.server().displayName());
    const auto cookie =
        xcb_grab_keyboard(other.get(), 0, other.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const XReply<xcb_grab_keyboard_reply_t> taken{xcb_grab_keyboard_reply(other.get(), cookie, nullptr)};
    ASSERT_TRUE(taken);
    ASSERT_EQ(taken->status, XCB_GRAB_STATUS_SUCCESS);
    desk.keyboard().release(keys::s);
    desk.connection().synchronise();
    xcb_ungrab_keyboard(other.get(), XCB_CURRENT_TIME);
    other.synchronise();

    desk.keyboard().press(keys::s);
    EXPECT_TRUE(probe.waitForPresses(2, 2));
}

TEST_F(HeldKeys, hold_secondKeyBeyondTheFirst_isReportedOnce) {
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    ASSERT_EQ(probe.add(2, keyS, hyperMask), 0);
    desk.keyboard().hold(hyper(keys::d));
    ASSERT_TRUE(probe.waitForPresses(1, 1));
    desk.keyboard().press(keys::s);
    ASSERT_TRUE(probe.waitForPresses(2, 1));
    desk.keyboard().release(keys::d);
    EXPECT_TRUE(probe.staysQuiet(std::chrono::seconds(1))) << "the second key repeats and is still the same press";
    desk.keyboard().release(keys::s);
    desk.keyboard().press(keys::s);
    EXPECT_TRUE(probe.waitForPresses(2, 2));
}

TEST_F(HeldKeys, register_keyThatIsDown_actsOnTheNextPressOnly) {
    desk.keyboard().hold(hyper(keys::d));
    desk.connection().synchronise();
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    EXPECT_TRUE(probe.staysQuiet(std::chrono::seconds(1))) << "it repeats, but was pressed for something else";
    desk.keyboard().letGo();
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 1));
}

TEST_F(HeldKeys, hold_keyOnThisServer_repeats) {
    // What the tests above guard against does happen here.
    XConnection other(desk.server().displayName());
    const std::uint32_t mask = XCB_EVENT_MASK_KEY_PRESS;
    xcb_change_window_attributes(other.get(), other.root(), XCB_CW_EVENT_MASK, &mask);
    other.synchronise();
    const auto keycode = desk.keyboard().keycode(keys::d);
    desk.keyboard().press(keys::d);
    int seen = 0;
    EXPECT_TRUE(waitUntil([&] { return (seen += pressesSeen(other, keycode)) > 2; }));
}

}  // namespace
}  // namespace vantrel::desk
