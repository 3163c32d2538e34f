// Desktops that lack something, or have another program that wants the same keys.
#include <gtest/gtest.h>

#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/KeyGrab.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

TEST(Surroundings, bareServer_hotKeysWork) {
    Desk desk({.hasSessionBus = false, .hasWindowManager = false});
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond)) << desk.pointer().position();
}

TEST(Surroundings, windowManager_hotKeysWork) {
    Desk desk({.hasSessionBus = true, .hasWindowManager = true});
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond)) << desk.pointer().position();
}

TEST(Surroundings, anotherProgramHoldsHyperD_fixedHotKeysWork) {
    Desk desk;
    XConnection other(desk.server().displayName());
    KeyGrab grab(other, hyper(keys::d));
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(grab.waitForPress()) << "the other program still gets its key";
    EXPECT_TRUE(desk.pointer().staysAt(onMain));
    desk.keyboard().type(hyper(keys::s));
    EXPECT_TRUE(waitUntil([&] { return desk.defaults().typeOf("savedPoints") == "blob"; }));
    desk.keyboard().type(controlOptionCommand(keys::rightArrow));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond)) << desk.pointer().position();
    desk.pointer().moveTo({-300, 400});
    desk.keyboard().type(controlOptionCommand(keys::m));
    EXPECT_TRUE(desk.pointer().waitFor(onMain)) << desk.pointer().position();
    desk.keyboard().type(controlOptionCommand(keys::leftArrow));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond)) << desk.pointer().position();
}

}  // namespace
}  // namespace vantrel::desk
