// A hot key's press tells where the pointer is, so that the jump it sets off need not ask.
#include <gtest/gtest.h>

#include "tests/desk/keys/HotKeyProbe.hpp"
#include "tests/desk/screen/RoundTripCounter.hpp"
#include "tests/desk/support/Desk.hpp"

namespace vantrel::desk {
namespace {

class PressPointer : public testing::Test {
  protected:
    PressPointer() { EXPECT_EQ(probe.add(1, keyD, hyperMask), 0); }

    CGPoint pointer() {
        PointerReader& reader = probe.platform().pointerReader();
        const auto event = reader.CGEventCreate();
        return event ? reader.CGEventGetLocation(*event) : CGPoint{-99999, -99999};
    }

    /// Lets the loop look for new events once more, as it does when a press has been dealt with.
    void nextTurn() { probe.turnOnce(); }

    Desk desk{{.hasSessionBus = false, .hasWindowManager = false}};
    HotKeyProbe probe{desk.server().displayName()};
};

TEST_F(PressPointer, pointer_afterAPress_isKnownWithoutAsking) {
    pointer();
    desk.pointer().moveTo({-300, 400});
    desk.keyboard().hold(hyper(keys::d));
    ASSERT_TRUE(probe.waitForPresses(1, 1));
    takeRoundTrips();
    EXPECT_EQ(pointer(), (CGPoint{-300, 400}));
    EXPECT_EQ(takeRoundTrips(), 0);
}

// The loop may sleep for hours between its look for events and the next command.
TEST_F(PressPointer, pointer_movedSinceThePress_isAskedForAnew) {
    desk.pointer().moveTo({-300, 400});
    desk.keyboard().hold(hyper(keys::d));
    ASSERT_TRUE(probe.waitForPresses(1, 1));
    nextTurn();
    desk.pointer().moveTo({700, 500});
    EXPECT_EQ(pointer(), (CGPoint{700, 500}));
}

TEST_F(PressPointer, pointer_warpedSinceThePress_isWhereItWasWarped) {
    desk.pointer().moveTo({-300, 400});
    desk.keyboard().hold(hyper(keys::d));
    ASSERT_TRUE(probe.waitForPresses(1, 1));
    probe.platform().pointerWarper().CGWarpMouseCursorPosition({10, 20});
    EXPECT_EQ(pointer(), (CGPoint{10, 20}));
}

TEST_F(PressPointer, pointer_pressOlderThanTheLastWarp_isWhereItWasWarped) {
    desk.pointer().moveTo({-300, 400});
    desk.keyboard().hold(hyper(keys::d));
    desk.connection().synchronise();
    // The press waits in the socket; its place is out of date as soon as this is carried out.
    probe.platform().pointerWarper().CGWarpMouseCursorPosition({10, 20});
    ASSERT_TRUE(probe.waitForPresses(1, 1));
    EXPECT_EQ(pointer(), (CGPoint{10, 20}));
}

}  // namespace
}  // namespace vantrel::desk
