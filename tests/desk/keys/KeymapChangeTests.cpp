// Hot keys follow the keyboard: layouts, maps and numberings may change under a running agent.
#include <gtest/gtest.h>

#include "tests/desk/keys/HotKeyProbe.hpp"
#include "tests/desk/support/ChildProcess.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/KeyGrab.hpp"

namespace vantrel::desk {
namespace {

class KeymapChange : public testing::Test {
  protected:
    bool probeHolds(const Chord& chord) {
        return probe.turnUntil([&] { return isHeldByAnotherProgram(desk.connection(), chord); });
    }

    Environment onDesk() {
        Environment environment = Environment::minimal();
        environment.set("DISPLAY", desk.server().displayName());
        return environment;
    }

    Desk desk{{.hasSessionBus = false, .hasWindowManager = false}};
    HotKeyProbe probe{desk.server().displayName()};
};

TEST_F(KeymapChange, press_russianLayout_isReported) {
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    setKeyboardMap(desk.server().displayName(), "ru");
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 1));
}

TEST_F(KeymapChange, press_dvorakLayout_placeCountsNotLetter) {
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    setKeyboardMap(desk.server().displayName(), "us(dvorak)");
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 1));
}

TEST_F(KeymapChange, press_secondGroupLocked_isReported) {
    setKeyboardMap(desk.server().displayName(), "us,ru", "grp:menu_toggle");
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    desk.keyboard().type({"COMP"});
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 1));
}

TEST_F(KeymapChange, setxkbmap_otherNumbering_grabsFollow) {
    ASSERT_EQ(probe.add(1, keyD, controlOptionCommandMask), 0);
    const auto before = desk.keyboard().keycode(keys::command);
    // The "base" rules number some keys differently from "evdev": Super_L, for one.
    runProgram({"setxkbmap", "-rules", "base", "-model", "pc105", "-layout", "us"}, onDesk());
    desk.connection().synchronise();
    ASSERT_NE(desk.keyboard().keycode(keys::command), before);
    ASSERT_TRUE(probeHolds(controlOptionCommand(keys::d)));
    desk.keyboard().type(controlOptionCommand(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 1));
}

TEST_F(KeymapChange, setxkbmap_arrowKeysMove_oldPlaceIsGivenUp) {
    ASSERT_EQ(probe.add(1, 124, hyperMask), 0);
    const auto before = desk.keyboard().keycode(keys::rightArrow);
    runProgram({"setxkbmap", "-rules", "base", "-model", "pc105", "-layout", "us"}, onDesk());
    desk.connection().synchronise();
    ASSERT_NE(desk.keyboard().keycode(keys::rightArrow), before);
    ASSERT_TRUE(probeHolds(hyper(keys::rightArrow)));
    desk.keyboard().type(hyper(keys::rightArrow));
    EXPECT_TRUE(probe.waitForPresses(1, 1));
    XConnection other(desk.server().displayName());
    const std::uint16_t modifiers = modifierMask(hyper(keys::rightArrow));
    const auto cookie =
        xcb_grab_key_checked(other.get(), 0, other.root(), modifiers, before, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    EXPECT_EQ(XReply<xcb_generic_error_t>{xcb_request_check(other.get(), cookie)}, nullptr);
}

TEST_F(KeymapChange, setxkbmap_superAndAltSwapped_commandIsWhereSuperIs) {
    ASSERT_EQ(probe.add(1, keyD, 0x1100), 0);
    setKeyboardMap(desk.server().displayName(), "us", "altwin:swap_alt_win");
    probe.staysQuiet();
    desk.keyboard().type({keys::control, keys::command, keys::d});
    EXPECT_TRUE(probe.staysQuiet()) << "the key with the window sign is Alt now";
    desk.keyboard().type({keys::control, keys::option, keys::d});
    EXPECT_TRUE(probe.waitForPresses(1, 1));
}

TEST_F(KeymapChange, xmodmap_superKeysOnTwoModifiers_eitherIsCommand) {
    ASSERT_EQ(probe.add(1, keyD, 0x1100), 0);
    runProgram({"xmodmap", "-e", "remove mod4 = Super_R", "-e", "add mod3 = Super_R"}, onDesk());
    probe.staysQuiet();
    int count = 0;
    for (const std::string_view super : {std::string_view("LWIN"), std::string_view("RWIN")}) {
        desk.keyboard().type({keys::control, super, keys::d});
        EXPECT_TRUE(probe.waitForPresses(1, ++count)) << super;
    }
}

TEST_F(KeymapChange, setxkbmap_manyTimesInARow_pressIsReportedOnce) {
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    for (const char* layout : {"de", "fr", "ru", "us", "gr", "us"}) {
        setKeyboardMap(desk.server().displayName(), layout);
    }
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 1));
    EXPECT_TRUE(probe.staysQuiet());
}

TEST_F(KeymapChange, secondKeyboard_appearsAndGoes_pressIsReported) {
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    // A further pair of master devices is what the server makes of a second person's keyboard and mouse.
    runProgram({"xinput", "create-master", "second"}, onDesk());
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 1));
    runProgram({"xinput", "remove-master", "second pointer"}, onDesk());
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 2));
}

TEST_F(KeymapChange, keyMissing_thenThere_isGrabbedByItself) {
    ASSERT_EQ(probe.add(1, keyD, hyperMask), 0);
    runProgram({"sh", "-c", "xmodmap -e 'clear mod4'"}, onDesk());
    ASSERT_TRUE(probe.turnUntil([&] { return !isHeldByAnotherProgram(desk.connection(), hyper(keys::d)); }));
    setKeyboardMap(desk.server().displayName(), "us");
    ASSERT_TRUE(probeHolds(hyper(keys::d)));
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(probe.waitForPresses(1, 1));
}

}  // namespace
}  // namespace vantrel::desk
