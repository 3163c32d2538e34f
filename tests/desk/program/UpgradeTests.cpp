// What a running agent does when an upgrade of its package replaces the program.
#include <gtest/gtest.h>

#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/ProgramCopy.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

class Upgrade : public testing::Test {
  protected:
    Upgrade() { desk.wrapAgent(copy.wrapper()); }

    Desk desk;
    ProgramCopy copy;
};

TEST_F(Upgrade, programReplaced_theNewOneRunsInItsPlace) {
    const auto agent = desk.startAgent();
    for (int round = 0; round < 2; ++round) {
        copy.replace();
        EXPECT_FALSE(copy.isRunBy(agent->processId()));
        EXPECT_TRUE(waitUntil([&] { return copy.isRunBy(agent->processId()); }));
        EXPECT_TRUE(desk.waitForHotKey(hyper(keys::s)));
        desk.pointer().moveTo(onMain);
        desk.keyboard().type(hyper(keys::d));
        EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond));
    }
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    EXPECT_EQ(agent->standardError(), "");
}

TEST_F(Upgrade, pointSavedBefore_isThereAfter) {
    const auto agent = desk.startAgent();
    desk.pointer().moveTo({100, 200});
    desk.keyboard().type(hyper(keys::s));
    ASSERT_TRUE(waitUntil([&] { return desk.defaults().read("savedPoints").has_value(); }));
    const auto saved = desk.defaults().read("savedPoints");
    copy.replace();
    ASSERT_TRUE(waitUntil([&] { return copy.isRunBy(agent->processId()); }));
    EXPECT_TRUE(desk.waitForHotKey(hyper(keys::s)));
    EXPECT_EQ(desk.defaults().read("savedPoints"), saved);
}

TEST_F(Upgrade, urlOfTheFirstStart_isNotObeyedAgain) {
    desk.pointer().moveTo(onMain);
    const auto agent = desk.startProgram({"vantrel://save-point"});
    ASSERT_TRUE(desk.waitForHotKey(hyper(keys::s)));
    ASSERT_TRUE(waitUntil([&] { return desk.defaults().read("savedPoints").has_value(); }));
    const auto saved = desk.defaults().read("savedPoints");
    copy.replace();
    ASSERT_TRUE(waitUntil([&] { return copy.isRunBy(agent->processId()); }));
    ASSERT_TRUE(desk.waitForHotKey(hyper(keys::s)));
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond));
    EXPECT_EQ(desk.defaults().read("savedPoints"), saved);
}

TEST_F(Upgrade, programRemoved_theAgentRunsOn) {
    const auto agent = desk.startAgent();
    std::filesystem::remove(copy.path());
    // Longer than a new file would be left to rest.
    waitUntil([] { return false; }, std::chrono::seconds(3));
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond));
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
}

}  // namespace
}  // namespace vantrel::desk
