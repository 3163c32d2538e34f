// Jumps on GNOME: exact wherever they lead, and right after whatever changed.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ostream>

#include "tests/desk/wayland/support/GnomeDesk.hpp"
#include "tests/desk/wayland/support/WaylandDesk.hpp"

namespace vantrel::desk {
namespace {

struct Arrangement {
    std::string name;
    GnomeOptions options;
    LayoutPoint centreOfOther;
};

std::vector<Arrangement> arrangements() {
    return {{.name = "onTheLeft",
             .options = {.outputs = {{.mode = "640x480"}, {.mode = "400x300", .x = -400, .y = 100}}},
             .centreOfOther = {.x = -200, .y = 250}},
            {.name = "above",
             .options = {.outputs = {{.mode = "640x480"}, {.mode = "400x300", .x = 100, .y = -300}}},
             .centreOfOther = {.x = 300, .y = -150}},
            {.name = "turned",
             .options = {.outputs = {{.mode = "640x480"}, {.mode = "400x300", .x = 640, .y = 20, .transform = "90"}}},
             .centreOfOther = {.x = 790, .y = 220}},
            {.name = "scaledBy125",
             .options = {.outputs = {{.mode = "800x640"}, {.mode = "1000x800", .x = 800, .scale = "1.25"}}},
             .centreOfOther = {.x = 1200, .y = 320}},
            {.name = "scaledBy150",
             .options = {.outputs = {{.mode = "1350x900", .scale = "1.5"}, {.mode = "400x300", .x = 900}}},
             .centreOfOther = {.x = 1100, .y = 150}},
            {.name = "scaledBy200",
             .options = {.outputs = {{.mode = "1800x1200", .scale = "2"}, {.mode = "400x300", .x = 900}}},
             .centreOfOther = {.x = 1100, .y = 150}},
            {.name = "layoutInPixels",
             .options = {.outputs = {{.mode = "640x480"}, {.mode = "1800x1200", .x = 640, .scale = "2"}},
                         .layoutIsInPixels = true},
             .centreOfOther = {.x = 1540, .y = 600}}};
}

std::ostream& operator<<(std::ostream& out, const Arrangement& arrangement) {
    return out << arrangement.name;
}

class GnomeArrangement : public testing::TestWithParam<Arrangement> {};

INSTANTIATE_TEST_SUITE_P(Of, GnomeArrangement, testing::ValuesIn(arrangements()),
                         [](const auto& arrangement) { return arrangement.param.name; });

TEST_P(GnomeArrangement, thereAndBack_isExact) {
    GnomeDesk desk(GetParam().options);
    if (GetParam().options.layoutIsInPixels &&
        desk.shell().evaluate("Math.max(...Main.layoutManager.monitors.map(monitor => monitor.width))") != "1800") {
        GTEST_SKIP() << "this version of GNOME lays out displays in points alone";
    }
    const auto agent = desk.startAgent();
    const LayoutPoint departure{.x = 300.25, .y = 200.5};
    desk.person().moveTo(departure);
    EXPECT_TRUE(desk.jump(hyper(keys::d), GetParam().centreOfOther));
    EXPECT_TRUE(desk.jump(hyper(keys::d), departure));
    EXPECT_EQ(desk.shell().evaluate("Main.overview.visible"), "false") << "no corner was hit";
}

class GnomeJump : public testing::Test {
  protected:
    GnomeDesk desk;
    std::unique_ptr<AgentProcess> agent = desk.startAgent();
};

/// Where an edge or a corner of a display holds up a pointer that runs against it.
TEST_F(GnomeJump, alongAllEdges_isExact) {
    struct Area {
        int x, y, width, height;
    };
    constexpr Area areas[] = {{0, 0, 640, 480}, {-400, 100, 400, 300}};
    constexpr int steps = 25;
    constexpr double inset = 24;  // a jump leads no nearer to an edge
    int missed = 0;
    int jumps = 0;
    for (int step = 0; step < steps; ++step) {
        for (const bool isFarSide : {false, true}) {
            for (const bool isColumn : {false, true}) {
                for (std::size_t which = 0; which < 2; ++which) {
                    const Area& area = areas[which];
                    const double along = step / (steps - 1.0);
                    const double side = isFarSide ? 1 : 0;
                    // The last place of the pointer is a whole point before the end. The shell has no more digits
                    // than a float.
                    const LayoutPoint departure{
                        .x = area.x + std::floor((isColumn ? side : along) * (area.width - 1)),
                        .y = area.y + std::floor((isColumn ? along : side) * (area.height - 1))};
                    desk.person().moveTo(departure);
                    desk.person().type(hyper(keys::d));
                    const bool isGone =
                        waitUntil([&] { return desk.person().pointer() != departure; }, std::chrono::seconds(5));
                    desk.person().type(hyper(keys::d));
                    const bool isBack = desk.person().waitFor(
                        {.x = std::clamp(departure.x, area.x + inset, area.x + area.width - inset),
                         .y = std::clamp(departure.y, area.y + inset, area.y + area.height - inset)},
                        std::chrono::seconds(5));
                    jumps += 2;
                    missed += isGone && isBack ? 0 : 1;
                    if (!isGone || !isBack) {
                        ADD_FAILURE() << "from " << departure << (isGone ? " and not back: " : " not gone: ")
                                      << desk.person().pointer().value_or(LayoutPoint{});
                    }
                }
            }
        }
    }
    EXPECT_EQ(missed, 0) << "of " << jumps;
}

TEST_F(GnomeJump, savedPoint_comesBackThere) {
    const LayoutPoint saved{.x = 123.5, .y = 77};
    desk.person().moveTo(saved);
    ASSERT_TRUE(desk.savePoint());
    desk.person().moveTo(centreOfSecond);
    EXPECT_TRUE(desk.jump("vantrel://manual", saved));
}

TEST_F(GnomeJump, glide_endsExactlyOnTheTarget) {
    desk.defaults().writeText("animation", "fast");
    agent->terminate();
    agent = desk.startAgent();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    EXPECT_TRUE(desk.person().staysAt(centreOfSecond));
}

TEST_F(GnomeJump, displaysRearranged_theNextJumpKnows) {
    desk.person().moveTo(onMain);
    desk.shell().arrange({{.mode = "640x480"}, {.mode = "400x300", .x = 640, .y = 0}});
    const LayoutPoint centre{.x = 840, .y = 150};
    EXPECT_TRUE(waitUntil([&] {
        desk.person().moveTo(onMain);
        desk.person().type(hyper(keys::d));
        return desk.person().waitFor(centre, std::chrono::seconds(2));
    }));
}

TEST_F(GnomeJump, displayOff_staysOnTheOnlyOne) {
    desk.shell().arrange({{.mode = "640x480"}});
    desk.person().moveTo(onMain);
    desk.person().type(hyper(keys::d));
    EXPECT_TRUE(desk.person().staysAt(onMain));
    desk.shell().arrange(WaylandDesk::twoOutputs());
    EXPECT_TRUE(waitUntil([&] {
        desk.person().moveTo(onMain);
        desk.person().type(hyper(keys::d));
        return desk.person().waitFor(centreOfSecond, std::chrono::seconds(2));
    }));
}

TEST_F(GnomeJump, buttonHeld_jumps) {
    desk.person().moveTo(onMain);
    desk.person().pressButton();
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    desk.person().releaseButton();
}

TEST_F(GnomeJump, overviewOrMenuOpen_jumps) {
    static_cast<void>(desk.shell().evaluate("Main.overview.show()"));
    ASSERT_TRUE(waitUntil([this] { return desk.shell().evaluate("Main.overview.visible") == "true"; }));
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    static_cast<void>(desk.shell().evaluate("Main.overview.hide()"));
    static_cast<void>(desk.shell().evaluate("Main.panel.statusArea.vantrel.menu.open()"));
    ASSERT_TRUE(waitUntil([this] { return desk.item("item.menu.isOpen") == "true"; }));
    EXPECT_TRUE(desk.jump(hyper(keys::d), onMain));
}

}  // namespace
}  // namespace vantrel::desk
