// A press that the server sends just before the reply that somebody waits for: it is read along with the reply, and the
// connection's descriptor is silent from then on.
#include <gtest/gtest.h>

#include "tests/desk/keys/HotKeyProbe.hpp"
#include "tests/desk/screen/RoundTripCounter.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/KeyGrab.hpp"

namespace vantrel::desk {
namespace {

class PressDuringReply : public testing::Test {
  protected:
    PressDuringReply() { EXPECT_EQ(probe.add(1, keyD, hyperMask), 0); }

    /// Has the chord pressed when the requests for a reply are about to leave.
    void pressBeforeTheNextReply() {
        beforeNextSend([this] {
            desk.keyboard().type(hyper(keys::d));
            desk.connection().synchronise();
            hasPressed = true;
        });
    }

    Desk desk{{.hasSessionBus = false, .hasWindowManager = false}};
    HotKeyProbe probe{desk.server().displayName()};
    bool hasPressed = false;
};

TEST_F(PressDuringReply, readingThePointer_pressComesWithTheReply_isNotLost) {
    for (int round = 1; round <= 20; ++round) {
        // What the last press told of the pointer is out of date in a new turn, so that the server is asked.
        probe.turnOnce();
        hasPressed = false;
        pressBeforeTheNextReply();
        probe.platform().pointerReader().CGEventCreate();
        ASSERT_TRUE(hasPressed);
        ASSERT_TRUE(probe.waitForPresses(1, round));
    }
}

TEST_F(PressDuringReply, registeringAnotherKey_pressComesWithTheReply_isNotLost) {
    for (int round = 1; round <= 20; ++round) {
        hasPressed = false;
        pressBeforeTheNextReply();
        ASSERT_EQ(probe.add(2, keyS, hyperMask), 0);
        ASSERT_TRUE(hasPressed);
        ASSERT_TRUE(probe.waitForPresses(1, round));
        probe.remove(2);
        // It is let go of when the loop rests.
        ASSERT_TRUE(probe.turnUntil([&] { return !isHeldByAnotherProgram(desk.connection(), hyper(keys::s)); }));
    }
}

TEST_F(PressDuringReply, readingAMapThatHidesNoModifiersAnyMore_pressStopsTheKeyboard_itIsGivenBack) {
    setKeyboardMap(desk.server().displayName(), "us,ru", "grp:alt_shift_toggle");
    // Such a map's grabs stop the keyboard at each press until the agent has looked at it.
    ASSERT_TRUE(
        probe.turnUntil([&] { return isHeldByAnotherProgram(desk.connection(), controlOptionCommand(keys::d)); }));
    setKeyboardMap(desk.server().displayName(), "us");
    pressBeforeTheNextReply();
    ASSERT_TRUE(probe.turnUntil([&] { return hasPressed; }));
    ASSERT_TRUE(probe.waitForPresses(1, 1));
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 2)) << "the keyboard stands still";
}

}  // namespace
}  // namespace vantrel::desk
