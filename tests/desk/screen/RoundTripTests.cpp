// How often a jump waits for the X server.
#include <gtest/gtest.h>

#include "tests/desk/screen/RoundTripCounter.hpp"
#include "tests/desk/screen/ScreenProbe.hpp"
#include "tests/desk/support/Desk.hpp"

namespace vantrel::desk {
namespace {

class RoundTrips : public testing::Test {
  protected:
    /// What a jump reads, and in how many round trips.
    int roundTripsOfAJump() {
        takeRoundTrips();
        probe.displays();
        probe.pointer();
        return takeRoundTrips();
    }

    Desk desk{{.hasSessionBus = false, .hasWindowManager = false}};
    ScreenProbe probe{desk.server().displayName()};
};

TEST_F(RoundTrips, jump_unchangedLayout_isOneRoundTrip) {
    for (int round = 0; round < 10; ++round) {
        probe.turn();
        EXPECT_EQ(roundTripsOfAJump(), 1);
        probe.warp(round, round);
    }
}

TEST_F(RoundTrips, jump_layoutChangedAMomentAgo_isOneRoundTrip) {
    probe.displays();
    for (int round = 0; round < 3; ++round) {
        desk.layout().apply({DisplayLayout::twoDisplays().front()});
        probe.turn();
        desk.layout().apply(DisplayLayout::twoDisplays());
        EXPECT_EQ(roundTripsOfAJump(), 1);
        EXPECT_EQ(probe.displays().size(), 2U);
    }
}

TEST_F(RoundTrips, glide_tick_waitsForNothing) {
    probe.displays();
    takeRoundTrips();
    for (int tick = 0; tick < 18; ++tick) {
        probe.warp(tick, tick);
    }
    EXPECT_EQ(takeRoundTrips(), 0);
}

}  // namespace
}  // namespace vantrel::desk
