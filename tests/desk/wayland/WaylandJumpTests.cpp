// Jumps in a Wayland session of any kind, from a URL to the pointer.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <tuple>

#include "tests/desk/wayland/support/InstalledCompositors.hpp"
#include "tests/desk/wayland/support/ScreenLock.hpp"
#include "tests/desk/wayland/support/TypingWindow.hpp"
#include "tests/desk/wayland/support/WaylandDesk.hpp"

namespace vantrel::desk {
namespace {

constexpr LayoutPoint centreOfMain{.x = 320, .y = 240};

struct Arrangement {
    const char* name;
    std::vector<PrivateOutput> outputs;
    LayoutPoint departure;  ///< on the main display
    LayoutPoint centre;     ///< of the other one
};

class WaylandJump : public testing::TestWithParam<std::tuple<CompositorKind, Arrangement>> {};

TEST_P(WaylandJump, thereAndBack_isExact) {
    const auto& [kind, arrangement] = GetParam();
    WaylandDesk desk(kind.start(arrangement.outputs));
    const auto agent = desk.startAgent();
    const LayoutPoint departure = kind.told(kind.kept(arrangement.departure));
    const LayoutPoint centre = kind.kept(arrangement.centre);
    desk.person().moveTo(kind.kept(arrangement.departure));
    for (int round = 0; round < 5; ++round) {
        ASSERT_TRUE(desk.jump("vantrel://next", centre)) << desk.person().pointer().value_or(LayoutPoint{});
        ASSERT_TRUE(desk.jump("vantrel://previous", departure)) << desk.person().pointer().value_or(LayoutPoint{});
    }
}

std::vector<Arrangement> arrangements() {
    return {Arrangement{"plain", WaylandDesk::twoOutputs(), onMain, centreOfSecond},
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
                        {-200, 50}}};
}

INSTANTIATE_TEST_SUITE_P(Compositors, WaylandJump,
                         testing::Combine(testing::ValuesIn(installedCompositors()), testing::ValuesIn(arrangements())),
                         [](const auto& test) {
                             return std::get<0>(test.param).name + "_" + std::get<1>(test.param).name;
                         });

class WaylandAgent : public testing::TestWithParam<CompositorKind> {
  protected:
    /// All that is stored of where the pointer was.
    std::vector<LayoutPoint> remembered() {
        std::vector<LayoutPoint> points;
        for (const auto& point : nlohmann::json::parse(desk.defaults().read("rememberedPositions").value_or("{}"))) {
            points.push_back({.x = point.at("x"), .y = point.at("y")});
        }
        return points;
    }

    /// After the pointer was at onMain and may have jumped to the second display, or several times there and back.
    void expectNothingWrongIsRemembered() {
        ASSERT_TRUE(desk.savePoint()) << "which is obeyed after all that came before";
        for (const LayoutPoint point : remembered()) {
            EXPECT_TRUE(point == onMain || point == centreOfSecond) << point;
        }
        // A motion to where the pointer rests may tell nobody anything.
        desk.person().moveTo(centreOfMain);
        desk.person().moveTo(onMain);
        EXPECT_TRUE(desk.jump("vantrel://next", centreOfSecond));
        EXPECT_TRUE(desk.jump("vantrel://next", onMain));
    }

    /// Moves the pointer to onMain in a game that fills the screen; false when it is told of another place. Hyprland
    /// keeps the pointer in what the window was before, while it has yet to be painted anew, and some compositors give
    /// a game only a pointer that came to it by a hand.
    bool comesTo(TypingWindow& game) {
        desk.person().moveUnseenTo(centreOfMain);
        desk.person().moveUnseenTo(onMain);
        return game.pointer() == onMain;
    }

    /// Jumps there from onMain; a busy agent may hear of a display's place a while later than others.
    bool comesToJumpTo(LayoutPoint target) {
        return waitUntil([&] {
            desk.person().moveTo(onMain);
            return desk.jump("vantrel://next", target);
        });
    }

