// Hostile and endless lists of URLs: hot keys are served among them.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/desk/program/ApplicationOnBus.hpp"
#include "tests/desk/support/Desk.hpp"

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
    EXPECT_EQ(agent->terminate(), (ExitStatus{.code = 0, .signal = std::nullopt}));
}

TEST(URLBurst, aHundredThousandCalls_hotKeysWork) {
    Desk desk;
    const auto agent = desk.startAgent();
    ApplicationOnBus application(desk.bus().address());
    ASSERT_TRUE(waitUntil([&] { return !application.owner().empty(); }));
    application.openManyTimes("vantrel:next", many);
    expectHotKeyAmongTheURLs(desk);
    EXPECT_EQ(agent->terminate(), (ExitStatus{.code = 0, .signal = std::nullopt}));
}

TEST(URLBurst, aFullCommandLine_hotKeysWork) {
    Desk desk;
    const auto agent = desk.startAgent();
    const auto second = desk.startProgram(std::vector<std::string>(mostOnACommandLine, "vantrel:next"));
    expectHotKeyAmongTheURLs(desk);
    EXPECT_EQ(second->waitForExit(), (ExitStatus{.code = 0, .signal = std::nullopt}));
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
    desk.pointer().moveTo({700, 500});
    EXPECT_EQ(application.open({"vantrel:save-point"}), "");
    EXPECT_TRUE(waitUntil([&] { return desk.defaults().read("savedPoints").has_value(); }));
    EXPECT_TRUE(agent->isRunning());
    EXPECT_EQ(agent->standardError(), "");
}

}  // namespace
}  // namespace vantrel::desk
