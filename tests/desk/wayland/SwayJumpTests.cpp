// The jumps from key press to pointer in a sway session.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <algorithm>

#include "tests/desk/wayland/support/SwayDesk.hpp"

namespace vantrel::desk {
namespace {

constexpr LayoutPoint onMain = SwayDesk::onMain;
constexpr LayoutPoint centreOfSecond = SwayDesk::centreOfSecond;

struct Arrangement {
    const char* name;
    std::vector<SwayOutput> outputs;
    LayoutPoint departure;  ///< on the main display
    LayoutPoint centre;     ///< of the other one
};

class SwayJump : public testing::TestWithParam<Arrangement> {};

TEST_P(SwayJump, hyperD_thereAndBack_isExact) {
    SwayDesk desk({.outputs = GetParam().outputs, .configuration = {}, .files = {}});
    const auto agent = desk.startAgent();
    desk.person().moveTo(GetParam().departure);
    for (int round = 0; round < 5; ++round) {
        ASSERT_TRUE(desk.jump(hyper(keys::d), GetParam().centre)) << desk.person().pointer().value_or(LayoutPoint{});
        ASSERT_TRUE(desk.jump(controlOptionCommand(keys::leftArrow), GetParam().departure))
            << desk.person().pointer().value_or(LayoutPoint{});
    }
}

INSTANTIATE_TEST_SUITE_P(
    Arrangements, SwayJump,
    testing::Values(
        Arrangement{"plain", SwayDesk::twoDisplays().outputs, onMain, centreOfSecond},
        Arrangement{"scaleOneAndAQuarter",
                    {{.mode = "500x400", .scale = "1.25"}, {.mode = "500x400", .x = 400, .y = 0, .scale = "1.25"}},
                    {300.5, 200.25},
                    {600, 160}},
        Arrangement{"scaleOneAndAHalf",
                    {{.mode = "600x450", .scale = "1.5"}, {.mode = "600x450", .x = 400, .y = 0, .scale = "1.5"}},
                    {300, 200},
                    {600, 150}},
        Arrangement{"scaleTwo",
                    {{.mode = "800x600", .scale = "2"}, {.mode = "400x300", .x = 400, .y = 0}},
                    {300.5, 200.5},
                    {600, 150}},
        Arrangement{"turned",
                    {{.mode = "400x300"}, {.mode = "400x300", .x = 400, .y = 0, .transform = "90"}},
                    {300, 200},
                    {550, 200}},
        Arrangement{"negativeOrigin",
                    {{.mode = "400x300"}, {.mode = "800x600", .x = -400, .y = -100, .scale = "2"}},
                    {300, 200},
                    {-200, 50}}),
    [](const auto& test) { return test.param.name; });

TEST(SwaySession, departures_areStoredUnderEachDisplay) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    ASSERT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    ASSERT_TRUE(desk.jump(hyper(keys::d), onMain));
    const auto stored = nlohmann::json::parse(desk.defaults().read("rememberedPositions").value_or(""), nullptr, false);
    ASSERT_TRUE(stored.is_object());
    std::vector<LayoutPoint> points;
    for (const auto& point : stored) {
        points.push_back({.x = point.at("x"), .y = point.at("y")});
    }
    EXPECT_EQ(points.size(), 2U) << stored;
    EXPECT_NE(std::find(points.begin(), points.end(), onMain), points.end()) << stored;
    EXPECT_NE(std::find(points.begin(), points.end(), centreOfSecond), points.end()) << stored;
}

TEST(SwaySession, savedPoint_comesBackThere) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo({.x = 300.5, .y = 200.25});
    desk.person().type(hyper(keys::s));
    ASSERT_TRUE(
        waitUntil([&] { return desk.defaults().read("savedPoints").value_or("").find("300.5") != std::string::npos; }));
    desk.person().moveTo({.x = -100, .y = 300});
    EXPECT_TRUE(desk.jump(controlOptionCommand(keys::m), {.x = 300.5, .y = 200.25}));
}

TEST(SwaySession, wrongChords_doNothing) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().type(controlOptionCommand(keys::d));
    desk.person().type({keys::d});
    desk.person().type({keys::control, keys::option, keys::shift, keys::command, keys::rightArrow});
    EXPECT_TRUE(desk.person().staysAt(onMain));
}

