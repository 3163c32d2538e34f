// What all Wayland compositors with these protocols share: displays, reading and warping, without any door of sway's.
#include <glib.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "Vantrel/Backends/Wayland/WaylandSession.hpp"
#include "tests/desk/wayland/support/SeatClient.hpp"
#include "tests/desk/wayland/support/SwayControl.hpp"
#include "tests/desk/wayland/support/SwayProcess.hpp"

namespace vantrel::desk {
namespace {

std::unique_ptr<wayland::WaylandSession> connectTo(const SwayProcess& sway) {
    setenv("XDG_RUNTIME_DIR", sway.runtimeDirectory().c_str(), 1);
    setenv("WAYLAND_DISPLAY", sway.displayName().c_str(), 1);
    std::string error;
    bool isThere = false;
    auto session = wayland::WaylandSession::connect({}, error, isThere);
    EXPECT_EQ(error, "");
    return session;
}

std::vector<CGRect> displaysOf(DisplaySession& session) {
    std::uint32_t count = 0;
    EXPECT_EQ(session.displays().CGGetActiveDisplayList({}, count), 0);
    std::vector<CGDirectDisplayID> identifiers(count);
    EXPECT_EQ(session.displays().CGGetActiveDisplayList(identifiers, count), 0);
    std::vector<CGRect> bounds;
    for (const CGDirectDisplayID identifier : identifiers) {
        bounds.push_back(session.displays().CGDisplayBounds(identifier));
    }
    return bounds;
}

/// A read that the machine's load made late is no answer; a wrong one stays wrong.
std::optional<LayoutPoint> read(DisplaySession& session) {
    std::optional<CGEvent> event;
    waitUntil(
        [&] {
            event = session.pointerReader().CGEventCreate();
            return event.has_value();
        },
        std::chrono::seconds(10));
    if (!event) {
        return std::nullopt;
    }
    return LayoutPoint{.x = event->location.x, .y = event->location.y};
}

struct Arrangement {
    const char* name;
    std::vector<SwayOutput> outputs;
    std::vector<LayoutPoint> points;  ///< some on each display
};

class WaylandBackend : public testing::TestWithParam<Arrangement> {};

TEST_P(WaylandBackend, pointer_readAndWarped_isExact) {
    const SwayProcess sway({.outputs = GetParam().outputs, .configuration = {}, .files = {}});
    SeatClient person(sway.runtimeDirectory() / sway.displayName(), "us");
    const auto session = connectTo(sway);
    ASSERT_NE(session, nullptr);
    for (int round = 0; round < 3; ++round) {
        for (const LayoutPoint point : GetParam().points) {
            person.moveTo(point);
            // What the session knows of the pointer counts until it moves it, or for a turn of its loop.
            session->pointerWarper().CGWarpMouseCursorPosition({point.x + 1, point.y + 1});
            ASSERT_TRUE(person.waitFor({.x = point.x + 1, .y = point.y + 1}))
                << person.pointer().value_or(LayoutPoint{});
            EXPECT_EQ(read(*session), (LayoutPoint{.x = point.x + 1, .y = point.y + 1}));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Arrangements, WaylandBackend,
                         testing::Values(Arrangement{"plain",
                                                     {{.mode = "1512x982"}, {.mode = "1024x768", .x = -1024, .y = 100}},
                                                     {{700, 500}, {-512.5, 484.25}, {-1000, 110}}},
                                         Arrangement{"scaled",
                                                     {{.mode = "1500x1000", .scale = "1.25"},
                                                      {.mode = "1500x900", .x = 1200, .y = 0, .scale = "1.5"},
                                                      {.mode = "1600x1200", .x = -800, .y = -100, .scale = "2"}},
                                                     {{600, 400}, {1700.5, 300}, {-400, 250.75}}},
                                         Arrangement{"turned",
                                                     {{.mode = "800x600"},
                                                      {.mode = "800x600", .x = 800, .y = 0, .transform = "90"},
                                                      {.mode = "800x600", .x = 1400, .y = 0, .transform = "180"},
                                                      {.mode = "800x600", .x = 2200, .y = 0, .transform = "270"}},
                                                     {{100, 200}, {900, 700}, {1500, 50}, {2300.25, 640.5}}},
                                         Arrangement{
                                             "mirrored",
                                             {{.mode = "800x600", .transform = "flipped"},
                                              {.mode = "800x600", .x = 800, .y = 0, .transform = "flipped-90"},
                                              {.mode = "800x600", .x = 1400, .y = 0, .transform = "flipped-180"},
                                              {.mode = "800x600", .x = 2200, .y = 0, .transform = "flipped-270"}},
                                             {{100, 200}, {900, 700}, {1500, 50}, {2300.25, 640.5}}}),
                         [](const auto& test) { return test.param.name; });

TEST(WaylandBackend, displays_scaledAndTurned_areInPoints) {
    const SwayProcess sway({.outputs = {{.mode = "1500x1000", .scale = "1.25"},
                                        {.mode = "800x600", .x = -600, .y = -50, .transform = "90"}},
                            .configuration = {},
                            .files = {}});
    const auto session = connectTo(sway);
    ASSERT_NE(session, nullptr);
    const auto displays = displaysOf(*session);
    ASSERT_EQ(displays.size(), 2U);
    EXPECT_EQ(displays[0], (CGRect{{0, 0}, {1200, 800}}));
    EXPECT_EQ(displays[1], (CGRect{{-600, -50}, {600, 800}}));
}

TEST(WaylandBackend, displays_movedScaledAndPluggedIn_areAsTheyAre) {
    const SwayProcess sway(
        {.outputs = {{.mode = "1000x800"}, {.mode = "800x600", .x = 1000, .y = 0}}, .configuration = {}, .files = {}});
    SwayControl control(sway.controlSocket());
    const auto session = connectTo(sway);
    ASSERT_NE(session, nullptr);
    EXPECT_EQ(displaysOf(*session).size(), 2U);
    control.run("output HEADLESS-2 position -800 20");
    EXPECT_TRUE(waitUntil([&] { return displaysOf(*session).back() == CGRect{{-800, 20}, {800, 600}}; }));
    control.run("output HEADLESS-2 scale 2");
    EXPECT_TRUE(waitUntil([&] { return displaysOf(*session).back() == CGRect{{-800, 20}, {400, 300}}; }));
    control.run("create_output");
    EXPECT_TRUE(waitUntil([&] { return displaysOf(*session).size() == 3; }));
}

TEST(WaylandBackend, displays_pulledOut_areFewer) {
    const SwayProcess sway(
        {.outputs = {{.mode = "1000x800"}, {.mode = "800x600", .x = 1000, .y = 0}}, .configuration = {}, .files = {}});
    SwayControl control(sway.controlSocket());
    const auto session = connectTo(sway);
    ASSERT_NE(session, nullptr);
    if (control.ask(SwayControl::runCommand, "output HEADLESS-2 unplug").find("Invalid") != std::string::npos) {
        GTEST_SKIP() << "this sway cannot pull out a display that is none";
    }
    EXPECT_TRUE(waitUntil([&] { return displaysOf(*session).size() == 1; }));
    EXPECT_TRUE(read(*session).has_value());
    control.run("create_output");
    EXPECT_TRUE(waitUntil([&] { return displaysOf(*session).size() == 2; }));
    EXPECT_TRUE(read(*session).has_value());
}

TEST(WaylandBackend, read_noPointingDevice_makesOne) {
    const SwayProcess sway({.outputs = {{.mode = "1000x800"}}, .configuration = {}, .files = {}});
    const auto session = connectTo(sway);
    ASSERT_NE(session, nullptr);
    EXPECT_TRUE(read(*session).has_value());
}

TEST(WaylandBackend, read_buttonHeldOverAWindow_isNoAnswerAndSoonOver) {
    const SwayProcess sway(
        {.outputs = {{.mode = "1000x800"}, {.mode = "800x600", .x = 1000, .y = 0}}, .configuration = {}, .files = {}});
    SeatClient person(sway.runtimeDirectory() / sway.displayName(), "us");
    const auto session = connectTo(sway);
    ASSERT_NE(session, nullptr);
    person.moveTo({.x = 300, .y = 300});
    ASSERT_EQ(read(*session), (LayoutPoint{.x = 300, .y = 300}));
    person.pressButton();
    session->pointerWarper().CGWarpMouseCursorPosition({310, 310});
    person.synchronise();
    EXPECT_FALSE(session->pointerReader().CGEventCreate().has_value());
    person.releaseButton();
    ASSERT_TRUE(person.waitFor({.x = 310, .y = 310}));
    EXPECT_EQ(read(*session), (LayoutPoint{.x = 310, .y = 310}));
}

TEST(WaylandBackend, read_windowBeneath_hasThePointerAgain) {
    const SwayProcess sway(
        {.outputs = {{.mode = "1000x800"}, {.mode = "800x600", .x = 1000, .y = 0}}, .configuration = {}, .files = {}});
    SeatClient person(sway.runtimeDirectory() / sway.displayName(), "us");
    const auto session = connectTo(sway);
    ASSERT_NE(session, nullptr);
    for (const LayoutPoint point : {LayoutPoint{.x = 300, .y = 300}, LayoutPoint{.x = 1300, .y = 300}}) {
        // What the session knows of the pointer counts until it moves it, or for a turn of its loop.
        session->pointerWarper().CGWarpMouseCursorPosition({point.x, point.y});
        ASSERT_EQ(read(*session), point);
        // No motion follows: the window learns of the pointer's return from the compositor alone.
        EXPECT_TRUE(waitUntil([&] {
            g_main_context_iteration(nullptr, FALSE);
            return person.pointer() == point;
        }));
    }
}

TEST(WaylandBackend, read_frozenCompositor_isNoAnswer) {
    SwayProcess sway({.outputs = {{.mode = "1000x800"}}, .configuration = {}, .files = {}});
    const auto session = connectTo(sway);
    ASSERT_NE(session, nullptr);
    const auto before = read(*session);
    ASSERT_TRUE(before.has_value());
    session->pointerWarper().CGWarpMouseCursorPosition({.x = 20, .y = 30});
    ASSERT_EQ(read(*session), (LayoutPoint{.x = 20, .y = 30}));
    session->pointerWarper().CGWarpMouseCursorPosition({.x = 40, .y = 50});
    sway.freeze();
    EXPECT_FALSE(session->pointerReader().CGEventCreate().has_value());
    sway.thaw();
    EXPECT_EQ(read(*session), (LayoutPoint{.x = 40, .y = 50}));
}

TEST(WaylandBackend, warp_outsideOfAllDisplays_goesToTheNearest) {
    const SwayProcess sway(
        {.outputs = {{.mode = "1000x800"}, {.mode = "800x600", .x = 1000, .y = 0}}, .configuration = {}, .files = {}});
    const auto session = connectTo(sway);
    ASSERT_NE(session, nullptr);
    session->displays();
    ASSERT_TRUE(read(*session).has_value());
    session->pointerWarper().CGWarpMouseCursorPosition({1300, 650});
    const auto place = read(*session);
    ASSERT_TRUE(place.has_value());
    EXPECT_EQ(place->x, 1300);
    EXPECT_NEAR(place->y, 600, 1);
}

}  // namespace
}  // namespace vantrel::desk
