// What is Hyprland's own about hot keys.
#include <gtest/gtest.h>

#include "tests/desk/wayland/support/HyprlandDesk.hpp"

namespace vantrel::desk {
namespace {

/// Where the person's own binding sends the pointer.
constexpr LayoutPoint persons{.x = 100, .y = 150};
const std::string personsBinding =
    "hl.bind(\"CTRL + ALT + SHIFT + SUPER + D\", hl.dsp.cursor.move({ x = 100, y = 150 }))\n";

TEST(HyprlandSession, anotherKeyboardsLayout_jumps) {
    HyprlandDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    ASSERT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    SeatClient another(desk.compositor().socket(), "ru");
    // The agent learns of that keyboard when it is typed on.
    EXPECT_TRUE(waitUntil([&] {
        another.moveTo(onMain);
        another.type(hyper(keys::d));
        return another.waitFor(centreOfSecond, std::chrono::seconds(1));
    }));
}

TEST(HyprlandKeys, reloadWithTheChordGivenAway_isThePersonsUntilTheyTakeItOut) {
    HyprlandDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    ASSERT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    desk.hyprland().configure(personsBinding);
    EXPECT_TRUE(waitUntil([&] {
        desk.person().moveTo(onMain);
        return desk.jump(hyper(keys::d), persons);
    }));
    EXPECT_TRUE(desk.person().staysAt(persons)) << "and nothing else comes of it";
    desk.hyprland().configure("");
    EXPECT_TRUE(waitUntil([&] {
        desk.person().moveTo(onMain);
        desk.person().type(hyper(keys::d));
        return desk.person().waitFor(centreOfSecond, std::chrono::seconds(1));
    }));
}

class HyprlandSignature : public testing::TestWithParam<const char*> {};

TEST_P(HyprlandSignature, isNotThisSessions_hotKeysWork) {
    HyprlandDesk desk;
    HyprlandDesk outer;
    if (GetParam() == std::string("missing")) {
        desk.environment().unset("HYPRLAND_INSTANCE_SIGNATURE");
    } else if (GetParam() == std::string("dead")) {
        desk.environment().set("HYPRLAND_INSTANCE_SIGNATURE", "nobody_1_2");
    } else {
        desk.environment().set("HYPRLAND_INSTANCE_SIGNATURE", outer.hyprland().signature());
    }
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

INSTANTIATE_TEST_SUITE_P(Values, HyprlandSignature, testing::Values("missing", "dead", "ofAnotherSession"),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace vantrel::desk