TEST(SwaySession, heldKey_actsOnce) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().hold(hyper(keys::d));
    ASSERT_TRUE(desk.person().waitFor(centreOfSecond));
    EXPECT_TRUE(desk.person().staysAt(centreOfSecond, std::chrono::milliseconds(1500)));
    desk.person().letGo();
    EXPECT_TRUE(desk.jump(hyper(keys::d), onMain)) << "the next press acts again";
}

class SwayLock : public testing::TestWithParam<std::string_view> {};

TEST_P(SwayLock, lockOn_jumps) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().type({GetParam()});
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    EXPECT_TRUE(desk.jump(controlOptionCommand(keys::rightArrow), onMain));
}

INSTANTIATE_TEST_SUITE_P(Locks, SwayLock, testing::Values(keys::capsLock, keys::numLock));

TEST(SwaySession, capsLockAsHyper_jumps) {
    SwayDesk desk(SwayDesk::twoDisplays(), "us", "vantrel:hyper");
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump({keys::capsLock, keys::d}, centreOfSecond));
    EXPECT_TRUE(desk.jump(hyper(keys::d), onMain)) << "the four keys themselves go on working";
}

TEST(SwaySession, capsLockWithoutTheOption_doesNothing) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().type({keys::capsLock, keys::d});
    EXPECT_TRUE(desk.person().staysAt(onMain));
}

TEST(SwaySession, russianAlone_jumpsAndTheSmallerChordDoesNot) {
    SwayDesk desk(SwayDesk::twoDisplays("input * xkb_layout ru\n"), "ru");
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().type(controlOptionCommand(keys::d));
    EXPECT_TRUE(desk.person().staysAt(onMain));
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

TEST(SwaySession, russianAsTheActiveLayout_jumps) {
    SwayDesk desk(SwayDesk::twoDisplays(), "us,ru");
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().chooseLayout(1);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    desk.person().chooseLayout(0);
    EXPECT_TRUE(desk.jump(hyper(keys::d), onMain));
}

TEST(SwaySession, glide_endsExactlyOnTheTarget) {
    SwayDesk desk;
    desk.defaults().writeText("animation", "glide");
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    EXPECT_TRUE(desk.person().staysAt(centreOfSecond));
    EXPECT_TRUE(desk.jump(hyper(keys::d), onMain));
}

TEST(SwaySession, displayPluggedInAndMoved_theNextJumpKnows) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.control().run("output HEADLESS-2 position 640 0");
    EXPECT_TRUE(desk.jump(hyper(keys::d), {.x = 840, .y = 150}));
    ASSERT_TRUE(desk.jump(hyper(keys::d), onMain));
    desk.control().run("output HEADLESS-3 mode 320x240 position -320 0");
    desk.control().run("create_output");
    // It comes to all programs at once.
    ASSERT_TRUE(waitUntil([&] { return desk.person().displayCount() == 3; }));
    EXPECT_TRUE(desk.jump(controlOptionCommand(keys::leftArrow), {.x = -160, .y = 120}));
}

TEST(SwaySession, displaySwitchedOff_isNoTargetUntilItIsOnAgain) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.control().run("output HEADLESS-2 disable");
    const auto outputs = nlohmann::json::parse(desk.control().ask(SwayControl::getOutputs));
    if (std::all_of(outputs.begin(), outputs.end(), [](const auto& output) { return output.at("active"); })) {
        GTEST_SKIP() << "this sway cannot switch off a display that is none";
    }
    ASSERT_TRUE(waitUntil([&] { return desk.person().displayCount() == 1; }));
    desk.person().type(hyper(keys::d));
    EXPECT_TRUE(desk.person().staysAt(onMain));
    desk.control().run("output HEADLESS-2 enable");
    ASSERT_TRUE(waitUntil([&] { return desk.person().displayCount() == 2; }));
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

TEST(SwaySession, buttonHeld_movesNothingAndRemembersNothing) {
    SwayDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().pressButton();
    desk.person().type(hyper(keys::d));
    EXPECT_TRUE(desk.person().staysAt(onMain));
    desk.person().releaseButton();
    EXPECT_EQ(desk.defaults().read("rememberedPositions"), std::nullopt);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

}  // namespace
}  // namespace vantrel::desk
