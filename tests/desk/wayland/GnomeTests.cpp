// What GNOME's session adds: hot keys, the item in the panel and messages by the extension, which may come and go.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/desk/wayland/support/GnomeDesk.hpp"
#include "tests/desk/wayland/support/WaylandDesk.hpp"

namespace vantrel::desk {
namespace {

constexpr auto item = "Main.panel.statusArea.vantrel";

class GnomeKeys : public testing::Test {
  protected:
    void start() {
        agent = desk.startAgent();
        desk.person().moveTo(onMain);
    }

    bool hasItem() { return desk.shell().evaluate(std::string("!!") + item) == "true"; }

    GnomeDesk desk;
    std::unique_ptr<AgentProcess> agent;
};

TEST_F(GnomeKeys, pressed_jump) {
    start();
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    EXPECT_TRUE(desk.jump(controlOptionCommand(keys::rightArrow), onMain));
    EXPECT_TRUE(desk.jump(controlOptionCommand(keys::leftArrow), centreOfSecond));
    EXPECT_EQ(agent->standardError(), "");
}

TEST_F(GnomeKeys, wrongChords_doNothing) {
    start();
    desk.person().type(controlOptionCommand(keys::d));
    desk.person().type({keys::d});
    desk.person().type({keys::control, keys::option, keys::shift, keys::command, keys::rightArrow});
    EXPECT_TRUE(desk.person().staysAt(onMain));
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond)) << "the right one does";
}

TEST_F(GnomeKeys, heldKey_actsOnce) {
    start();
    desk.person().hold(hyper(keys::d));
    EXPECT_TRUE(desk.person().waitFor(centreOfSecond));
    EXPECT_TRUE(desk.person().staysAt(centreOfSecond, std::chrono::milliseconds(1500)));
    desk.person().letGo();
    EXPECT_TRUE(desk.jump(hyper(keys::d), onMain)) << "the next press acts again";
}

TEST_F(GnomeKeys, locksOn_jump) {
    start();
    desk.person().type({keys::capsLock});
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    desk.person().type({keys::capsLock});
    desk.person().type({keys::numLock});
    EXPECT_TRUE(desk.jump(hyper(keys::d), onMain));
    desk.person().type({keys::numLock});
}

TEST_F(GnomeKeys, chordTaken_staysItsOwners) {
    static_cast<void>(desk.shell().evaluate("global.display.grab_accelerator('<Control><Alt><Shift><Super>0x28', 0)"));
    start();
    desk.person().type(hyper(keys::d));
    EXPECT_TRUE(desk.person().staysAt(onMain));
    EXPECT_TRUE(desk.jump(controlOptionCommand(keys::rightArrow), centreOfSecond)) << "the others are ours";
}

TEST_F(GnomeKeys, extensionOffAndOn_everythingComesBack) {
    start();
    for (int round = 0; round < 2; ++round) {
        desk.shell().switchExtension(false);
        ASSERT_TRUE(waitUntil([&] { return !desk.shell().hasExtension(); }));
        EXPECT_FALSE(hasItem());
        desk.person().type(hyper(keys::d));
        EXPECT_TRUE(desk.person().staysAt(onMain));
        desk.shell().switchExtension(true);
        ASSERT_TRUE(waitUntil([&] { return hasItem(); }));
        EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
        EXPECT_TRUE(desk.jump(hyper(keys::d), onMain));
    }
    EXPECT_TRUE(agent->isRunning());
    EXPECT_EQ(agent->standardError(), "");
}

/// The mode of the locked screen, in which extensions are off; the lock itself is the display manager's.
TEST_F(GnomeKeys, screenLockedAndUnlocked_everythingComesBack) {
    start();
    static_cast<void>(desk.shell().evaluate("Main.sessionMode.pushMode('unlock-dialog')"));
    ASSERT_TRUE(waitUntil([&] { return !desk.shell().hasExtension(); }));
    desk.person().type(hyper(keys::d));
    EXPECT_TRUE(desk.person().staysAt(onMain));
    static_cast<void>(desk.shell().evaluate("Main.sessionMode.popMode('unlock-dialog')"));
    ASSERT_TRUE(waitUntil([&] { return hasItem(); }));
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    EXPECT_EQ(agent->standardError(), "");
}

TEST_F(GnomeKeys, agentKilled_nothingIsLeftAndTheNextHasAll) {
    start();
    ASSERT_TRUE(waitUntil([&] { return hasItem(); }));
    agent->kill();
    EXPECT_TRUE(waitUntil([&] { return !hasItem(); }));
    EXPECT_NE(desk.shell().evaluate("global.display.grab_accelerator('<Control><Alt><Shift><Super>0x28', 0)"), "0")
        << "the chord is free";
    start();
    EXPECT_TRUE(desk.jump(controlOptionCommand(keys::rightArrow), centreOfSecond));
}

