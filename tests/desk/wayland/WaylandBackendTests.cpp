// What all Wayland compositors with these protocols share: displays, reading and warping, without any door of a
// compositor's own.
#include <glib.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <tuple>

#include "Vantrel/Backends/Wayland/WaylandSession.hpp"
#include "tests/desk/wayland/support/InstalledCompositors.hpp"
#include "tests/desk/wayland/support/SeatClient.hpp"

namespace vantrel::desk {
namespace {

std::unique_ptr<wayland::WaylandSession> connectTo(const CompositorProcess& compositor) {
    setenv("XDG_RUNTIME_DIR", compositor.runtimeDirectory().c_str(), 1);
    setenv("WAYLAND_DISPLAY", compositor.displayName().c_str(), 1);
    std::string error;
    auto session = wayland::WaylandSession::connect(wayland::WaylandConnection::open(error), {}, error);
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

const auto nameOfKind = [](const auto& test) { return test.param.name; };

struct Arrangement {
    const char* name;
    std::vector<PrivateOutput> outputs;
    std::vector<LayoutPoint> points;  ///< some on each display
};

class WaylandArrangement : public testing::TestWithParam<std::tuple<CompositorKind, Arrangement>> {};

TEST_P(WaylandArrangement, pointer_readAndWarped_isExact) {
    const auto& [kind, arrangement] = GetParam();
    const auto compositor = kind.start(arrangement.outputs);
    SeatClient person(compositor->socket(), "us");
    const auto session = connectTo(*compositor);
    ASSERT_NE(session, nullptr);
    for (int round = 0; round < 3; ++round) {
        for (const LayoutPoint point : arrangement.points) {
            person.moveTo(point);
            // What the session knows of the pointer counts until it moves it, or for a turn of its loop.
            session->pointerWarper().CGWarpMouseCursorPosition({point.x + 1, point.y + 1});
            ASSERT_TRUE(person.waitFor({.x = point.x + 1, .y = point.y + 1}))
                << person.pointer().value_or(LayoutPoint{});
            EXPECT_EQ(read(*session), (LayoutPoint{.x = point.x + 1, .y = point.y + 1}));
        }
    }
}

std::vector<Arrangement> arrangements() {
    return {Arrangement{"plain",
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
            Arrangement{"mirrored",
                        {{.mode = "800x600", .transform = "flipped"},
                         {.mode = "800x600", .x = 800, .y = 0, .transform = "flipped-90"},
                         {.mode = "800x600", .x = 1400, .y = 0, .transform = "flipped-180"},
                         {.mode = "800x600", .x = 2200, .y = 0, .transform = "flipped-270"}},
                        {{100, 200}, {900, 700}, {1500, 50}, {2300.25, 640.5}}}};
}

INSTANTIATE_TEST_SUITE_P(Compositors, WaylandArrangement,
                         testing::Combine(testing::ValuesIn(compositorsWithProtocols()),
                                          testing::ValuesIn(arrangements())),
                         [](const auto& test) {
                             return std::get<0>(test.param).name + "_" + std::get<1>(test.param).name;
                         });

/// A session of one display, or of two side by side: 1000 x 800, and 800 x 600 to its right.
class WaylandBackend : public testing::TestWithParam<CompositorKind> {
  protected:
    static std::vector<PrivateOutput> two() { return {{.mode = "1000x800"}, {.mode = "800x600", .x = 1000, .y = 0}}; }

    void start(const std::vector<PrivateOutput>& outputs) {
        compositor = GetParam().start(outputs);
        person = std::make_unique<SeatClient>(compositor->socket(), "us");
        session = connectTo(*compositor);
        ASSERT_NE(session, nullptr);
    }

    std::unique_ptr<CompositorProcess> compositor;
    std::unique_ptr<SeatClient> person;
    std::unique_ptr<wayland::WaylandSession> session;
};

INSTANTIATE_TEST_SUITE_P(Compositors, WaylandBackend, testing::ValuesIn(compositorsWithProtocols()), nameOfKind);

TEST_P(WaylandBackend, displays_scaledAndTurned_areInPoints) {
    start({{.mode = "1500x1000", .scale = "1.25"}, {.mode = "800x600", .x = -600, .y = -50, .transform = "90"}});
    const auto displays = displaysOf(*session);
    ASSERT_EQ(displays.size(), 2U);
    EXPECT_EQ(displays[0], (CGRect{{0, 0}, {1200, 800}}));
    EXPECT_EQ(displays[1], (CGRect{{-600, -50}, {600, 800}}));
}

TEST_P(WaylandBackend, displays_movedAndScaled_areAsTheyAre) {
    start(two());
    EXPECT_EQ(displaysOf(*session).size(), 2U);
    compositor->arrange({{.mode = "1000x800"}, {.mode = "800x600", .x = -800, .y = 20}});
    EXPECT_TRUE(waitUntil([&] { return displaysOf(*session).back() == CGRect{{-800, 20}, {800, 600}}; }));
    compositor->arrange({{.mode = "1000x800"}, {.mode = "800x600", .x = -800, .y = 20, .scale = "2"}});
    EXPECT_TRUE(waitUntil([&] { return displaysOf(*session).back() == CGRect{{-800, 20}, {400, 300}}; }));
}

TEST_P(WaylandBackend, displays_switchedOffAndOn_areFewerAndMore) {
    start(two());
    constexpr LayoutPoint onSecond{.x = 1300, .y = 300};
    for (int round = 0; round < 2; ++round) {
        session->pointerWarper().CGWarpMouseCursorPosition({onSecond.x, onSecond.y});
        EXPECT_EQ(read(*session), onSecond);
        // What the session knows of the pointer counts until it moves it.
        session->pointerWarper().CGWarpMouseCursorPosition({onSecond.x, onSecond.y});
        if (!compositor->switchOff(2)) {
            GTEST_SKIP() << "this compositor cannot switch off a display that is none";
        }
        EXPECT_TRUE(waitUntil([&] { return displaysOf(*session).size() == 1; }));
        const auto place = read(*session);
        ASSERT_TRUE(place.has_value());
        EXPECT_LE(place->x, 1000);
        compositor->arrange(two());
        EXPECT_TRUE(waitUntil([&] { return displaysOf(*session).size() == 2; }));
    }
    session->pointerWarper().CGWarpMouseCursorPosition({onSecond.x, onSecond.y});
    EXPECT_EQ(read(*session), onSecond);
}

TEST_P(WaylandBackend, read_noPointingDevice_makesOne) {
    compositor = GetParam().start({{.mode = "1000x800"}});
    session = connectTo(*compositor);
    ASSERT_NE(session, nullptr);
    EXPECT_TRUE(read(*session).has_value());
}

TEST_P(WaylandBackend, read_buttonHeldOverAWindow_isNoAnswerAndSoonOver) {
    start(two());
    person->moveTo({.x = 300, .y = 300});
    ASSERT_EQ(read(*session), (LayoutPoint{.x = 300, .y = 300}));
    person->pressButton();
    session->pointerWarper().CGWarpMouseCursorPosition({310, 310});
    person->synchronise();
    EXPECT_FALSE(session->pointerReader().CGEventCreate().has_value());
    person->releaseButton();
    ASSERT_TRUE(person->waitFor({.x = 310, .y = 310}));
    EXPECT_EQ(read(*session), (LayoutPoint{.x = 310, .y = 310}));
}

TEST_P(WaylandBackend, read_windowBeneath_hasThePointerAndTheNextClick) {
    start(two());
    int clicks = 0;
    for (const LayoutPoint point : {LayoutPoint{.x = 300, .y = 300}, LayoutPoint{.x = 1300, .y = 300}}) {
        // What the session knows of the pointer counts until it moves it, or for a turn of its loop.
        session->pointerWarper().CGWarpMouseCursorPosition({point.x, point.y});
        ASSERT_EQ(read(*session), point);
        // No motion follows: the window learns of the pointer's return from the compositor alone.
        EXPECT_TRUE(waitUntil([&] {
            g_main_context_iteration(nullptr, FALSE);
            return person->pointer() == point;
        }));
        person->pressButton();
        person->releaseButton();
        EXPECT_TRUE(person->waitForClicks(++clicks));
    }
}

TEST_P(WaylandBackend, read_frozenCompositor_isNoAnswer) {
    start({{.mode = "1000x800"}});
    const auto before = read(*session);
    ASSERT_TRUE(before.has_value());
    session->pointerWarper().CGWarpMouseCursorPosition({.x = 20, .y = 30});
    ASSERT_EQ(read(*session), (LayoutPoint{.x = 20, .y = 30}));
    session->pointerWarper().CGWarpMouseCursorPosition({.x = 40, .y = 50});
    compositor->freeze();
    EXPECT_FALSE(session->pointerReader().CGEventCreate().has_value());
    compositor->thaw();
    EXPECT_EQ(read(*session), (LayoutPoint{.x = 40, .y = 50}));
}

TEST_P(WaylandBackend, warp_outsideOfAllDisplays_goesToTheNearest) {
    start(two());
    ASSERT_TRUE(read(*session).has_value());
    session->pointerWarper().CGWarpMouseCursorPosition({1300, 650});
    const auto place = read(*session);
    ASSERT_TRUE(place.has_value());
    EXPECT_EQ(place->x, 1300);
    EXPECT_NEAR(place->y, 600, 1);
}

TEST_P(WaylandBackend, warp_configurationReadAgain_isExact) {
    start(two());
    for (int round = 0; round < 2; ++round) {
        for (const LayoutPoint point : {LayoutPoint{.x = 300, .y = 200}, LayoutPoint{.x = 1300, .y = 300}}) {
            session->pointerWarper().CGWarpMouseCursorPosition({point.x, point.y});
            EXPECT_EQ(read(*session), point);
        }
        GetParam().reload(*compositor);
        person->synchronise();
        person->synchronise();
    }
}

TEST_P(WaylandBackend, hotKeys_compositorWithoutADoor_areRefused) {
    start({{.mode = "1000x800"}});
    HotKeyServices& hotKeys = session->hotKeys();
    EventHandlerRef handler = nullptr;
    const auto ignore = [](EventHandlerCallRef /*call*/, EventRef /*event*/, void* /*userData*/) -> OSStatus {
        return 0;
    };
    EXPECT_NE(hotKeys.InstallEventHandler(hotKeys.GetEventDispatcherTarget(), ignore,
                                          {kEventClassKeyboard, kEventHotKeyPressed}, nullptr, handler),
              0);
    EventHotKeyRef hotKey = nullptr;
    constexpr std::uint32_t keyD = 2;
    EXPECT_EQ(hotKeys.RegisterEventHotKey(keyD, controlKey, {1, 1}, hotKeys.GetEventDispatcherTarget(), 0, hotKey),
              eventHotKeyInvalidErr);
    EXPECT_EQ(hotKey, nullptr);
}

}  // namespace
}  // namespace vantrel::desk
