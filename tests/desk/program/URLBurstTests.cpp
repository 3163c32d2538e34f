// Hostile and endless lists of URLs: hot keys are served among them.
#include <gtest/gtest.h>

#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "tests/desk/program/ApplicationOnBus.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/ProcessActivity.hpp"

namespace vantrel::desk {
namespace {

constexpr int many = 100000;
constexpr int mostOnACommandLine = 50000;

/// Whether the pointer keeps on jumping, as it does while URLs are obeyed.
bool keepsMoving(Desk& desk) {
    for (int jump = 0; jump < 3; ++jump) {
        if (!desk.pointer().catchDeparture(desk.pointer().position())) {
            return false;
        }
    }
    return true;
}

/// Presses Hyper + S among the URLs, and checks that it was served before they were.
void expectHotKeyAmongTheURLs(Desk& desk) {
    ASSERT_TRUE(keepsMoving(desk));
    desk.keyboard().type(hyper(keys::s));
    EXPECT_TRUE(waitUntil([&] { return desk.defaults().read("savedPoints").has_value(); }));
    EXPECT_TRUE(keepsMoving(desk));
}

TEST(URLBurst, oneCallWithAHundredThousand_hotKeysWork) {
    Desk desk;
    const auto agent = desk.startAgent();
    ApplicationOnBus application(desk.bus().address());
    ASSERT_TRUE(waitUntil([&] { return !application.owner().empty(); }));
    EXPECT_EQ(application.open(std::vector<std::string>(many, "vantrel:next")), "");
    expectHotKeyAmongTheURLs(desk);
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
}

/// What the process holds in memory of its own, in kilobytes.
long privateMemory(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    const std::string label = "RssAnon:";
    for (std::string line; std::getline(status, line);) {
        if (line.rfind(label, 0) == 0) {
            return std::stol(line.substr(label.size()));
        }
    }
    return -1;
}

TEST(URLBurst, severalInARow_memoryDoesNotGrow) {
    constexpr int furtherBursts = 3;
    constexpr long slackKilobytes = 4096;  // less than the texts of one burst
    Desk desk;
    desk.environment().giveBackFreedMemory();
    const auto agent = desk.startAgent();
    ApplicationOnBus application(desk.bus().address());
    ASSERT_TRUE(waitUntil([&] { return !application.owner().empty(); }));
    int points = 0;
    // Each burst ends with a saved point, by which its end is seen.
    const auto openBurst = [&] {
        std::vector<std::string> urls(many, "gopher://somewhere/else/that/is/nobody-of-this-desk's-business");
        urls.emplace_back("vantrel:save-point");
        EXPECT_EQ(application.open(urls), "");
        const std::string last = "\"Point " + std::to_string(++points) + "\"";
        return waitUntil(
            [&] { return desk.defaults().read("savedPoints").value_or("").find(last) != std::string::npos; });
    };
    ASSERT_TRUE(openBurst());
    ASSERT_TRUE(waitUntilAtRest(agent->processId()));
    const long afterFirst = privateMemory(agent->processId());
    ASSERT_GT(afterFirst, 0);
    for (int burst = 0; burst < furtherBursts; ++burst) {
        ASSERT_TRUE(openBurst());
    }
    // What the last message took is given back a little after its end.
    EXPECT_TRUE(waitUntil([&] { return privateMemory(agent->processId()) <= afterFirst + slackKilobytes; }))
        << privateMemory(agent->processId()) << " after " << afterFirst;
}

TEST(URLBurst, aHundredThousandCalls_hotKeysWork) {
    Desk desk;
    const auto agent = desk.startAgent();
    ApplicationOnBus application(desk.bus().address());
    ASSERT_TRUE(waitUntil([&] { return !application.owner().empty(); }));
    application.openManyTimes("vantrel:next", many);
    expectHotKeyAmongTheURLs(desk);
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
}

TEST(URLBurst, aFullCommandLine_hotKeysWork) {
    Desk desk;
    const auto agent = desk.startAgent();
    const auto second = desk.startProgram(std::vector<std::string>(mostOnACommandLine, "vantrel:next"));
    expectHotKeyAmongTheURLs(desk);
    EXPECT_EQ(second->waitForExit(), ordinaryEnd);
}

TEST(URLBurst, hostileTexts_theAgentLives) {
    Desk desk;
    const auto agent = desk.startAgent();
    ApplicationOnBus application(desk.bus().address());
    ASSERT_TRUE(waitUntil([&] { return !application.owner().empty(); }));
    std::string items = "vantrel://teleport?";
    for (int item = 0; item < many; ++item) {
        items += "a=b&";
    }
    EXPECT_EQ(application.open({"vantrel:" + std::string(200000, 'x'), "vantrel://[", "vantrel:%", "vantrel:%zz",
                                "vantrel://next?%%%", "vantrel://" + std::string(200000, '%'), "vantrel:\x01\x7f",
                                std::string(200000, ':'), items + "mode=manual&direction=previous",
                                "vantrel://teleport?direction"}),
              "");
    EXPECT_TRUE(waitUntil([&] { return application.activateAction("none") != ""; }));
    // Some of the texts are commands that move the pointer; this one's turn comes after theirs.
    EXPECT_EQ(application.open({"vantrel:save-point"}), "");
    EXPECT_TRUE(waitUntil([&] { return desk.defaults().read("savedPoints").has_value(); }));
    EXPECT_TRUE(agent->isRunning());
    EXPECT_EQ(agent->standardError(), "");
}

}  // namespace
}  // namespace vantrel::desk
