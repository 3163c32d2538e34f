#include "Vantrel/Backends/X11/Keymap.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string_view>

#include "tests/unit/x11/TestKeyboard.hpp"

namespace vantrel::x11 {
namespace {

constexpr std::uint32_t command = 0x100;
constexpr std::uint32_t shift = 0x200;
constexpr std::uint32_t option = 0x800;
constexpr std::uint32_t control = 0x1000;
constexpr std::uint32_t hyper = command | shift | option | control;

std::set<std::uint16_t> masksOf(const std::vector<KeyGrab>& grabs) {
    std::set<std::uint16_t> masks;
    for (const KeyGrab& grab : grabs) {
        masks.insert(grab.modifiers);
    }
    return masks;
}

TEST(Keymap, grabsFor_hyperD_isTheKeyWithAllFourModifiersAndEveryLock) {
    const auto grabs = ordinaryKeyboard().map().grabsFor(2, hyper);
    ASSERT_TRUE(grabs);
    EXPECT_TRUE(std::all_of(grabs->begin(), grabs->end(), [](const KeyGrab& grab) { return grab.keycode == 40; }));
    const std::uint16_t base = shiftMask | controlMask | mod1 | mod4;
    EXPECT_EQ(masksOf(*grabs), (std::set<std::uint16_t>{base, base | lockMask, base | mod2, base | lockMask | mod2}));
}

TEST(Keymap, grabsFor_scrollLockOnTheModifierMap_isALockToo) {
    const auto grabs = ordinaryKeyboard().key(78, "SCLK", scrollLock, 0, 5).map().grabsFor(2, control);
    ASSERT_TRUE(grabs);
    EXPECT_EQ(grabs->size(), 8U);
    EXPECT_TRUE(masksOf(*grabs).contains(controlMask | lockMask | mod2 | mod3));
}

TEST(Keymap, grabsFor_keysElsewhere_followsTheNames) {
    const auto grabs =
        TestKeyboard().key(58, "AC03", letterD).key(20, "LCTL", controlL, 0, 2).map().grabsFor(2, control);
    ASSERT_TRUE(grabs);
    EXPECT_EQ(grabs->front().keycode, 58);
}

TEST(Keymap, grabsFor_commandOnAnotherModifier_followsTheModifierMap) {
    const auto grabs = TestKeyboard().key(40, "AC03", letterD).key(64, "LALT", superL, 0, 3).map().grabsFor(2, command);
    ASSERT_TRUE(grabs);
    EXPECT_TRUE(masksOf(*grabs).contains(mod1));
}

/// Some people part the two Super keys, to have one more modifier for their window manager.
TestKeyboard partedKeyboard() {
    return ordinaryKeyboard().key(134, "RWIN", superR, 0, 5);
}

TEST(Keymap, grabsFor_commandOnTwoModifiers_eitherIsEnough) {
    const auto grabs = partedKeyboard().map().grabsFor(2, command);
    ASSERT_TRUE(grabs);
    std::set<std::uint16_t> withoutLocks;
    for (const std::uint16_t mask : masksOf(*grabs)) {
        withoutLocks.insert(static_cast<std::uint16_t>(mask & ~(lockMask | mod2)));
    }
    EXPECT_EQ(withoutLocks, (std::set<std::uint16_t>{mod4, mod3, mod4 | mod3}));
    EXPECT_EQ(grabs->size(), 12U);
}

TEST(Keymap, carbonModifiersIn_commandOnTwoModifiers_eitherIsEnough) {
    const Keymap map = partedKeyboard().map();
    for (const std::uint16_t state : {mod4, mod3, static_cast<std::uint16_t>(mod4 | mod3)}) {
        EXPECT_EQ(map.carbonModifiersIn(state | controlMask), command | control);
    }
}

TEST(Keymap, grabsFor_aKeyOfTheModifierOnLockToo_lockStaysALock) {
    // xmodmap -e "keycode 66 = Control_L" -e "add Control = Control_L", and Lock still has the key.
    const Keymap map = ordinaryKeyboard().key(66, "CAPS", controlL, 0, 1).key(66, "CAPS", controlL, 0, 2).map();
    const auto grabs = map.grabsFor(2, control);
    ASSERT_TRUE(grabs);
    EXPECT_EQ(masksOf(*grabs), (std::set<std::uint16_t>{controlMask, controlMask | lockMask, controlMask | mod2,
                                                        controlMask | lockMask | mod2}));
    EXPECT_FALSE(map.hasForeignModifiers(lockMask));
    EXPECT_EQ(map.carbonModifiersIn(lockMask), 0U);
}

TEST(Keymap, grabsFor_keyOrModifierThatIsLacking_isNone) {
    const Keymap map = ordinaryKeyboard().map();
    EXPECT_FALSE(map.grabsFor(1, hyper)) << "no S key";
    EXPECT_FALSE(map.grabsFor(4294967295U, hyper)) << "no such code";
    EXPECT_FALSE(map.grabsFor(2, 0)) << "a bare letter would be taken from every program";
    EXPECT_FALSE(map.grabsFor(2, 0x400)) << "Caps Lock alone is no combination";
    EXPECT_FALSE(
        TestKeyboard().key(40, "AC03", letterD).key(50, "LFSH", shiftL, 0, 0).map().grabsFor(2, shift | option));
    EXPECT_FALSE(Keymap().grabsFor(2, hyper));
}

TEST(Keymap, grabsFor_keyThatStandsTwice_grabsBoth) {
    const auto grabs =
        ordinaryKeyboard().key(107, "PRSC", 0xff61).key(191, "FK13", 0xffca).map().grabsFor(105, control);
    ASSERT_TRUE(grabs);
    std::set<int> keycodes;
    for (const KeyGrab& grab : *grabs) {
        keycodes.insert(grab.keycode);
    }
    EXPECT_EQ(keycodes, (std::set<int>{107, 191}));
}

TEST(Keymap, hidesModifiers_ordinaryKeyboard_isFalse) {
    EXPECT_FALSE(ordinaryKeyboard().map().hidesModifiers());
}

/// Alt + Shift switches the layout: whichever goes down second is no modifier.
TestKeyboard switchingKeyboard() {
    return ordinaryKeyboard().key(50, "LFSH", shiftL, nextGroup).key(64, "LALT", altL, nextGroup);
}

TEST(Keymap, grabsFor_altShiftSwitchesTheLayout_alsoGrabsWhatIsLeftOfTheModifiers) {
    const Keymap map = switchingKeyboard().map();
    EXPECT_TRUE(map.hidesModifiers());
    const auto grabs = map.grabsFor(2, hyper);
    ASSERT_TRUE(grabs);
    const auto masks = masksOf(*grabs);
    EXPECT_TRUE(masks.contains(controlMask | mod4 | mod1)) << "Shift went down last";
    EXPECT_TRUE(masks.contains(controlMask | mod4 | shiftMask)) << "Alt went down last";
    EXPECT_TRUE(masks.contains(controlMask | mod4 | mod1 | shiftMask));
    EXPECT_FALSE(masks.contains(controlMask | mod4)) << "one of the two is always set";
    EXPECT_EQ(grabs->size(), 12U);
}

TEST(Keymap, grabsFor_onlyOneOfTheSwitchingModifiers_needsNoMore) {
    const auto grabs = switchingKeyboard().map().grabsFor(2, control | option | command);
    ASSERT_TRUE(grabs);
    EXPECT_EQ(grabs->size(), 4U);
}

TEST(Keymap, carbonModifiersIn_locksAndGroups_areIgnored) {
    const Keymap map = ordinaryKeyboard().map();
    EXPECT_EQ(map.carbonModifiersIn(shiftMask | controlMask | mod1 | mod4), hyper);
    EXPECT_EQ(map.carbonModifiersIn(shiftMask | controlMask | mod1 | mod4 | lockMask | mod2 | 0x2000), hyper);
    EXPECT_EQ(map.carbonModifiersIn(controlMask | mod1 | mod4), control | option | command);
    EXPECT_EQ(map.carbonModifiersIn(0), 0U);
}

TEST(Keymap, hasForeignModifiers_anotherModifier_isSo) {
    EXPECT_TRUE(ordinaryKeyboard().map().hasForeignModifiers(controlMask | mod5));
    EXPECT_TRUE(ordinaryKeyboard().map().hasForeignModifiers(mod5));
    EXPECT_FALSE(ordinaryKeyboard().map().hasForeignModifiers(shiftMask | controlMask | mod1 | mod4 | lockMask | mod2));
}

TEST(Keymap, carbonModifiersOfHeldKeys_layoutSwitchingKeys_countAsWhatTheyAre) {
    const Keymap map = switchingKeyboard().map();
    KeySet held;
    held.set(50).set(37).set(64).set(133).set(40);
    EXPECT_EQ(map.carbonModifiersOfHeldKeys(held), hyper);
    held.reset(50);
    EXPECT_EQ(map.carbonModifiersOfHeldKeys(held), control | option | command);
}

}  // namespace
}  // namespace vantrel::x11