    WaylandDesk desk{GetParam().start(WaylandDesk::twoOutputs())};
};

INSTANTIATE_TEST_SUITE_P(Compositors, WaylandAgent, testing::ValuesIn(installedCompositors()),
                         [](const auto& test) { return test.param.name; });

TEST_P(WaylandAgent, departures_areStoredUnderEachDisplay) {
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    ASSERT_TRUE(desk.jump("vantrel://next", centreOfSecond));
    ASSERT_TRUE(desk.jump("vantrel://next", onMain));
    const auto points = remembered();
    EXPECT_EQ(points.size(), 2U);
    EXPECT_NE(std::find(points.begin(), points.end(), onMain), points.end());
    EXPECT_NE(std::find(points.begin(), points.end(), centreOfSecond), points.end());
}

TEST_P(WaylandAgent, savedPoint_comesBackThere) {
    const LayoutPoint saved = GetParam().kept({.x = 300.5, .y = 200.25});
    const auto agent = desk.startAgent();
    desk.person().moveTo(saved);
    ASSERT_TRUE(desk.savePoint());
    desk.person().moveTo({.x = -100, .y = 300});
    EXPECT_TRUE(desk.jump("vantrel://manual", GetParam().told(saved)));
}

TEST_P(WaylandAgent, urlOfNoCommand_movesNothing) {
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.open("vantrel://nonsense"));
    EXPECT_TRUE(desk.person().staysAt(onMain));
}

TEST_P(WaylandAgent, urlsInQuickSuccession_areAllObeyed) {
    // Each goes one saved point further, for which the pointer need not be read: a busy compositor has no time for
    // that.
    constexpr int count = 9;
    const auto pointOf = [](int number) { return LayoutPoint{.x = -350.0 + 20 * number, .y = 250}; };
    auto points = nlohmann::json::array();
    for (int number = 1; number <= count + 1; ++number) {
        points.push_back({{"id", "00000000-0000-4000-8000-" + std::to_string(100000000000 + number)},
                          {"name", "Point"},
                          {"point", {{"x", pointOf(number).x}, {"y", pointOf(number).y}}}});
    }
    desk.defaults().writeData("savedPoints", points.dump());
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    std::vector<std::unique_ptr<AgentProcess>> starts;
    for (int number = 0; number < count; ++number) {
        starts.push_back(desk.startProgram({"vantrel://manual"}));
    }
    for (const auto& start : starts) {
        EXPECT_EQ(start->waitForExit(), ordinaryEnd);
    }
    EXPECT_TRUE(desk.person().waitFor(pointOf(count)));
    EXPECT_TRUE(desk.person().staysAt(pointOf(count)));
}

TEST_P(WaylandAgent, glide_endsExactlyOnTheTarget) {
    desk.defaults().writeText("animation", "glide");
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump("vantrel://next", centreOfSecond));
    EXPECT_TRUE(desk.person().staysAt(centreOfSecond));
    EXPECT_TRUE(desk.jump("vantrel://next", onMain));
}

TEST_P(WaylandAgent, displayMovedAndSwitchedOff_theNextJumpKnows) {
    if (!GetParam().keepsPointerOnItsDisplay) {
        GTEST_SKIP() << "this compositor leaves the pointer where another display comes to stand";
    }
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    auto outputs = WaylandDesk::twoOutputs();
    outputs[1].x = 640;
    outputs[1].y = 0;
    desk.compositor().arrange(outputs);
    EXPECT_TRUE(comesToJumpTo({.x = 840, .y = 150}));
    ASSERT_TRUE(desk.jump("vantrel://next", onMain));
    if (!desk.compositor().switchOff(2)) {
        GTEST_SKIP() << "this compositor cannot switch off a display that is none";
    }
    const LayoutPoint left = GetParam().centresAfterUnplug ? centreOfMain : onMain;
    ASSERT_TRUE(desk.person().waitFor(left));
    ASSERT_TRUE(desk.open("vantrel://next"));
    EXPECT_TRUE(desk.person().staysAt(left));
    desk.compositor().arrange(outputs);
    ASSERT_TRUE(waitUntil([&] { return desk.person().displayCount() == 2; }));
    EXPECT_TRUE(comesToJumpTo({.x = 840, .y = 150}));
}