TEST_F(GnomeKeys, shellKilledAndBack_theAgentEndsAndTheNextServes) {
    start();
    desk.shell().crash();
    EXPECT_EQ(agent->waitForExit(), (ExitStatus{.code = 1, .signal = std::nullopt}));
    desk.shell().run();
    desk.seatPerson();
    start();
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

TEST_F(GnomeKeys, strangerOnTheBus_getsNothing) {
    start();
    BusClient stranger(desk.compositor().busAddress());
    for (const char* method : {"GetPointer", "BeginCapture", "EndCapture", "HideMessage"}) {
        EXPECT_EQ(stranger.call("org.vantrel.Shell", "/org/vantrel/Shell", "org.vantrel.Shell1", method, nullptr),
                  nullptr)
            << method;
    }
    EXPECT_EQ(stranger.call("org.vantrel.Shell", "/org/vantrel/Shell", "org.vantrel.Shell1", "Warp",
                            g_variant_new("(dd)", 10.0, 10.0)),
              nullptr);
    EXPECT_TRUE(desk.person().staysAt(onMain));
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond)) << "the agent is served all the same";
}

TEST(GnomeLayouts, russian_aloneAndActive_jump) {
    for (const std::vector<std::string>& layouts : {std::vector<std::string>{"ru"}, {"us", "ru"}}) {
        GnomeOptions options = GnomeDesk::twoDisplays();
        options.keyboardLayouts = layouts;
        GnomeDesk desk(options);
        const auto agent = desk.startAgent();
        desk.person().moveTo(onMain);
        EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
        if (layouts.size() > 1) {
            static_cast<void>(desk.shell().evaluate("witness.chooseLayout(1)"));
        }
        EXPECT_TRUE(desk.jump(hyper(keys::d), onMain));
    }
}

class GnomeLayoutToggle : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Options, GnomeLayoutToggle, testing::Values("grp:alt_shift_toggle", "grp:ctrl_shift_toggle"),
                         [](const auto& option) {
                             return std::string(option.param) == "grp:alt_shift_toggle" ? "altShift" : "controlShift";
                         });

TEST_P(GnomeLayoutToggle, modifiersInAnyOrder_jump) {
    GnomeOptions options = GnomeDesk::twoDisplays();
    options.keyboardLayouts = {"us", "ru"};
    options.keyboardOptions = {GetParam()};
    GnomeDesk desk(options);
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    Chord modifiers{keys::control, keys::option, keys::shift, keys::command};
    std::sort(modifiers.begin(), modifiers.end());
    LayoutPoint target = centreOfSecond;
    do {
        Chord chord = modifiers;
        chord.push_back(keys::d);
        EXPECT_TRUE(desk.jump(chord, target)) << modifiers[0] << modifiers[1] << modifiers[2] << modifiers[3];
        target = target == onMain ? centreOfSecond : onMain;
    } while (std::next_permutation(modifiers.begin(), modifiers.end()));
}

class GnomeExtension : public testing::Test {
  protected:
    static GnomeOptions without(bool hasExtension) {
        GnomeOptions options = GnomeDesk::twoDisplays();
        options.hasExtension = hasExtension;
        options.extensionIsOn = false;
        return options;
    }
};

TEST_F(GnomeExtension, off_isSaidAndWorksWhenItIsSwitchedOn) {
    GnomeDesk desk(without(true));
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(waitUntil([&] { return !agent->standardError().empty(); }));
    EXPECT_EQ(agent->standardError(),
              "vantrel: Vantrel's extension is off in GNOME: gnome-extensions enable vantrel@vantrel.org\n");
    desk.person().type(hyper(keys::d));
    EXPECT_TRUE(desk.openAndWait("vantrel://next"));
    EXPECT_TRUE(desk.person().staysAt(onMain));
    desk.shell().switchExtension(true);
    ASSERT_TRUE(waitUntil([&] { return desk.shell().evaluate(std::string("!!") + item) == "true"; }));
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

TEST_F(GnomeExtension, ofAnotherVersion_isSaid) {
    GnomeOptions options = GnomeDesk::twoDisplays();
    options.extensionIsOfAnotherVersion = true;
    GnomeDesk desk(options);
    const auto agent = desk.startAgent();
    EXPECT_TRUE(waitUntil([&] { return !agent->standardError().empty(); }));
    EXPECT_EQ(agent->standardError(),
              "vantrel: Vantrel's extension in GNOME is of another version: log out and in once\n");
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.openAndWait("vantrel://next"));
    EXPECT_TRUE(desk.person().staysAt(onMain));
}

TEST_F(GnomeExtension, notInstalled_isSaidAndTheAgentRuns) {
    GnomeDesk desk(without(false));
    const auto agent = desk.startAgent();
    EXPECT_TRUE(waitUntil([&] { return !agent->standardError().empty(); }));
    EXPECT_NE(agent->standardError().find("install the package vantrel-gnome-shell"), std::string::npos)
        << agent->standardError();
    EXPECT_TRUE(desk.openAndWait("vantrel://next"));
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
}

}  // namespace
}  // namespace vantrel::desk
