// The desk itself: what the other tests build on must hold, and must be able to fail.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/KeyGrab.hpp"

namespace vantrel::desk {
namespace {

constexpr auto shortDeadline = std::chrono::milliseconds(200);

TEST(Desk, pointer_movedOnEitherDisplay_isReadWhereItWasPut) {
    Desk desk;
    for (const MainPoint point :
         {MainPoint{700, 500}, MainPoint{-512, 484}, MainPoint{-1024, 100}, MainPoint{1511, 981}}) {
        desk.pointer().moveTo(point);
        EXPECT_EQ(desk.pointer().position(), point);
    }
}

TEST(Desk, pointer_waitForAnotherPoint_givesUp) {
    Desk desk;
    desk.pointer().moveTo({700, 500});
    EXPECT_FALSE(desk.pointer().waitFor({701, 500}, shortDeadline));
    EXPECT_TRUE(desk.pointer().staysAt({700, 500}, shortDeadline));
    EXPECT_FALSE(desk.pointer().staysAt({701, 500}, shortDeadline));
}

TEST(DisplayLayout, apply_secondDisplayOff_pointerCannotGoThere) {
    Desk desk;
    desk.layout().apply({DisplayLayout::twoDisplays().front()});
    EXPECT_EQ(desk.layout().mainOrigin(), (RootPoint{0, 0}));
    EXPECT_THROW(desk.pointer().moveTo({-512, 484}, shortDeadline), std::exception);
}

TEST(DisplayLayout, apply_sixteenDisplays_allAreReached) {
    Desk desk;
    std::vector<PlacedDisplay> displays;
    for (int output = 0; output < DisplayLayout::outputCount; ++output) {
        displays.push_back({.output = output, .bounds = {.x = 480 * output, .y = 0, .width = 480, .height = 360}});
    }
    desk.layout().apply(displays);
    desk.pointer().moveTo({480 * 15 + 479, 359});
    EXPECT_EQ(desk.pointer().position(), (MainPoint{480 * 15 + 479, 359}));
}

TEST(Keyboard, type_grabbedChord_reachesItsHolder) {
    Desk desk;
    XConnection other(desk.server().displayName());
    KeyGrab grab(other, hyper(keys::d));
    desk.keyboard().type(controlOptionCommand(keys::d));
    EXPECT_FALSE(grab.waitForPress(quietTime));
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(grab.waitForPress());
}

TEST(Keyboard, type_capsLock_grabbedChordStillReachesItsHolder) {
    Desk desk;
    XConnection other(desk.server().displayName());
    KeyGrab grab(other, hyper(keys::d));
    desk.keyboard().type({keys::capsLock});
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(grab.waitForPress());
}

TEST(KeyGrab, isHeldByAnotherProgram_followsTheOtherProgram) {
    Desk desk;
    EXPECT_FALSE(isHeldByAnotherProgram(desk.connection(), hyper(keys::s)));
    XConnection other(desk.server().displayName());
    {
        const KeyGrab grab(other, hyper(keys::s));
        EXPECT_TRUE(isHeldByAnotherProgram(desk.connection(), hyper(keys::s)));
        EXPECT_FALSE(isHeldByAnotherProgram(desk.connection(), hyper(keys::d)));
    }
    EXPECT_FALSE(isHeldByAnotherProgram(desk.connection(), hyper(keys::s)));
}

TEST(Keyboard, setKeyboardMap_otherLayout_placesStay) {
    Desk desk;
    const auto place = desk.keyboard().keycode(keys::d);
    setKeyboardMap(desk.server().displayName(), "us,ru", "grp:alt_shift_toggle");
    EXPECT_EQ(desk.keyboard().keycode(keys::d), place);
}

TEST(StoredDefaults, write_readBack_keepsValueAndType) {
    const Home home;
    const StoredDefaults defaults(home.storeFile());
    EXPECT_EQ(defaults.read("mode"), std::nullopt);
    defaults.writeText("mode", "manual");
    defaults.writeInteger("primaryHotKeyCode", 2);
    defaults.writeData("savedPoints", "[]");
    EXPECT_EQ(defaults.read("mode"), "manual");
    EXPECT_EQ(defaults.read("primaryHotKeyCode"), "2");
    EXPECT_EQ(defaults.typeOf("primaryHotKeyCode"), "integer");
    EXPECT_EQ(defaults.typeOf("savedPoints"), "blob");
}

TEST(ChildProcess, end_runningProcess_saysWhichSignalEndedIt) {
    ChildProcess process({.arguments = {"sleep", "1000"}});
    EXPECT_TRUE(process.isRunning());
    EXPECT_EQ(process.end(SIGKILL), (ExitStatus{.code = std::nullopt, .signal = SIGKILL}));
}

TEST(ChildProcess, runProgram_failingProgram_throwsWithItsWords) {
    try {
        runProgram({"sh", "-c", "echo broken >&2; exit 3"}, Environment::minimal());
        FAIL() << "no exception";
    } catch (const std::exception& error) {
        EXPECT_NE(std::string(error.what()).find("broken"), std::string::npos) << error.what();
    }
}

TEST(Desk, windowManager_andBus_comeUp) {
    Desk desk({.hasSessionBus = true, .hasWindowManager = true});
    EXPECT_FALSE(desk.bus().address().empty());
}

}  // namespace
}  // namespace vantrel::desk
