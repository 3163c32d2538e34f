// Registering combinations and pressing them.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/desk/keys/HotKeyProbe.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/KeyGrab.hpp"

namespace vantrel::desk {
namespace {

class HotKeys : public testing::Test {
  protected:
    Desk desk{{.hasSessionBus = false, .hasWindowManager = false}};
    HotKeyProbe probe{desk.server().displayName()};
};

TEST_F(HotKeys, press_registeredChord_isReportedOnce) {
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 1));
    EXPECT_TRUE(probe.staysQuiet());
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 2));
}

TEST_F(HotKeys, press_anyOrderOfTheModifiers_isReported) {
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    Chord modifiers{keys::command, keys::control, keys::option, keys::shift};
    std::sort(modifiers.begin(), modifiers.end());
    int count = 0;
    do {
        Chord chord = modifiers;
        chord.push_back(keys::d);
        desk.keyboard().type(chord);
        ASSERT_TRUE(probe.waitForPresses(1, ++count));
    } while (std::next_permutation(modifiers.begin(), modifiers.end()));
    EXPECT_EQ(count, 24);
}

TEST_F(HotKeys, press_wrongChord_doesNothing) {
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    const std::vector<Chord> wrong{controlOptionCommand(keys::d),
                                   hyper(keys::s),
                                   {keys::d},
                                   {keys::control, keys::shift, keys::d},
                                   {keys::control, keys::option, keys::shift, keys::d}};
    for (const Chord& chord : wrong) {
        desk.keyboard().type(chord);
    }
    EXPECT_TRUE(probe.staysQuiet());
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 1)) << "the right one still works";
}

TEST_F(HotKeys, press_capsLockAndNumLockOn_isReported) {
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    int count = 0;
    for (const auto lock : {keys::capsLock, keys::numLock, keys::capsLock, keys::numLock}) {
        desk.keyboard().type({lock});
        desk.keyboard().type(hyper(keys::d));
        ASSERT_TRUE(probe.waitForPresses(1, ++count)) << lock;
    }
}

TEST_F(HotKeys, register_chordOfAnotherProgram_isRefusedAndLeavesNothingBehind) {
    XConnection other(desk.server().displayName());
    {
        const KeyGrab grab(other, hyper(keys::d));
        EXPECT_EQ(probe.add(1, keyD, hyperMask), eventHotKeyExistsErr);
        EXPECT_EQ(probe.add(2, keyS, hyperMask), 0) << "others are not affected";
    }
    other.synchronise();
    EXPECT_FALSE(isHeldByAnotherProgram(desk.connection(), hyper(keys::d)));
    EXPECT_EQ(probe.add(1, keyD, hyperMask), 0) << "free again";
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 1));
}

TEST_F(HotKeys, register_chordHeldInOneLockStateOnly_isRefusedAndUndone) {
    const auto keycode = desk.keyboard().keycode(keys::d);
    const std::uint16_t withNumLock = modifierMask(hyper(keys::d)) | XCB_MOD_MASK_2;
    XConnection other(desk.server().displayName());
    xcb_grab_key(other.get(), 0, other.root(), withNumLock, keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    other.synchronise();
    EXPECT_EQ(probe.add(1, keyD, hyperMask), eventHotKeyExistsErr);
    xcb_ungrab_key(other.get(), keycode, other.root(), withNumLock);
    other.synchronise();
    EXPECT_NO_THROW(KeyGrab(other, hyper(keys::d))) << "every part of the refused combination was given back";
}

TEST_F(HotKeys, register_sameChordTwice_isRefused) {
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    EXPECT_EQ(probe.add(2, keyD, hyperMask), eventHotKeyExistsErr);
}

TEST_F(HotKeys, register_keyOrModifierWithoutAPlace_isInvalid) {
    EXPECT_EQ(probe.add(1, 72, hyperMask), eventHotKeyInvalidErr);
    EXPECT_EQ(probe.add(1, 4294967295U, hyperMask), eventHotKeyInvalidErr);
    EXPECT_EQ(probe.add(1, keyD, 0), eventHotKeyInvalidErr);
    EXPECT_EQ(probe.add(1, keyD, 0x400), eventHotKeyInvalidErr);
}

TEST_F(HotKeys, unregister_chord_isFreeForOthers) {
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    EXPECT_TRUE(isHeldByAnotherProgram(desk.connection(), hyper(keys::d)));
    probe.remove(1);
    EXPECT_TRUE(probe.turnUntil([this] { return !isHeldByAnotherProgram(desk.connection(), hyper(keys::d)); }));
    XConnection other(desk.server().displayName());
    KeyGrab grab(other, hyper(keys::d));
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(grab.waitForPress());
    EXPECT_TRUE(probe.staysQuiet());
}

TEST_F(HotKeys, press_readByWhoeverAsksForTheLayout_isNotLost) {
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    for (int round = 1; round <= 50; ++round) {
        desk.keyboard().type(hyper(keys::d));
        desk.connection().synchronise();
        // Reading the layout takes the press out of the socket, and the descriptor falls silent.
        std::uint32_t count = 0;
        probe.platform().displays().CGGetActiveDisplayList({}, count);
        ASSERT_TRUE(probe.waitForPresses(1, round));
    }
}

TEST_F(HotKeys, connectionLost_afterTheServerIsGone_allOperationsAreHarmless) {
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    desk.server().stop();
    std::uint32_t count = 7;
    EXPECT_EQ(probe.platform().displays().CGGetActiveDisplayList({}, count), 0);
    EXPECT_FALSE(probe.platform().pointerReader().CGEventCreate());
    probe.platform().pointerWarper().CGWarpMouseCursorPosition({1, 1});
    probe.remove(1);
    EXPECT_TRUE(probe.staysQuiet());
}

}  // namespace
}  // namespace vantrel::desk