TEST_P(WaylandAgent, screenLocked_remembersNothingWrong) {
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    {
        const auto lock = ScreenLock::lock(desk.compositor().socket());
        if (!lock) {
            GTEST_SKIP() << "this compositor lets no program lock the session";
        }
        ASSERT_TRUE(desk.openAndWait("vantrel://next"));
    }
    expectNothingWrongIsRemembered();
}

TEST_P(WaylandAgent, programsMenuOpen_remembersNothingWrong) {
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    {
        TypingWindow window(desk.compositor().socket());
        desk.person().type({keys::d});
        ASSERT_TRUE(waitUntil([&] { return window.presses() > 0; }));
        window.openMenu();
        ASSERT_TRUE(desk.openAndWait("vantrel://next"));
    }
    expectNothingWrongIsRemembered();
}

TEST_P(WaylandAgent, pointerLockedByAGame_remembersNothingWrong) {
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    {
        TypingWindow game(desk.compositor().socket());
        game.fillScreen();
        ASSERT_TRUE(waitUntil([&] { return comesTo(game); }));
        game.lockPointer();
        ASSERT_TRUE(desk.openAndWait("vantrel://next"));
    }
    expectNothingWrongIsRemembered();
}

TEST_P(WaylandAgent, pointerConfinedByAGame_remembersNothingWrong) {
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    {
        TypingWindow game(desk.compositor().socket());
        game.fillScreen();
        ASSERT_TRUE(waitUntil([&] { return comesTo(game); }));
        game.confinePointer();
        ASSERT_TRUE(waitUntil([&] { return comesTo(game); })) << game.pointer();
        ASSERT_TRUE(desk.openAndWait("vantrel://next"));
    }
    expectNothingWrongIsRemembered();
}

TEST_P(WaylandAgent, buttonHeld_jumpsOrMovesNothingAndRemembersNothing) {
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    const auto askWithButtonHeld = [&] {
        desk.person().pressButton();
        // Recorders are told of the last picture, which has the pointer by then.
        EXPECT_TRUE(desk.person().staysAt(onMain));
        EXPECT_TRUE(desk.openAndWait("vantrel://next"));
    };
    if (GetParam().tellsWithButtonHeld || desk.person().tellsRecorders()) {
        const auto ask = [&] {
            askWithButtonHeld();
            // Not all compositors tell of a warp before.
            desk.person().releaseButton();
        };
        EXPECT_TRUE(desk.jump(ask, centreOfSecond));
        EXPECT_TRUE(desk.jump("vantrel://next", onMain));
        return;
    }
    askWithButtonHeld();
    EXPECT_TRUE(desk.person().staysAt(onMain));
    desk.person().releaseButton();
    EXPECT_EQ(desk.defaults().read("rememberedPositions"), std::nullopt);
    EXPECT_TRUE(desk.jump("vantrel://next", centreOfSecond));
}

TEST_P(WaylandAgent, jump_windowBeneath_getsTheNextClick) {
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    int clicks = 0;
    for (const LayoutPoint target : {centreOfSecond, onMain}) {
        ASSERT_TRUE(desk.jump("vantrel://next", target));
        desk.person().pressButton();
        desk.person().releaseButton();
        EXPECT_TRUE(desk.person().waitForClicks(++clicks));
    }
}

TEST_P(WaylandAgent, pointSaved_windowBeneath_getsTheNextClick) {
    // The pointer is read, and then nothing moves it.
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    ASSERT_TRUE(desk.savePoint());
    EXPECT_TRUE(desk.person().waitFor(onMain));
    desk.person().pressButton();
    desk.person().releaseButton();
    EXPECT_TRUE(desk.person().waitForClicks(1));
}

}  // namespace
}  // namespace vantrel::desk
