// Layouts switched by Alt + Shift: with both held, one of the two is no modifier for the server.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/desk/keys/HotKeyProbe.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/KeyGrab.hpp"

namespace vantrel::desk {
namespace {

class LayoutSwitch : public testing::Test {
  protected:
    LayoutSwitch() { setKeyboardMap(desk.server().displayName(), "us,ru", "grp:alt_shift_toggle"); }

    Desk desk{{.hasSessionBus = false, .hasWindowManager = false}};
};

TEST_F(LayoutSwitch, press_anyOrderOfTheModifiers_isReported) {
    HotKeyProbe probe(desk.server().displayName());
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    Chord modifiers{keys::command, keys::control, keys::option, keys::shift};
    std::sort(modifiers.begin(), modifiers.end());
    int count = 0;
    do {
        Chord chord = modifiers;
        chord.push_back(keys::d);
        desk.keyboard().type(chord);
        ASSERT_TRUE(probe.waitForPresses(1, ++count)) << modifiers[0] << modifiers[1] << modifiers[2] << modifiers[3];
    } while (std::next_permutation(modifiers.begin(), modifiers.end()));
}

TEST_F(LayoutSwitch, press_reducedChord_doesNothing) {
    HotKeyProbe probe(desk.server().displayName());
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    desk.keyboard().type(controlOptionCommand(keys::d));
    desk.keyboard().type({keys::control, keys::command, keys::shift, keys::d});
    EXPECT_TRUE(probe.staysQuiet());
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 1)) << "the keyboard was given back after the wrong chords";
}

TEST_F(LayoutSwitch, press_reducedChord_goesOnToTheFocus) {
    HotKeyProbe probe(desk.server().displayName());
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    XConnection other(desk.server().displayName());
    const std::uint32_t mask = XCB_EVENT_MASK_KEY_PRESS;
    xcb_change_window_attributes(other.get(), other.root(), XCB_CW_EVENT_MASK, &mask);
    xcb_set_input_focus(other.get(), XCB_INPUT_FOCUS_POINTER_ROOT, XCB_INPUT_FOCUS_POINTER_ROOT, XCB_CURRENT_TIME);
    other.synchronise();
    const auto keycode = desk.keyboard().keycode(keys::d);
    desk.keyboard().type(controlOptionCommand(keys::d));
    EXPECT_TRUE(probe.turnUntil([&] {
        while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(other.get())}) {
            if ((event->response_type & 0x7F) == XCB_KEY_PRESS &&
                reinterpret_cast<const xcb_key_press_event_t*>(event.get())->detail == keycode) {
                return true;
            }
        }
        return false;
    }));
    EXPECT_EQ(probe.presses(1), 0);
}

TEST_F(LayoutSwitch, press_hyperWithTheKeyOfASmallerChord_doesNothing) {
    HotKeyProbe probe(desk.server().displayName());
    ASSERT_EQ(probe.add(4, keyM, controlOptionCommandMask), 0);
    desk.keyboard().type({keys::control, keys::option, keys::command, keys::shift, keys::m});
    EXPECT_TRUE(probe.staysQuiet()) << "Shift is held, although the server does not say so";
    desk.keyboard().type(controlOptionCommand(keys::m));
    EXPECT_TRUE(probe.waitForPresses(4, 1));
}

TEST_F(LayoutSwitch, hold_chord_isReportedOnce) {
    HotKeyProbe probe(desk.server().displayName());
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    desk.keyboard().hold(hyper(keys::d));
    ASSERT_TRUE(probe.waitForPresses(1, 1));
    EXPECT_TRUE(probe.staysQuiet(std::chrono::seconds(1)));
}

TEST_F(LayoutSwitch, optionSetUnderARunningAgent_isFollowed) {
    setKeyboardMap(desk.server().displayName(), "us");
    HotKeyProbe probe(desk.server().displayName());
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    setKeyboardMap(desk.server().displayName(), "us,ru", "grp:alt_shift_toggle");
    ASSERT_TRUE(
        probe.turnUntil([&] { return isHeldByAnotherProgram(desk.connection(), controlOptionCommand(keys::d)); }));
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 1));
    setKeyboardMap(desk.server().displayName(), "us");
    ASSERT_TRUE(
        probe.turnUntil([&] { return !isHeldByAnotherProgram(desk.connection(), controlOptionCommand(keys::d)); }));
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 2));
}

}  // namespace
}  // namespace vantrel::desk
