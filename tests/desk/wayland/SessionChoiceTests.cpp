// Which session the program takes for its own, by what the environment says and what is alive.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/desk/support/Desk.hpp"
#include "tests/desk/wayland/support/SwayDesk.hpp"
#include "tests/desk/wayland/support/WestonProcess.hpp"

namespace vantrel::desk {
namespace {

constexpr ExitStatus failure{.code = 1, .signal = std::nullopt};

bool isOneLine(const std::string& text) {
    return text.ends_with('\n') && std::count(text.begin(), text.end(), '\n') == 1;
}

TEST(SessionChoice, compositorWithoutTheProtocols_oneLineNamesThem) {
    const WestonProcess weston;
    const Home home;
    Environment environment = Environment::minimal();
    home.enter(environment);
    environment.set("XDG_RUNTIME_DIR", weston.runtimeDirectory().native());
    environment.set("WAYLAND_DISPLAY", weston.displayName());
    AgentProcess agent(environment, home.path() / "stderr");
    EXPECT_EQ(agent.waitForExit(), failure);
    EXPECT_TRUE(isOneLine(agent.standardError())) << agent.standardError();
    for (const char* protocol : {"zwlr_layer_shell_v1", "zwlr_virtual_pointer_manager_v1"}) {
        EXPECT_NE(agent.standardError().find(protocol), std::string::npos) << agent.standardError();
    }
    EXPECT_EQ(agent.standardError().find("wl_compositor"), std::string::npos) << agent.standardError();
}

TEST(SessionChoice, gnomeWithoutABus_oneLineSaysSo) {
    const WestonProcess standIn("gnome-shell");
    const Home home;
    Environment environment = Environment::minimal();
    home.enter(environment);
    environment.set("WAYLAND_DISPLAY", standIn.socket().native());
    AgentProcess agent(environment, home.path() / "stderr");
    EXPECT_EQ(agent.waitForExit(), failure);
    EXPECT_EQ(agent.standardError(), "vantrel: GNOME on Wayland is served over the session bus, and there is none\n");
}

TEST(SessionChoice, compositorWithoutTheProtocolsAndADisplay_staysRefused) {
    const WestonProcess weston;
    Desk desk({.hasSessionBus = false});
    desk.environment().set("WAYLAND_DISPLAY", weston.socket().native());
    const auto agent = desk.startProgram();
    EXPECT_EQ(agent->waitForExit(), failure);
    EXPECT_NE(agent->standardError().find("zwlr_layer_shell_v1"), std::string::npos) << agent->standardError();
}

TEST(SessionChoice, waylandDisplayIsDead_theXServerIsServed) {
    Desk desk({.hasSessionBus = false});
    desk.environment().set("WAYLAND_DISPLAY", "wayland-4711");
    const auto agent = desk.startAgent();
    desk.pointer().moveTo({.x = 700, .y = 500});
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor({.x = -512, .y = 484}));
}

TEST(SessionChoice, bothAreAlive_theCompositorIsServed) {
    Desk xDesk({.hasSessionBus = false});
    SwayDesk desk;
    desk.environment().set("DISPLAY", xDesk.server().displayName());
    const auto agent = desk.startAgent();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

TEST(SessionChoice, nothingIsAlive_oneLine) {
    const Home home;
    Environment environment = Environment::minimal();
    home.enter(environment);
    environment.set("WAYLAND_DISPLAY", "wayland-4711");
    AgentProcess agent(environment, home.path() / "stderr");
    EXPECT_EQ(agent.waitForExit(), failure);
    EXPECT_EQ(agent.standardError(), "vantrel: cannot connect to the Wayland display wayland-4711\n");
}

}  // namespace
}  // namespace vantrel::desk
