// Whose keys are whose in a sway session.
#include <gtest/gtest.h>

#include <fstream>

#include "tests/desk/wayland/support/SwayDesk.hpp"

namespace vantrel::desk {
namespace {

/// Where the person's own bindings send the pointer. Their command counts from the left edge of the second display,
/// and a little further: newer sways cut the fraction off.
constexpr LayoutPoint persons{.x = 100, .y = 150};
constexpr auto personsCommand = "seat seat0 cursor set 500.001 150.001";

struct Taken {
    const char* name;
    std::string configuration;
    std::map<std::string, std::string> files;
};

class SwayTakenKey : public testing::TestWithParam<Taken> {};

TEST_P(SwayTakenKey, hyperD_boundByThePerson_staysTheirs) {
    SwayOptions options = SwayDesk::twoDisplays(GetParam().configuration);
    options.files = GetParam().files;
    SwayDesk desk(options);
    auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), persons));
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(controlOptionCommand(keys::rightArrow), centreOfSecond)) << "the others are ours";
    agent->terminate();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), persons)) << "and theirs it stays";
}

INSTANTIATE_TEST_SUITE_P(
    Configurations, SwayTakenKey,
    testing::Values(
        Taken{"symbol", std::string("bindsym Ctrl+Mod1+Shift+Mod4+d ") + personsCommand + "\n", {}},
        Taken{"symbolByItsPlace", std::string("bindsym --to-code Ctrl+Mod1+Shift+Mod4+d ") + personsCommand + "\n", {}},
        Taken{"place", std::string("bindcode Ctrl+Mod1+Shift+Mod4+40 ") + personsCommand + "\n", {}},
        Taken{"included",
              "set $hyper Ctrl+Alt+Shift+Mod4\ninclude ./my-*\n",
              {{"my-keys", std::string("bindsym $hyper+d ") + personsCommand + "\n"}}},
        Taken{"block", std::string("bindsym --no-repeat {\n  Ctrl+Mod1+Shift+Mod4+d ") + personsCommand + "\n}\n", {}}),
    [](const auto& test) { return test.param.name; });

TEST(SwayKeys, chordOfAnotherMode_isRefusedAndWorksThere) {
    SwayDesk desk(
        SwayDesk::twoDisplays(std::string("mode other bindsym Ctrl+Mod1+Shift+Mod4+d ") + personsCommand + "\n"));
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().type(hyper(keys::d));
    EXPECT_TRUE(desk.person().staysAt(onMain));
    desk.control().run("mode other");
    EXPECT_TRUE(desk.jump(hyper(keys::d), persons));
}

TEST(SwayKeys, otherModes_jumpThereToo) {
    SwayDesk desk(
        SwayDesk::twoDisplays("mode \"to go, now; soon\" bindsym Escape mode default\nmode resize {\n bindsym "
                              "Escape mode default\n}\n"));
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.control().run("mode resize");
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    desk.control().run("mode \"to go, now; soon\"");
    EXPECT_TRUE(desk.jump(hyper(keys::d), onMain));
}

TEST(SwayKeys, modeMadeWhileRunning_jumpsThereToo) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.control().run("mode fresh bindsym Escape mode default");
    desk.control().run("mode fresh");
    // The mode is told to the agent while this press is under way: a later one finds it done.
    EXPECT_TRUE(waitUntil([&] {
        desk.person().moveTo(onMain);
        desk.person().type(hyper(keys::d));
        return desk.person().waitFor(centreOfSecond, std::chrono::seconds(1));
    }));
}

TEST(SwayKeys, reloadWithTheChordGivenAway_isThePersons) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    ASSERT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    std::ofstream(desk.sway().configurationFile(), std::ios::app)
        << "bindsym Ctrl+Mod1+Shift+Mod4+d " << personsCommand << '\n';
    desk.control().run("reload");
    EXPECT_TRUE(waitUntil([&] {
        desk.person().moveTo(onMain);
        return desk.jump(controlOptionCommand(keys::rightArrow), centreOfSecond);
    }));
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), persons));
}

class SwayLayoutToggle : public testing::TestWithParam<const char*> {};

TEST_P(SwayLayoutToggle, modifiersInAnyOrder_jump) {
    SwayDesk desk(SwayDesk::twoDisplays(), "us,ru", std::string("grp:") + GetParam());
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    using namespace keys;
    bool isOnMain = true;
    for (const Chord& chord : {Chord{control, option, shift, command, d}, Chord{shift, control, option, command, d},
                               Chord{command, shift, option, control, d}, Chord{option, command, control, shift, d}}) {
        EXPECT_TRUE(desk.jump(chord, isOnMain ? centreOfSecond : onMain));
        isOnMain = !isOnMain;
    }
    desk.person().type({control, option, command, d});
    desk.person().type({control, shift, command, d});
    desk.person().type({option, shift, d});
    EXPECT_TRUE(desk.person().staysAt(isOnMain ? onMain : centreOfSecond)) << "with a modifier less";
}

INSTANTIATE_TEST_SUITE_P(Options, SwayLayoutToggle,
                         testing::Values("alt_shift_toggle", "ctrl_shift_toggle", "ctrl_alt_toggle", "toggle"),
                         [](const auto& test) { return std::string(test.param); });

TEST(SwayKeys, end_isUnbound) {
    SwayDesk desk;
    auto agent = desk.startAgent();
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    // Unbinding what is not bound is an error.
    EXPECT_THROW(desk.control().run("unbindcode Ctrl+Mod1+Shift+Mod4+40"), std::runtime_error);
    EXPECT_THROW(desk.control().run("unbindcode Ctrl+Mod1+Mod4+114"), std::runtime_error);
}

class SwaySocketVariable : public testing::TestWithParam<const char*> {};

TEST_P(SwaySocketVariable, isNotThisSessions_hotKeysWork) {
    SwayDesk desk;
    SwayDesk outer;
    if (GetParam() == std::string("missing")) {
        desk.environment().unset("SWAYSOCK");
    } else if (GetParam() == std::string("dead")) {
        desk.environment().set("SWAYSOCK", "/nowhere/sway.sock");
    } else {
        desk.environment().set("SWAYSOCK", outer.sway().controlSocket().native());
    }
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

INSTANTIATE_TEST_SUITE_P(Values, SwaySocketVariable, testing::Values("missing", "dead", "ofAnotherSession"),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace vantrel::desk
