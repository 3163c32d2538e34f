// From whatever the agent is started, it comes up.
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <optional>
#include <string>

#include "tests/desk/program/ProgramRun.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

TEST(Start, withURLs_theyAreObeyedAfterTheLaunch) {
    Desk desk;
    desk.pointer().moveTo(onMain);
    const auto agent = desk.startProgram({"vantrel://next", "vantrel:save-point"});
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond));
    EXPECT_TRUE(waitUntil([&] { return desk.defaults().read("savedPoints").has_value(); }));
    EXPECT_TRUE(desk.waitForHotKey(hyper(keys::d)));
    EXPECT_EQ(agent->standardError(), "");
}

TEST(Start, badURL_theAgentRunsOn) {
    Desk desk;
    const auto agent = desk.startProgram({"vantrel://[", "vantrel:%zz\xff", "mailto:nobody"});
    EXPECT_TRUE(desk.waitForHotKey(hyper(keys::s)));
    EXPECT_TRUE(agent->isRunning());
}

TEST(Start, fromWhatever_hotKeysWork) {
    struct Case {
        const char* condition;
        const char* script;
    };
    for (const auto& [condition, script] : {
             Case{"closed standard streams", "exec \"$VANTREL\" <&- >&- 2>&-"},
             Case{"a relative path", "cd \"$(dirname \"$VANTREL\")\" && exec ./vantrel"},
             Case{"PATH", "PATH=\"$(dirname \"$VANTREL\"):$PATH\" && exec vantrel"},
             Case{"a deleted directory",
                  "mkdir \"$HOME/gone\" && cd \"$HOME/gone\" && rmdir \"$HOME/gone\" && exec "
                  "\"$VANTREL\""},
             Case{"a symbolic link", "ln -s \"$VANTREL\" \"$HOME/v\" && exec \"$HOME/v\""},
             Case{"an empty bus address", "DBUS_SESSION_BUS_ADDRESS= exec \"$VANTREL\""},
             Case{"no bus and nothing that tells of one", "unset DBUS_SESSION_BUS_ADDRESS && exec \"$VANTREL\""},
             Case{"a bus address without a bus", "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent exec \"$VANTREL\""},
             Case{"nonsense for a bus address", "DBUS_SESSION_BUS_ADDRESS='%%%' exec \"$VANTREL\""},
             Case{"signals that are ignored", "trap '' TERM INT HUP PIPE && exec \"$VANTREL\""},
             Case{"signals that are blocked", "exec env --block-signal=TERM,INT,HUP \"$VANTREL\""},
             Case{"a strict mask for new files", "umask 0777 && exec \"$VANTREL\""},
             Case{"hardly any descriptors", "ulimit -n 24 && exec \"$VANTREL\""},
         }) {
        Desk desk;
        ChildProcessOptions options;
        options.arguments = scriptArguments(script);
        options.environment = desk.environment();
        options.standardError = desk.home().path() / "stderr";
        ChildProcess agent(options);
        ASSERT_TRUE(desk.waitForHotKey(hyper(keys::s))) << condition << ": " << contentOf(options.standardError);
        desk.pointer().moveTo(onMain);
        desk.keyboard().type(hyper(keys::d));
        EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond)) << condition;
        EXPECT_EQ(contentOf(options.standardError), "") << condition;
        EXPECT_EQ(agent.end(SIGTERM), ordinaryEnd) << condition;
    }
}

TEST(Start, closedStandardStreams_leadNowhere) {
    Desk desk;
    ChildProcessOptions options;
    options.arguments = scriptArguments("exec \"$VANTREL\" <&- >&- 2>&-");
    options.environment = desk.environment();
    ChildProcess agent(options);
    ASSERT_TRUE(desk.waitForHotKey(hyper(keys::s)));
    // A message must not be written into the connection to the X server, which would have the free number.
    for (const char* const descriptor : {"0", "1", "2"}) {
        const auto link = std::filesystem::path("/proc") / std::to_string(agent.processId()) / "fd" / descriptor;
        EXPECT_EQ(std::filesystem::read_symlink(link), "/dev/null") << descriptor;
    }
}

TEST(Start, frozenBus_hotKeysDoNotWaitForIt) {
    Desk desk;
    desk.bus().freeze();
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond));
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    desk.bus().thaw();
}

}  // namespace
}  // namespace vantrel::desk
