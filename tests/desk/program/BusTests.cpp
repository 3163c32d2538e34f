// The agent as an application of the desktop, called over the session bus.
#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <string>

#include "tests/desk/program/ApplicationOnBus.hpp"
#include "tests/desk/status/ScreenWindows.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

/// A desk with an agent that is known to be on the bus.
struct AgentOnBus {
    Desk desk;
    std::unique_ptr<AgentProcess> agent = desk.startAgent();
    ApplicationOnBus application{desk.bus().address()};

    AgentOnBus() {
        EXPECT_TRUE(waitUntil([this] { return !application.owner().empty(); }));
        desk.pointer().moveTo(onMain);
    }
};

TEST(Bus, open_url_isObeyed) {
    AgentOnBus running;
    EXPECT_EQ(running.application.process(), running.agent->processId());
    EXPECT_EQ(running.application.open({"vantrel://next"}), "");
    EXPECT_TRUE(running.desk.pointer().waitFor(centreOfSecond));
}

TEST(Bus, open_severalURLs_areObeyedInOrder) {
    AgentOnBus running;
    EXPECT_EQ(running.application.open(
                  {"vantrel:next", "vantrel:save-point", "", "gopher:", "vantrel:previous", "vantrel:save-point"}),
              "");
    EXPECT_TRUE(waitUntil([&] {
        const std::string points = running.desk.defaults().read("savedPoints").value_or("");
        const auto first = points.find("-512");
        return first != std::string::npos && points.find("700", first) != std::string::npos;
    }));
}

TEST(Bus, open_noURLs_doesNothing) {
    AgentOnBus running;
    EXPECT_EQ(running.application.open({}), "");
    EXPECT_TRUE(running.desk.pointer().staysAt(onMain));
    EXPECT_FALSE(isKeyboardGrabbed(running.desk.connection()));
}

TEST(Bus, activate_opensTheMenu) {
    AgentOnBus running;
    EXPECT_EQ(running.application.activate(), "");
    EXPECT_TRUE(waitUntil([&] { return isKeyboardGrabbed(running.desk.connection()); }));
}

TEST(Bus, activateAction_isRefused) {
    AgentOnBus running;
    EXPECT_EQ(running.application.activateAction("quit"), "org.freedesktop.DBus.Error.InvalidArgs");
    EXPECT_TRUE(running.desk.pointer().staysAt(onMain));
    EXPECT_TRUE(running.agent->isRunning());
}

TEST(Bus, call_wrongArguments_isRefused) {
    AgentOnBus running;
    const auto answer =
        running.application.bus().call("org.vantrel.Vantrel", "/org/vantrel/Vantrel", "org.freedesktop.Application",
                                       "Open", g_variant_new("(s)", "vantrel://next"));
    EXPECT_FALSE(answer);
    EXPECT_TRUE(running.desk.pointer().staysAt(onMain));
    EXPECT_EQ(running.application.open({"vantrel://next"}), "");
    EXPECT_TRUE(running.desk.pointer().waitFor(centreOfSecond));
}

TEST(Bus, name_ofTwoDisplaysAgents_goesToTheOtherAtTheEnd) {
    AgentOnBus first;
    Desk second({.hasSessionBus = false});
    second.environment().set("DBUS_SESSION_BUS_ADDRESS", first.desk.bus().address());
    const auto secondAgent = second.startAgent();
    second.pointer().moveTo(onMain);

    EXPECT_EQ(first.application.open({"vantrel://next"}), "");
    EXPECT_TRUE(first.desk.pointer().waitFor(centreOfSecond));
    EXPECT_TRUE(second.pointer().staysAt(onMain));

    first.agent->terminate();
    EXPECT_TRUE(waitUntil([&] { return first.application.process() == secondAgent->processId(); }));
    EXPECT_EQ(first.application.open({"vantrel://next"}), "");
    EXPECT_TRUE(second.pointer().waitFor(centreOfSecond));
}

/// A desk whose bus starts the agent for those who call it.
struct StartingBus {
    Desk desk;
    ApplicationOnBus application{desk.bus().address()};

    StartingBus() {
        desk.bus().offerService("org.vantrel.Vantrel", VANTREL_PROGRAM);
        application.setActivationEnvironment(desk.environment());
        desk.pointer().moveTo(onMain);
    }
    ~StartingBus() {
        if (const pid_t agent = application.process(); agent > 1) {
            kill(agent, SIGTERM);
            waitUntil([this] { return application.owner().empty(); });
        }
    }
    StartingBus(const StartingBus&) = delete;
    StartingBus& operator=(const StartingBus&) = delete;
};

TEST(BusStart, open_theURLThatStartsTheAgent_isObeyed) {
    StartingBus starting;
    EXPECT_EQ(starting.application.open({"vantrel://next"}), "");
    EXPECT_TRUE(starting.desk.pointer().waitFor(centreOfSecond));
    starting.desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(starting.desk.pointer().waitFor(onMain));
}

TEST(BusStart, activate_isAStartAndNotAFurtherOne) {
    StartingBus starting;
    EXPECT_EQ(starting.application.activate(), "");
    EXPECT_TRUE(starting.desk.waitForHotKey(hyper(keys::s)));
    // The call that comes after the start is answered after it, so what the start would have opened would be there.
    EXPECT_EQ(starting.application.activateAction("none"), "org.freedesktop.DBus.Error.InvalidArgs");
    EXPECT_FALSE(waitUntil([&] { return isKeyboardGrabbed(starting.desk.connection()); }, quietTime));
    EXPECT_EQ(starting.application.activate(), "");
    EXPECT_TRUE(waitUntil([&] { return isKeyboardGrabbed(starting.desk.connection()); }));
}

}  // namespace
}  // namespace vantrel::desk
