#include "helpers/settings/RecorderKeys.hpp"

#include <gtest/gtest.h>

#include "tests/unit/x11/TestKeyboard.hpp"

namespace vantrel::qt {
namespace {

using x11::ordinaryKeyboard;
using x11::TestKeyboard;

constexpr std::uint8_t keyD = 40, keyShift = 50, keyControl = 37, keyAlt = 64, keySuper = 133, keyPlay = 172,
                       keyEscape = 9, keyCaps = 66;
constexpr std::uint32_t capsLock = 0xffe5, escape = 0xff1b, levelThree = 0xfe03;

KeyEvent keyDown(std::uint32_t keyCode, std::uint32_t flags) {
    return {KeyEventType::keyDown, keyCode, flags};
}

KeyEvent flagsChanged(std::uint32_t keyCode, std::uint32_t flags) {
    return {KeyEventType::flagsChanged, keyCode, flags};
}

RecorderKeys keysOf(const TestKeyboard& keyboard, const x11::KeySet& held = {}) {
    return {{.keymap = keyboard.map(), .modifierKeys = {}}, held};
}

TEST(RecorderKeys, press_letter_isItsPlaceWithTheStatesModifiers) {
    auto keys = keysOf(ordinaryKeyboard());
    EXPECT_EQ(keys.press(keyD, x11::controlMask | x11::mod1), keyDown(2, KeyEvent::controlFlag | KeyEvent::optionFlag));
}

TEST(RecorderKeys, press_locksOn_changeNothing) {
    auto keys = keysOf(ordinaryKeyboard().key(keyCaps, "CAPS", capsLock, 0, 1));
    EXPECT_EQ(keys.press(keyD, x11::lockMask | x11::mod2), keyDown(2, 0));
}

TEST(RecorderKeys, press_eachModifier_isItsOwnFlag) {
    for (const auto& [state, flag] :
         {std::pair{x11::shiftMask, KeyEvent::shiftFlag}, std::pair{x11::controlMask, KeyEvent::controlFlag},
          std::pair{x11::mod1, KeyEvent::optionFlag}, std::pair{x11::mod4, KeyEvent::commandFlag}}) {
        auto keys = keysOf(ordinaryKeyboard());
        EXPECT_EQ(keys.press(keyD, state), keyDown(2, flag));
    }
}

TEST(RecorderKeys, press_modifiersElsewhereInTheMap_followTheMap) {
    auto keys = keysOf(TestKeyboard().key(keyD, "AC03", x11::letterD).key(keyAlt, "LALT", x11::superL, 0, 5));
    EXPECT_EQ(keys.press(keyD, x11::mod4), keyDown(2, 0));
    keys.release(keyD, 0);
    EXPECT_EQ(keys.press(keyD, x11::mod3), keyDown(2, KeyEvent::commandFlag));
}

TEST(RecorderKeys, press_levelThreeShift_isNoOption) {
    auto keys = keysOf(ordinaryKeyboard().key(108, "RALT", levelThree, 0, 7));
    EXPECT_EQ(keys.press(108, 0), flagsChanged(61, 0));
    EXPECT_EQ(keys.press(keyD, x11::mod5), keyDown(2, 0));
}

TEST(RecorderKeys, press_held_isReportedOnce) {
    auto keys = keysOf(ordinaryKeyboard());
    EXPECT_TRUE(keys.press(keyD, 0));
    EXPECT_FALSE(keys.press(keyD, 0));
    EXPECT_FALSE(keys.release(keyD, 0));
    EXPECT_TRUE(keys.press(keyD, 0));
}

TEST(RecorderKeys, press_keyThatWasDownBefore_isARepeat) {
    x11::KeySet held;
    held.set(keyD);
    auto keys = keysOf(ordinaryKeyboard(), held);
    EXPECT_TRUE(keys.holdsRegularKey());
    EXPECT_FALSE(keys.press(keyD, 0));
    keys.release(keyD, 0);
    EXPECT_FALSE(keys.holdsRegularKey());
    EXPECT_TRUE(keys.press(keyD, 0));
}

TEST(RecorderKeys, press_modifierKey_isAChangeOfFlagsWhateverTheState) {
    auto keys = keysOf(ordinaryKeyboard());
    EXPECT_EQ(keys.press(keyControl, 0), flagsChanged(59, KeyEvent::controlFlag));
    EXPECT_EQ(keys.press(keySuper, x11::controlMask), flagsChanged(55, KeyEvent::controlFlag | KeyEvent::commandFlag));
    EXPECT_FALSE(keys.press(keySuper, x11::controlMask)) << "a repeat";
    EXPECT_EQ(keys.release(keySuper, x11::controlMask), flagsChanged(55, KeyEvent::controlFlag));
    EXPECT_FALSE(keys.holdsRegularKey());
}

TEST(RecorderKeys, press_mediaKey_isNothing) {
    auto keys = keysOf(ordinaryKeyboard().key(keyPlay, "I172", 0x1008ff14));
    EXPECT_FALSE(keys.press(keyPlay, x11::controlMask));
    EXPECT_TRUE(keys.holdsRegularKey());
}

TEST(RecorderKeys, press_printScrollLockAndPause_standWhereF13ToF15Do) {
    auto keys =
        keysOf(ordinaryKeyboard().key(107, "PRSC", 0xff61).key(78, "SCLK", x11::scrollLock).key(127, "PAUS", 0xff13));
    EXPECT_EQ(keys.press(107, x11::controlMask), keyDown(105, KeyEvent::controlFlag));
    EXPECT_EQ(keys.press(78, x11::controlMask), keyDown(107, KeyEvent::controlFlag));
    EXPECT_EQ(keys.press(127, x11::controlMask), keyDown(113, KeyEvent::controlFlag));
}

TEST(RecorderKeys, press_layoutSwitchHidesModifiers_heldKeysCount) {
    // Alt + Shift switches the layout: the second of them never shows in an event's state.
    auto keys = keysOf(ordinaryKeyboard()
                           .key(keyShift, "LFSH", x11::shiftL, x11::nextGroup)
                           .key(keyAlt, "LALT", x11::altL, x11::nextGroup));
    keys.press(keyAlt, 0);
    keys.press(keyShift, x11::mod1);
    EXPECT_EQ(keys.press(keyD, x11::mod1), keyDown(2, KeyEvent::optionFlag | KeyEvent::shiftFlag));
}

TEST(RecorderKeys, press_escapeElsewhere_isEscape) {
    auto keys = keysOf(ordinaryKeyboard().key(keyCaps, "CAPS", escape).key(keyEscape, "ESC", capsLock, 0, 1));
    EXPECT_EQ(keys.press(keyCaps, 0), keyDown(53, 0));
    EXPECT_EQ(keys.press(keyEscape, 0)->type, KeyEventType::flagsChanged);
}

TEST(RecorderKeys, setKeyboard_whileKeysAreDown_keepsThem) {
    auto keys = keysOf(ordinaryKeyboard());
    keys.press(keyD, 0);
    keys.setKeyboard({.keymap = TestKeyboard().key(keyD, "AC02", 0x73).map(), .modifierKeys = {}});
    EXPECT_FALSE(keys.press(keyD, 0));
    keys.release(keyD, 0);
    EXPECT_EQ(keys.press(keyD, 0), keyDown(1, 0));
}

}  // namespace
}  // namespace vantrel::qt
