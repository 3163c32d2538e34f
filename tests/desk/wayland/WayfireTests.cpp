// Wayfire without the plugins that Vantrel would use.
#include <gtest/gtest.h>

#include "tests/desk/wayland/support/WayfireProcess.hpp"
#include "tests/desk/wayland/support/WaylandDesk.hpp"

namespace vantrel::desk {
namespace {

class WayfirePlugins : public testing::TestWithParam<const char*> {};

TEST_P(WayfirePlugins, withoutThoseForKeys_urlsJumpAllTheSame) {
    WaylandDesk desk(std::make_unique<WayfireProcess>(
        WayfireOptions{.outputs = WaylandDesk::twoOutputs(), .plugins = GetParam(), .configuration = {}}));
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    desk.person().type(hyper(keys::d));
    EXPECT_TRUE(desk.person().staysAt(onMain));
    EXPECT_TRUE(desk.jump("vantrel://next", centreOfSecond));
    EXPECT_TRUE(desk.jump("vantrel://next", onMain));
}

INSTANTIATE_TEST_SUITE_P(Sets, WayfirePlugins, testing::Values("place", "ipc", "ipc ipc-rules"),
                         [](const auto& test) { return "set" + std::to_string(test.index); });

}  // namespace
}  // namespace vantrel::desk
