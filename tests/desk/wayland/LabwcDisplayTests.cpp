// Displays that come and go by their plug in a session of labwc.
#include <gtest/gtest.h>

#include "tests/desk/wayland/support/LabwcDesk.hpp"

namespace vantrel::desk {
namespace {

constexpr std::string_view plugIn = "FK09", pullOut = "FK10";

TEST(LabwcDisplays, pluggedInAndPulledOut_theNextJumpKnows) {
    const std::vector<PrivateOutput> two{{.mode = "640x480"}, {.mode = "400x300", .x = 640, .y = 0}};
    LabwcDesk desk(
        {.outputs = {two.front()},
         .keyboard = R"(<keybind key="F9"><action name="VirtualOutputAdd" output_name="HEADLESS-2"/></keybind>
                                   <keybind key="F10"><action name="VirtualOutputRemove"/></keybind>)",
         .autostart = {}});
    const auto agent = desk.startAgent();
    for (int round = 0; round < 2; ++round) {
        desk.person().moveTo(onMain);
        desk.person().type({plugIn});
        ASSERT_TRUE(waitUntil([&] { return desk.person().displayCount() == 2; }));
        desk.compositor().arrange(two);
        // A busy agent may hear of its place a while later.
        EXPECT_TRUE(waitUntil([&] {
            desk.person().moveTo(onMain);
            return desk.jump("vantrel://next", {.x = 840, .y = 150});
        }));
        desk.person().type({pullOut});
        ASSERT_TRUE(waitUntil([&] { return desk.person().displayCount() == 1; }));
        desk.person().moveTo(onMain);
        ASSERT_TRUE(desk.openAndWait("vantrel://next"));
        EXPECT_TRUE(desk.person().staysAt(onMain));
    }
    EXPECT_TRUE(agent->isRunning());
}

}  // namespace
}  // namespace vantrel::desk
