// Caps Lock as the Hyper key: docs/hyper.md tells people that this works.
#include <gtest/gtest.h>

#include "tests/desk/keys/HotKeyProbe.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/KeyGrab.hpp"

namespace vantrel::desk {
namespace {

constexpr std::uint16_t capsLockState = XCB_MOD_MASK_LOCK;

class HyperKey : public testing::Test {
  protected:
    HyperKey() { probe.add(1, keyD, hyperMask); }

    void turnCapsLockIntoHyper(const std::string& argument = "on") {
        runProgram({VANTREL_HYPER_SCRIPT, argument}, desk.environment());
    }

    void pressCapsLockAndD() { desk.keyboard().type({keys::capsLock, keys::d}); }

    std::uint16_t modifierState() {
        const XReply<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(
            desk.connection().get(), xcb_query_pointer(desk.connection().get(), desk.connection().root()), nullptr));
        return reply->mask & 0xFF;
    }

    Desk desk{{.hasSessionBus = false, .hasWindowManager = false}};
    HotKeyProbe probe{desk.server().displayName()};
};

TEST_F(HyperKey, press_withoutTheScript_doesNothing) {
    pressCapsLockAndD();
    EXPECT_TRUE(probe.staysQuiet());
}

TEST_F(HyperKey, press_capsLockAndKey_isTheHyperChord) {
    turnCapsLockIntoHyper();
    pressCapsLockAndD();
    EXPECT_TRUE(probe.waitForPresses(1, 1));
    EXPECT_TRUE(probe.staysQuiet());
    pressCapsLockAndD();
    EXPECT_TRUE(probe.waitForPresses(1, 2)) << "the first press left Caps Lock off";
}

TEST_F(HyperKey, hold_capsLock_isExactlyTheFourModifiers) {
    turnCapsLockIntoHyper();
    desk.keyboard().press(keys::capsLock);
    EXPECT_EQ(modifierState(), modifierMask(hyper(keys::d)));
    desk.keyboard().release(keys::capsLock);
    EXPECT_EQ(modifierState(), 0);
}

TEST_F(HyperKey, press_theFourModifiers_stillIsTheHyperChord) {
    turnCapsLockIntoHyper();
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 1));
}

TEST_F(HyperKey, press_shiftAndCapsLock_switchesCapsLock) {
    turnCapsLockIntoHyper();
    desk.keyboard().type({keys::shift, keys::capsLock});
    EXPECT_EQ(modifierState(), capsLockState);
    pressCapsLockAndD();
    EXPECT_TRUE(probe.waitForPresses(1, 1)) << "with Caps Lock on";
    desk.keyboard().type({keys::shift, keys::capsLock});
    EXPECT_EQ(modifierState(), 0);
}

TEST_F(HyperKey, press_layoutsSwitchedByOptionAndShift_isTheHyperChord) {
    setKeyboardMap(desk.server().displayName(), "us,ru", "grp:alt_shift_toggle");
    turnCapsLockIntoHyper();
    pressCapsLockAndD();
    EXPECT_TRUE(probe.waitForPresses(1, 1));
    desk.keyboard().type({keys::option, keys::shift});
    pressCapsLockAndD();
    EXPECT_TRUE(probe.waitForPresses(1, 2)) << "in the second layout";
}

TEST_F(HyperKey, turnOff_givesCapsLockBack) {
    turnCapsLockIntoHyper();
    turnCapsLockIntoHyper("off");
    pressCapsLockAndD();
    EXPECT_EQ(modifierState(), capsLockState);
    EXPECT_TRUE(probe.staysQuiet());
}

}  // namespace
}  // namespace vantrel::desk
