// The display jump from key press to pointer, on the two displays that every desk starts with.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

TEST(DisplayJump, hyperD_thereAndBack_returnsToTheDeparture) {
    Desk desk;
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond)) << desk.pointer().position();
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(onMain)) << desk.pointer().position();
}

TEST(DisplayJump, hyperD_leftNearTheEdge_returnsInsideTheMargin) {
    Desk desk;
    const auto agent = desk.startAgent();
    desk.pointer().moveTo({-1020, 102});
    desk.keyboard().type(hyper(keys::d));
    ASSERT_TRUE(desk.pointer().waitFor({756, 491})) << desk.pointer().position();
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor({-1000, 124})) << desk.pointer().position();
}

TEST(DisplayJump, arrows_threeDisplays_goToEitherSide) {
    Desk desk;
    auto displays = DisplayLayout::twoDisplays();
    displays.push_back({.output = 2, .bounds = {.x = 1512, .y = 0, .width = 800, .height = 600}});
    desk.layout().apply(displays);
    const auto agent = desk.startAgent();
    constexpr MainPoint centreOfThird{.x = 1912, .y = 300};
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(controlOptionCommand(keys::rightArrow));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfThird)) << desk.pointer().position();
    desk.keyboard().type(controlOptionCommand(keys::rightArrow));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond)) << desk.pointer().position();
    desk.keyboard().type(controlOptionCommand(keys::leftArrow));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfThird)) << desk.pointer().position();
    desk.keyboard().type(controlOptionCommand(keys::leftArrow));
    EXPECT_TRUE(desk.pointer().waitFor(onMain)) << desk.pointer().position();
}

TEST(DisplayJump, hyperD_departures_areStoredUnderEachDisplay) {
    Desk desk;
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    ASSERT_TRUE(desk.pointer().waitFor(centreOfSecond));
    desk.keyboard().type(hyper(keys::d));
    ASSERT_TRUE(desk.pointer().waitFor(onMain));
    EXPECT_EQ(desk.defaults().typeOf("rememberedPositions"), "blob");
    const auto stored = nlohmann::json::parse(desk.defaults().read("rememberedPositions").value_or(""), nullptr, false);
    ASSERT_TRUE(stored.is_object());
    EXPECT_EQ(stored.size(), 2U) << stored;
    std::vector<MainPoint> points;
    for (const auto& point : stored) {
        points.push_back({.x = point.at("x"), .y = point.at("y")});
    }
    EXPECT_NE(std::find(points.begin(), points.end(), onMain), points.end()) << stored;
    EXPECT_NE(std::find(points.begin(), points.end(), centreOfSecond), points.end()) << stored;
}

TEST(DisplayJump, controlOptionCommandD_doesNothing) {
    Desk desk;
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(controlOptionCommand(keys::d));
    EXPECT_TRUE(desk.pointer().staysAt(onMain));
}

TEST(DisplayJump, dAlone_doesNothing) {
    Desk desk;
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(onMain);
    desk.keyboard().type({keys::d});
    EXPECT_TRUE(desk.pointer().staysAt(onMain));
}

class DisplayJumpWithLock : public testing::TestWithParam<std::string_view> {};

TEST_P(DisplayJumpWithLock, hyperD_lockOn_jumps) {
    Desk desk;
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(onMain);
    desk.keyboard().type({GetParam()});
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond)) << desk.pointer().position();
    desk.keyboard().type(controlOptionCommand(keys::rightArrow));
    EXPECT_TRUE(desk.pointer().waitFor(onMain)) << desk.pointer().position();
}

INSTANTIATE_TEST_SUITE_P(Locks, DisplayJumpWithLock, testing::Values(keys::capsLock, keys::numLock));

struct KeyboardMap {
    const char* name;
    const char* layout;
    const char* option;
};

class DisplayJumpWithMap : public testing::TestWithParam<KeyboardMap> {};

TEST_P(DisplayJumpWithMap, hyperD_mapSetUnderTheAgent_jumpsAndTheSmallerChordDoesNot) {
    Desk desk;
    const auto agent = desk.startAgent();
    setKeyboardMap(desk.server().displayName(), GetParam().layout, GetParam().option);
    ASSERT_TRUE(desk.waitForHotKey(hyper(keys::d)));
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(controlOptionCommand(keys::d));
    EXPECT_TRUE(desk.pointer().staysAt(onMain)) << desk.pointer().position();
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond)) << desk.pointer().position();
    desk.keyboard().type({keys::shift, keys::option, keys::command, keys::control, keys::d});
    EXPECT_TRUE(desk.pointer().waitFor(onMain)) << desk.pointer().position();
}

INSTANTIATE_TEST_SUITE_P(Maps, DisplayJumpWithMap,
                         testing::Values(KeyboardMap{"russian", "ru", ""},
                                         KeyboardMap{"switchedByAltAndShift", "us,ru", "grp:alt_shift_toggle"}),
                         [](const auto& test) { return test.param.name; });

TEST(DisplayJump, hyperD_heldForTwoSeconds_actsOnce) {
    constexpr auto holdingTime = std::chrono::seconds(2);
    Desk desk;
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(onMain);
    desk.keyboard().hold(hyper(keys::d));
    ASSERT_TRUE(desk.pointer().waitFor(centreOfSecond)) << desk.pointer().position();
    EXPECT_TRUE(desk.pointer().staysAt(centreOfSecond, holdingTime)) << desk.pointer().position();
    desk.keyboard().letGo();
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(onMain)) << "the next press acts again; " << desk.pointer().position();
}

TEST(DisplayJump, hyperD_pressedManyTimes_eachPressActs) {
    constexpr int presses = 50;
    Desk desk;
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(onMain);
    for (int press = 0; press < presses; ++press) {
        desk.keyboard().type(hyper(keys::d));
    }
    // An even number of presses ends where it began, so one more tells a lost press from none.
    desk.keyboard().type(hyper(keys::d));
    // While they are obeyed it is passed on the way.
    EXPECT_TRUE(waitUntil([&] { return desk.pointer().staysAt(centreOfSecond); }, std::chrono::seconds(10)))
        << desk.pointer().position();
}

TEST(DisplayJump, hyperD_glide_endsExactlyOnTheTarget) {
    Desk desk;
    desk.defaults().writeText("animation", "glide");
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond)) << desk.pointer().position();
    EXPECT_TRUE(desk.pointer().staysAt(centreOfSecond)) << desk.pointer().position();
}

}  // namespace
}  // namespace vantrel::desk
